// SPDX-License-Identifier: MIT
#include "Scenes/NibFile.h"

#include <QHash>
#include <QSet>

#include <climits>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Deeper than any form. Beyond it the recursion of the loader could exhaust the stack.
constexpr int deepest = 200;

std::optional<NibElement::Kind> elementKind(QStringView tag)
{
    if (tag == "widget"_L1)
        return NibElement::widget;
    if (tag == "layout"_L1)
        return NibElement::layout;
    if (tag == "action"_L1)
        return NibElement::action;
    if (tag == "actiongroup"_L1)
        return NibElement::actionGroup;
    if (tag == "buttongroup"_L1)
        return NibElement::buttonGroup;
    if (tag == "spacer"_L1)
        return NibElement::spacer;
    if (tag == "column"_L1 || tag == "row"_L1)
        return NibElement::item;
    return std::nullopt;
}

// Elements that have elements in them, and no text.
bool isStructure(QStringView tag)
{
    static const QSet<QStringView> tags { u"ui",          u"widget",      u"layout",
                                          u"item",        u"spacer",      u"action",
                                          u"actiongroup", u"buttongroup", u"buttongroups",
                                          u"column",      u"row",         u"customwidgets",
                                          u"connections", u"tabstops",    u"resources" };
    return tags.contains(tag);
}

// The reason why the text is not a value for an element of that name; empty if it is one.
QString problem(const QString &tag, const QString &kind, const QString &text)
{
    static const QSet<QString> wholes {
        u"number"_s, u"x"_s,    u"y"_s,         u"width"_s,  u"height"_s,     u"red"_s,
        u"green"_s,  u"blue"_s, u"hour"_s,      u"minute"_s, u"second"_s,     u"year"_s,
        u"month"_s,  u"day"_s,  u"pointsize"_s, u"weight"_s, u"horstretch"_s, u"verstretch"_s,
    };
    // Values outside these are left out or replaced in silence.
    static const QHash<QString, std::pair<int, int>> ranges {
        { u"pointsize"_s, { 1, INT_MAX } },
        { u"weight"_s, { 0, 1000 } },
        { u"red"_s, { 0, 255 } },
        { u"green"_s, { 0, 255 } },
        { u"blue"_s, { 0, 255 } },
        { u"horstretch"_s, { 0, 255 } },
        { u"verstretch"_s, { 0, 255 } },
        { u"month"_s, { 1, 12 } },
        { u"day"_s, { 1, 31 } },
        { u"hour"_s, { 0, 23 } },
        { u"minute"_s, { 0, 59 } },
        { u"second"_s, { 0, 59 } },
    };
    static const QSet<QString> booleans { u"bool"_s,        u"bold"_s,      u"italic"_s,
                                          u"underline"_s,   u"strikeout"_s, u"kerning"_s,
                                          u"antialiasing"_s };
    static const QSet<QString> reals { u"pointf"_s, u"rectf"_s, u"sizef"_s };
    bool isValid = true;
    if (tag == "double"_L1 || tag == "float"_L1 || reals.contains(kind)) {
        static_cast<void>(text.toDouble(&isValid));
        return isValid ? QString() : u"\"%1\" is no number"_s.arg(text);
    }
    if (wholes.contains(tag)) {
        const int value = text.toInt(&isValid);
        const auto [least, most] = ranges.value(tag, { INT_MIN, INT_MAX });
        isValid = isValid && value >= least && value <= most;
    }
    if (tag == "uint"_L1)
        static_cast<void>(text.toUInt(&isValid));
    else if (tag == "longlong"_L1)
        static_cast<void>(text.toLongLong(&isValid));
    else if (tag == "ulonglong"_L1)
        static_cast<void>(text.toULongLong(&isValid));
    if (!isValid)
        return u"\"%1\" is no whole number, or out of range"_s.arg(text);
    if (booleans.contains(tag) && text != "true"_L1 && text != "false"_L1)
        return u"\"%1\" is neither true nor false"_s.arg(text);
    return {};
}

} // namespace

class NibFile::Reader
{
public:
    explicit Reader(NibFile &into)
        : m_file(into)
        , m_xml(into.contents)
    { }

    void read()
    {
        bool isInterface = false;
        while (next()) {
            isInterface = isInterface || m_xml.name() == "ui"_L1;
            if (!isInterface)
                fail(u"this is no interface file: its outermost element is <%1>"_s.arg(
                        m_xml.name()));
            readElement();
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        if (m_file.elements.isEmpty())
            fail(u"there is no widget in it"_s);
    }

private:
    // To the next start of an element; false at the end of the file.
    bool next()
    {
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (!m_path.isEmpty() && m_path.constLast().isStructure)
                m_xml.refuseText();
            if (m_xml.isEndElement()) {
                if (m_path.takeLast().element >= 0)
                    m_open.removeLast();
            } else if (m_xml.isStartElement()) {
                m_xml.noteTag();
                return true;
            }
        }
        return false;
    }

    void readElement()
    {
        const QStringView tag = m_xml.name();
        // Read whole, with their ends: they do not count as open.
        if (tag == "property"_L1)
            return readProperty();
        if (tag == "customwidget"_L1)
            return readCustomWidget();
        if (tag == "connection"_L1)
            return readConnection();
        if (tag == "tabstop"_L1) {
            m_file.tabStops.append(text());
            return;
        }
        if (tag == "attribute"_L1)
            return readProperty(&NibElement::attributes);
        if (tag == "zorder"_L1) {
            m_file.zOrder.append({ text(), enclosing() });
            return;
        }
        if (m_path.size() == deepest)
            fail(u"its elements are nested too deeply"_s);
        if (tag == "addaction"_L1)
            m_file.actions.append({ here(attribute("name"_L1)), enclosing() });
        auto kind = elementKind(tag);
        if (tag == "item"_L1) {
            if (enclosing() >= 0 && m_file.elements[enclosing()].kind == NibElement::layout)
                checkLayoutItem();
            else
                kind = NibElement::item;
        }
        m_path.append({ kind ? int(m_file.elements.size()) : -1, isStructure(tag) });
        if (kind)
            addElement(*kind);
    }

    // The parent of the current element; -1 if that is not an element of the model.
    int enclosing() const { return m_path.isEmpty() ? -1 : m_path.constLast().element; }

    void addElement(NibElement::Kind kind)
    {
        NibElement element;
        element.kind = kind;
        element.className = attribute("class"_L1);
        element.name = here(attribute("name"_L1));
        element.parent = m_open.isEmpty() ? -1 : m_open.constLast();
        const bool isOutermost = kind == NibElement::widget && element.parent < 0;
        if (isOutermost && std::exchange(m_hasWidget, true))
            fail(u"there is a second outermost widget"_s, element.name.text);
        const bool mayLackName = kind == NibElement::layout || kind == NibElement::spacer
                                 || kind == NibElement::item;
        if (element.name.text.isEmpty() && !mayLackName)
            fail(u"this <%1> has no name"_s.arg(m_xml.name()));
        if (!element.name.text.isEmpty() && !add(element.name.text))
            fail(u"there are two objects of this name"_s, element.name.text);
        if (kind == NibElement::layout)
            checkLayout(element.name.text);
        m_open.append(int(m_file.elements.size()));
        m_file.elements.append(std::move(element));
    }

    // <item row="1" column="0" colspan="2" alignment="Qt::AlignRight">
    void checkLayoutItem()
    {
        for (const auto name : { "row"_L1, "column"_L1, "rowspan"_L1, "colspan"_L1 })
            checkWholes({}, name, { attribute(name) });
        m_file.alignments.append(here(attribute("alignment"_L1)));
    }

    // <layout class="QHBoxLayout" name="row" stretch="0,1">
    void checkLayout(const QString &object)
    {
        for (const auto name : { "stretch"_L1, "rowstretch"_L1, "columnstretch"_L1,
                                 "rowminimumheight"_L1, "columnminimumwidth"_L1 })
            checkWholes(object, name, attribute(name).split(u','));
    }

    void checkWholes(const QString &object, QLatin1StringView name, const QStringList &texts) const
    {
        for (const QString &text : texts) {
            const bool isAbsent = text.isEmpty() && texts.size() == 1;
            const QString wrong = isAbsent ? QString() : problem(u"number"_s, {}, text);
            if (!wrong.isEmpty())
                throw m_file.error(NS::NibError::unknownProperty, m_xml.place(), object, name,
                                   u"%1 (attribute \"%2\")"_s.arg(wrong, name));
        }
    }

    bool add(const QString &name)
    {
        const qsizetype before = m_names.size();
        m_names.insert(name);
        return m_names.size() > before;
    }

    // <property name="..." stdset="0"><kind>value</kind></property>
    void readProperty(QList<NibProperty> NibElement::*list = &NibElement::properties)
    {
        const int element = enclosing();
        NibProperty property;
        property.name = here(attribute("name"_L1));
        property.isDynamic = attribute("stdset"_L1) == "0"_L1;
        if (nextChild()) {
            readValue(property);
            while (nextChild())
                m_xml.skipCurrentElement();
        }
        if (element >= 0)
            (m_file.elements[element].*list).append(std::move(property));
    }

    void readValue(NibProperty &property)
    {
        property.kind = m_xml.name().toString();
        if (property.kind == "iconset"_L1)
            return readIcon();
        if (property.kind == "stringlist"_L1) {
            while (nextChild()) {
                if (m_xml.name() == "string"_L1)
                    property.values.append(text());
                else
                    m_xml.skipCurrentElement();
            }
            return;
        }
        static const QSet<QString> compounds { u"rect"_s,       u"rectf"_s,   u"point"_s,
                                               u"pointf"_s,     u"size"_s,    u"sizef"_s,
                                               u"sizepolicy"_s, u"font"_s,    u"color"_s,
                                               u"palette"_s,    u"brush"_s,   u"date"_s,
                                               u"time"_s,       u"datetime"_s };
        if (compounds.contains(property.kind)) {
            property.values.append(here(u"<%1>"_s.arg(property.kind)));
            const QStringList policies { attribute("hsizetype"_L1), attribute("vsizetype"_L1) };
            for (const QString &policy : policies) {
                if (!policy.isEmpty())
                    property.values.append(here(policy));
            }
            return readParts(property, property.kind, 0);
        }
        property.values.append(text());
        property.problem = problem(property.kind, property.kind, property.values.constLast().text);
        if (property.kind == "pixmap"_L1)
            m_file.images.append(property.values);
    }

    // Each innermost part is a number, a Boolean, or a text that is not checked.
    void readParts(NibProperty &property, const QString &tag, int depth)
    {
        if (depth == deepest)
            fail(u"its elements are nested too deeply"_s);
        QString text;
        bool hasParts = false;
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isEndElement())
                break;
            if (m_xml.isCharacters())
                text += m_xml.text();
            if (m_xml.isStartElement()) {
                hasParts = true;
                readParts(property, m_xml.name().toString(), depth + 1);
            }
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        if (property.problem.isEmpty() && !hasParts)
            property.problem = problem(tag, property.kind, text);
    }

    // Pictures are in the element itself or in child elements, one for each state.
    void readIcon()
    {
        const bool hasTheme = m_xml.attributes().hasAttribute("theme"_L1);
        QList<NibText> pictures { here({}) };
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isEndElement())
                break;
            if (m_xml.isCharacters())
                pictures.first().text += m_xml.text();
            else if (m_xml.isStartElement())
                pictures.append(text());
        }
        // With pictures for states, the text of the element repeats one of them.
        if (pictures.size() > 1)
            pictures.removeFirst();
        for (NibText &picture : pictures) {
            picture.text = picture.text.trimmed();
            if (!picture.text.isEmpty() && !hasTheme)
                m_file.images.append(picture);
        }
    }

    void readCustomWidget()
    {
        QString className;
        QString method;
        while (nextChild()) {
            if (m_xml.name() == "class"_L1)
                className = text().text;
            else if (m_xml.name() == "addpagemethod"_L1)
                method = text().text;
            else
                m_xml.skipCurrentElement();
        }
        if (!method.isEmpty())
            m_file.addPageMethods.insert(className, method);
    }

    void readConnection()
    {
        NibConnection connection;
        while (nextChild()) {
            if (m_xml.name() == "sender"_L1)
                connection.sender = text();
            else if (m_xml.name() == "signal"_L1)
                connection.signal = text();
            else if (m_xml.name() == "receiver"_L1)
                connection.receiver = text();
            else if (m_xml.name() == "slot"_L1)
                connection.slot = text();
            else
                m_xml.skipCurrentElement();
        }
        m_file.connections.append(connection);
    }

    // To the next element in the current one.
    bool nextChild()
    {
        const bool isThere = m_xml.readChild();
        if (m_xml.hasError())
            fail(m_xml.errorString());
        return isThere;
    }

    // The text in the current element, which starts behind its tag.
    NibText text()
    {
        NibText result { {}, m_xml.position() };
        result.text = m_xml.readElementText(QXmlStreamReader::IncludeChildElements);
        return result;
    }

    QString attribute(QLatin1StringView name) const
    {
        return m_xml.attributes().value(name).toString();
    }

    NibText here(const QString &text) const { return { text, m_xml.place() }; }

    [[noreturn]] void fail(const QString &message, const QString &object = {}) const
    {
        throw m_file.error(NS::NibError::malformed, m_xml.place(), object, object, message);
    }

    NibFile &m_file;
    XmlReader m_xml;
    // An XML element that is open.
    struct Step
    {
        int element; // that it is, or -1
        bool isStructure;
    };

    QList<Step> m_path;
    QList<int> m_open; // of those, the elements
    QSet<QString> m_names;
    bool m_hasWidget = false;
};

NibFile::NibFile(QByteArray fileContents, QString path)
    : contents(std::move(fileContents))
    , fileName(std::move(path))
{
    Reader(*this).read();
}

NS::NibError NibFile::error(NS::NibError::Reason reason, XmlPlace place, const QString &object,
                            const QString &name, const QString &message) const
{
    return { reason, fileName, place.line, place.column, object, name, message };
}

} // namespace Pellarvine::detail
