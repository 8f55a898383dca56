// SPDX-License-Identifier: MIT
#include "Scenes/NibFile.h"

#include <QSet>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

// No form is nested as deeply; beyond it the loader's recursion could run out of stack.
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
    return std::nullopt;
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
            if (m_xml.isEndElement()) {
                if (m_path.takeLast() >= 0)
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
        if (tag == "attribute"_L1) {
            m_xml.skipCurrentElement();
            return;
        }
        if (m_path.size() == deepest)
            fail(u"its elements are nested too deeply"_s);
        const auto kind = elementKind(tag);
        m_path.append(kind ? int(m_file.elements.size()) : -1);
        if (!kind)
            return;
        NibElement element;
        element.kind = *kind;
        element.className = attribute("class"_L1);
        element.name = here(attribute("name"_L1));
        element.parent = m_open.isEmpty() ? -1 : m_open.constLast();
        if (element.name.text.isEmpty() && element.kind != NibElement::layout)
            fail(u"this <%1> has no name"_s.arg(tag));
        if (!element.name.text.isEmpty() && !add(element.name.text))
            fail(u"there are two objects of this name"_s, element.name.text);
        m_open.append(int(m_file.elements.size()));
        m_file.elements.append(std::move(element));
    }

    bool add(const QString &name)
    {
        const qsizetype before = m_names.size();
        m_names.insert(name);
        return m_names.size() > before;
    }

    // <property name="..." stdset="0"><kind>value</kind></property>
    void readProperty()
    {
        NibProperty property;
        property.name = here(attribute("name"_L1));
        property.isDynamic = attribute("stdset"_L1) == "0"_L1;
        // Those of list entries and columns belong to no object.
        const bool belongsToObject = !m_path.isEmpty() && m_path.constLast() >= 0;
        if (m_xml.readNextStartElement()) {
            property.kind = m_xml.name().toString();
            if (property.kind == "stringlist"_L1) {
                while (nextChild()) {
                    if (m_xml.name() == "string"_L1)
                        property.values.append(text());
                    else
                        m_xml.skipCurrentElement();
                }
            } else if (property.kind == "iconset"_L1) {
                readIcon();
            } else {
                property.values.append(text());
                if (property.kind == "pixmap"_L1)
                    m_file.images.append(property.values);
            }
            while (m_xml.readNextStartElement())
                m_xml.skipCurrentElement();
        }
        if (belongsToObject)
            m_file.elements[m_path.constLast()].properties.append(std::move(property));
    }

    // Pictures stand in the element itself or, one for each state, in elements of their own.
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
        while (m_xml.readNextStartElement()) {
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
        if (!m_xml.readNextStartElement())
            return false;
        m_xml.noteTag();
        return true;
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
    QList<int> m_path; // for each open XML element: the element that it is, or -1
    QList<int> m_open; // of those, the elements
    QSet<QString> m_names;
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
