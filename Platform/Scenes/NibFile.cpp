// SPDX-License-Identifier: MIT
#include "Scenes/NibFile.h"

#include "Scenes/NibValues.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// Deeper than any form. Beyond it the recursion of the loader could exhaust the stack.
constexpr int deepest = 200;

// More than any layout. The layouts of Qt store each row and column, used or not.
constexpr int mostCells = 0x7FFF;

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

// Elements that have elements in them, and no text, beside those of elementKind().
bool isStructure(QStringView tag)
{
    static const QSet<QStringView> tags { u"ui",          u"buttongroups", u"customwidgets",
                                          u"connections", u"tabstops",     u"resources" };
    return tags.contains(tag);
}

// Of values that are a text alone, but for strings.
bool isPlainKind(QStringView kind)
{
    return kind == "number"_L1 || kind == "bool"_L1 || kind == "double"_L1 || kind == "enum"_L1
           || kind == "set"_L1;
}

} // namespace

class NibFile::Reader
{
public:
    explicit Reader(NibFile &into)
        : m_file(into)
        , m_xml(into.contents)
    {
        m_xml.setNamespaceProcessing(false); // slower, and interface files have no namespaces
    }

    void read()
    {
        bool isInterface = false;
        while (next()) {
            if (!std::exchange(isInterface, true))
                readRoot();
            else
                readElement();
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        if (m_file.elements.isEmpty())
            fail(u"there is no widget in it"_s);
        m_file.loaderContents = m_xml.remainder();
    }

private:
    // To the next start of an element; false at the end of the file.
    bool next()
    {
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (!m_path.isEmpty() && m_path.constLast().isStructure) {
                m_xml.refuseText();
                m_xml.omitWhitespace(); // of Designer's indentation, a third of a file
            }
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

    void readRoot()
    {
        if (m_xml.name() != "ui"_L1)
            fail(u"this is no interface file: its outermost element is <%1>"_s.arg(m_xml.name()));
        m_file.hasTextIds = attribute("idbasedtr"_L1) == "true"_L1;
        // The prolog may name another encoding than that of loaderContents.
        m_xml.omitProlog();
        m_path.append({ -1, true, false });
    }

    void readElement()
    {
        const QStringView tag = m_xml.name();
        // The loader ignores case in the names of elements.
        if (std::any_of(tag.cbegin(), tag.cend(), [](QChar letter) { return letter.isUpper(); }))
            fail(u"there is no element <%1>"_s.arg(tag));
        // These are read up to their end tags.
        if (tag == "property"_L1)
            return readProperty();
        if (tag == "customwidget"_L1)
            return readCustomWidget();
        if (tag == "class"_L1 && m_path.size() == 1) {
            m_file.className = text().text.toUtf8();
            return;
        }
        if (tag == "connection"_L1)
            return readConnection();
        if (tag == "tabstop"_L1) {
            m_file.tabStops.append(text());
            return;
        }
        if (tag == "attribute"_L1)
            return readProperty(&NibElement::attributes);
        if (tag == "resources"_L1)
            return readResources();
        if (tag == "zorder"_L1) {
            m_file.zOrder.append({ text(), enclosing() });
            return;
        }
        if (m_path.size() == deepest)
            fail(u"its elements are nested too deeply"_s);
        if (tag == "addaction"_L1)
            m_file.actions.append({ here(attribute("name"_L1)), enclosing() });
        auto kind = elementKind(tag);
        const bool isLayoutItem =
                tag == "item"_L1 && enclosing() >= 0 && enclosingKind() == NibElement::layout;
        if (isLayoutItem)
            checkLayoutItem();
        else if (tag == "item"_L1)
            kind = NibElement::item;
        if (kind)
            checkIsOnly(*kind);
        m_path.append({ kind ? int(m_file.elements.size()) : -1,
                        kind || isLayoutItem || isStructure(tag), isLayoutItem });
        if (kind)
            addElement(*kind);
    }

    // The index of the parent in `elements`; -1 if the parent is not one of them.
    int enclosing() const { return m_path.isEmpty() ? -1 : m_path.constLast().element; }

    NibElement::Kind enclosingKind() const { return m_file.elements[enclosing()].kind; }

    // A widget can have one layout, and an item of a layout contains one object.
    void checkIsOnly(NibElement::Kind kind)
    {
        const bool isInWidget = enclosing() >= 0 && enclosingKind() == NibElement::widget;
        if (m_path.isEmpty()
            || !(m_path.constLast().isLayoutItem || (isInWidget && kind == NibElement::layout)))
            return;
        if (std::exchange(m_path.last().isTaken, true))
            fail(isInWidget ? u"the widget has a layout already"_s
                            : u"the item has an object already"_s,
                 attribute("name"_L1));
    }

    void addElement(NibElement::Kind kind)
    {
        NibElement element;
        element.kind = kind;
        const QXmlStreamAttributes attributes = m_xml.attributes();
        element.className = shared(attributes.value("class"_L1));
        element.name = here(attributes.value("name"_L1).toString());
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
        element.isNative = attributes.value("native"_L1) == "true"_L1;
        element.isCell = kind == NibElement::item && m_xml.name() == "item"_L1;
        if (element.isCell) {
            element.row = number(attributes, "row"_L1, 0).value_or(-1);
            element.column = number(attributes, "column"_L1, 0).value_or(-1);
        } else if (kind == NibElement::item && element.parent >= 0) {
            NibElement &table = m_file.elements[element.parent];
            ++(m_xml.name() == "row"_L1 ? table.rowHeads : table.columnHeads);
        }
        m_open.append(int(m_file.elements.size()));
        m_file.elements.append(std::move(element));
    }

    // <item row="1" column="0" colspan="2" alignment="Qt::AlignRight">
    void checkLayoutItem()
    {
        const QXmlStreamAttributes attributes = m_xml.attributes();
        const int row = number(attributes, "row"_L1, 0).value_or(0);
        const int column = number(attributes, "column"_L1, 0).value_or(0);
        const int lastRow = row + number(attributes, "rowspan"_L1, 1).value_or(1) - 1;
        const int lastColumn = column + number(attributes, "colspan"_L1, 1).value_or(1) - 1;
        if (attributes.hasAttribute("alignment"_L1))
            m_file.alignments.append(here(attributes.value("alignment"_L1).toString()));
        if (m_file.elements[enclosing()].className != "QFormLayout"_L1)
            return;
        // The first column is that of the labels. A row that spans both has no other item.
        if (lastColumn > 1 || lastRow > row)
            failAttribute(
                    {}, lastColumn > 1 ? "column"_L1 : "rowspan"_L1,
                    u"an item in a QFormLayout has one row and lies in column 0, 1 or both"_s);
        for (int cell = column; cell <= lastColumn; ++cell) {
            const qsizetype before = m_formCells.size();
            m_formCells.insert({ enclosing(), 2 * row + cell });
            if (m_formCells.size() == before)
                fail(u"there is an item in row %1, column %2 already"_s.arg(row).arg(cell));
        }
    }

    // <layout class="QHBoxLayout" name="row" stretch="0,1">
    void checkLayout(const QString &object)
    {
        for (const auto name : { "stretch"_L1, "rowstretch"_L1, "columnstretch"_L1,
                                 "rowminimumheight"_L1, "columnminimumwidth"_L1 }) {
            const QString value = attribute(name);
            const QStringList texts = value.isEmpty() ? QStringList() : value.split(u',');
            for (const QString &text : texts)
                checkNumber(object, name, text, 0);
        }
    }

    // The attribute, which is at least `least`. Empty if it is absent.
    std::optional<int> number(const QXmlStreamAttributes &attributes, QLatin1StringView name,
                              int least) const
    {
        const QStringView text = attributes.value(name);
        if (text.isEmpty() && !attributes.hasAttribute(name))
            return std::nullopt;
        checkNumber({}, name, text, least);
        return text.toInt();
    }

    void checkNumber(const QString &object, QLatin1StringView name, QStringView text,
                     int least) const
    {
        const QString wrong = numberProblem(text, least, mostCells);
        if (!wrong.isEmpty())
            failAttribute(object, name, u"%1 (attribute \"%2\")"_s.arg(wrong, name));
    }

    [[noreturn]] void failAttribute(const QString &object, QLatin1StringView name,
                                    const QString &message) const
    {
        throw m_file.error(NS::NibError::unknownProperty, m_xml.place(), object, name, message);
    }

    bool add(const QString &name)
    {
        const qsizetype before = m_file.m_indexes.size();
        m_file.m_indexes.insert(name, int(m_file.elements.size()));
        return m_file.m_indexes.size() > before;
    }

    // <property name="..." stdset="0"><kind>value</kind></property>
    void readProperty(QList<NibProperty> NibElement::*list = &NibElement::properties)
    {
        const int element = enclosing();
        const qsizetype begin = m_xml.tagOffset();
        NibProperty property;
        QXmlStreamAttributes attributes = m_xml.attributes();
        property.name = here(shared(attributes.value("name"_L1)));
        property.isDynamic = attributes.value("stdset"_L1) == "0"_L1;
        bool isPlain = hasOnly(attributes, { "name"_L1, "stdset"_L1 });
        attributes = {}; // the reader would copy a list that is in use
        property.problem = u"there is no value"_s;
        if (nextChild()) {
            property.problem.clear();
            isPlain = readValue(property) && isPlain;
            while (nextChild()) {
                property.problem = u"there is a second value"_s;
                m_xml.skipCurrentElement();
            }
        }
        if (element < 0)
            return;
        NibElement &owner = m_file.elements[element];
        if (list == &NibElement::properties && isPlain && mayBePlain(owner, property)) {
            ++owner.plainCount;
            m_xml.omitFrom(begin);
        }
        (owner.*list).append(std::move(property));
    }

    // Properties are set in the order of the file: after the first that the loader sets, it sets
    // the others as well. It sets those of these names after the children, or in a way of its own.
    static bool mayBePlain(const NibElement &owner, const NibProperty &property)
    {
        const QString &name = property.name.text;
        const bool isSpecial = name == "buddy"_L1 || name == "currentIndex"_L1
                               || name == "currentRow"_L1 || name == "objectName"_L1
                               || name == "tabSpacing"_L1;
        return !isSpecial && (owner.kind == NibElement::widget || owner.kind == NibElement::action)
               && owner.className != "Line"_L1 && owner.plainCount == owner.properties.size()
               && property.problem.isEmpty();
    }

    // Returns whether the value is plain: a text, a number, a Boolean or keys, and nothing else.
    bool readValue(NibProperty &property)
    {
        property.kind = shared(m_xml.name());
        if (isPlainKind(property.kind)) {
            bool isPlain = m_xml.attributes().isEmpty();
            property.value = text(&isPlain);
            property.problem = textProblem(property.kind, property.kind, property.value.text);
            return isPlain;
        }
        if (property.kind == "string"_L1)
            return readText(property);
        if (property.kind == "iconset"_L1) {
            property.value = here(u"<iconset>"_s);
            readIcon();
            return false;
        }
        if (property.kind == "stringlist"_L1) {
            property.value = here(u"<stringlist>"_s);
            // With an ID all texts would be the same.
            if (auto qualifier = qualifierOf(m_xml.attributes()); qualifier && !m_file.hasTextIds)
                property.translatable = { {}, *std::move(qualifier) };
            while (nextChild()) {
                if (m_xml.name() == "string"_L1)
                    property.parts.append(text());
                else
                    m_xml.skipCurrentElement();
            }
            return false;
        }
        static const QSet<QString> compounds {
            u"rect"_s,       u"rectf"_s,    u"point"_s,  u"pointf"_s,  u"size"_s,  u"sizef"_s,
            u"sizepolicy"_s, u"font"_s,     u"color"_s,  u"palette"_s, u"brush"_s, u"date"_s,
            u"time"_s,       u"datetime"_s, u"locale"_s, u"char"_s
        };
        if (compounds.contains(property.kind)) {
            property.value = here(u"<%1>"_s.arg(property.kind));
            const QStringList policies { attribute("hsizetype"_L1), attribute("vsizetype"_L1) };
            for (const QString &policy : policies) {
                if (!policy.isEmpty())
                    property.parts.append(here(policy));
            }
            QHash<QString, QString> parts;
            readParts(property, property.kind, parts, 0);
            if (property.problem.isEmpty())
                property.problem = wholeProblem(property.kind, parts);
            return false;
        }
        property.value = text();
        property.problem = textProblem(property.kind, property.kind, property.value.text);
        if (property.kind == "pixmap"_L1)
            m_file.images.append(property.value);
        return false;
    }

    // <string notr="true" comment="a verb">
    bool readText(NibProperty &property)
    {
        QXmlStreamAttributes attributes = m_xml.attributes();
        bool isPlain = hasOnly(attributes, { "notr"_L1, "comment"_L1, "extracomment"_L1, "id"_L1 });
        std::optional<QByteArray> qualifier = qualifierOf(attributes);
        attributes = {};
        property.value = text(&isPlain);
        QByteArray source = property.value.text.toUtf8();
        if (qualifier && !(source.isEmpty() && qualifier->isEmpty()))
            property.translatable = { std::move(source), *std::move(qualifier) };
        return isPlain;
    }

    // That of a text to be translated; nothing for another text.
    std::optional<QByteArray> qualifierOf(const QXmlStreamAttributes &attributes) const
    {
        const QStringView notr = attributes.value("notr"_L1);
        if (notr == "true"_L1 || notr == "yes"_L1)
            return std::nullopt;
        return attributes.value(m_file.hasTextIds ? "id"_L1 : "comment"_L1).toUtf8();
    }

    // Each innermost part is a number, a Boolean, a key, a picture, or a text that is not checked.
    void readParts(NibProperty &property, const QString &tag, QHash<QString, QString> &parts,
                   int depth)
    {
        if (depth == deepest)
            fail(u"its elements are nested too deeply"_s);
        const QXmlStreamAttributes attributes = m_xml.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            if (property.problem.isEmpty())
                property.problem = attributeProblem(tag, attribute.name().toString(),
                                                    attribute.value().toString());
        }
        NibText text { {}, m_xml.position() };
        bool hasParts = false;
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isEndElement())
                break;
            if (m_xml.isCharacters())
                text.text += m_xml.text();
            if (m_xml.isStartElement()) {
                hasParts = true;
                readParts(property, m_xml.name().toString(), parts, depth + 1);
            }
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        if (hasParts || depth == 0)
            return;
        if (property.problem.isEmpty())
            property.problem = textProblem(tag, property.kind, text.text);
        if (tag == "pixmap"_L1)
            m_file.images.append(text);
        parts.insert(tag, text.text);
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

    // <resources><include location="pictures.qrc"/></resources>
    void readResources()
    {
        while (nextChild()) {
            m_file.resources.append(here(attribute("location"_L1)));
            m_xml.skipCurrentElement();
        }
    }

    void readCustomWidget()
    {
        QString name;
        QString method;
        while (nextChild()) {
            if (m_xml.name() == "class"_L1)
                name = text().text;
            else if (m_xml.name() == "addpagemethod"_L1)
                method = text().text;
            else
                m_xml.skipCurrentElement();
        }
        if (!method.isEmpty())
            m_file.addPageMethods.insert(name, method);
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

    // The text in the current element, which starts behind its tag. Sets `isAlone` to false if the
    // element contains others.
    NibText text(bool *isAlone = nullptr)
    {
        NibText result { {}, m_xml.position() };
        for (int depth = 1; depth > 0 && !m_xml.atEnd();) {
            m_xml.readNext();
            if (m_xml.isCharacters() && result.text.isEmpty())
                result.text = m_xml.text().toString(); // faster than an addition
            else if (m_xml.isCharacters())
                result.text += m_xml.text();
            if (m_xml.isStartElement()) {
                ++depth;
                if (isAlone)
                    *isAlone = false;
            } else if (m_xml.isEndElement()) {
                --depth;
            }
        }
        if (m_xml.hasError())
            fail(m_xml.errorString());
        return result;
    }

    // Whether the element has no attributes but these.
    static bool hasOnly(const QXmlStreamAttributes &attributes,
                        std::initializer_list<QLatin1StringView> names)
    {
        return std::all_of(attributes.cbegin(), attributes.cend(), [&](const auto &attribute) {
            return std::find(names.begin(), names.end(), attribute.qualifiedName()) != names.end();
        });
    }

    // The texts that are often the same share their memory.
    QString shared(QStringView text)
    {
        const auto found = m_texts.constFind(QString::fromRawData(text.data(), text.size()));
        return found == m_texts.cend() ? *m_texts.insert(text.toString()) : *found;
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
    // An XML element whose end tag has not been read.
    struct Step
    {
        int element; // its index in `elements`, or -1
        bool isStructure;
        bool isLayoutItem;
        bool isTaken = false; // by a layout or an object, as checkIsOnly() says
    };

    QList<Step> m_path;
    QList<int> m_open; // the elements in m_path
    QSet<QString> m_texts; // those of shared()
    QSet<std::pair<int, int>> m_formCells; // each with its layout; row by row
    bool m_hasWidget = false;
};

NibFile::NibFile(QByteArray fileContents, QString path)
    : contents(std::move(fileContents))
    , fileName(std::move(path))
{
    Reader(*this).read();
}

const NibElement *NibFile::element(const QString &name) const
{
    const auto found = m_indexes.constFind(name);
    return found == m_indexes.cend() ? nullptr : &elements[*found];
}

XmlPlace NibFile::tagBefore(XmlPlace end) const
{
    XmlReader xml(contents);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement() || xml.position() != end)
            continue;
        xml.noteTag();
        return xml.place();
    }
    return end;
}

NS::NibError NibFile::error(NS::NibError::Reason reason, XmlPlace place, const QString &object,
                            const QString &name, const QString &message) const
{
    return { reason, fileName, place.line, place.column, object, name, message };
}

} // namespace Pellarvine::detail
