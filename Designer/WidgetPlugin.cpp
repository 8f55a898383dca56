// SPDX-License-Identifier: MIT
#include "WidgetPlugin.h"

#include <QXmlStreamWriter>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

void writeValue(QXmlStreamWriter &xml, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        xml.writeTextElement(u"bool"_s, value.toBool() ? u"true"_s : u"false"_s);
        break;
    case QMetaType::Int:
        xml.writeTextElement(u"number"_s, value.toString());
        break;
    case QMetaType::Double:
        xml.writeTextElement(u"double"_s, value.toString());
        break;
    case QMetaType::QStringList:
        xml.writeStartElement(u"stringlist"_s);
        for (const QString &text : value.toStringList())
            xml.writeTextElement(u"string"_s, text);
        xml.writeEndElement();
        break;
    default:
        xml.writeTextElement(u"string"_s, value.toString());
    }
}

void writeProperty(QXmlStreamWriter &xml, const QString &name, const QVariant &value)
{
    xml.writeStartElement(u"property"_s);
    xml.writeAttribute(u"name"_s, name);
    writeValue(xml, value);
    xml.writeEndElement();
}

// "markupLabel" for "Pellarvine::MarkupLabel"
QString objectNameFor(const QString &className)
{
    QString name = className.section(u"::"_s, -1);
    name[0] = name[0].toLower();
    return name;
}

} // namespace

WidgetPlugin::WidgetPlugin(WidgetEntry entry, QObject *parent)
    : QObject(parent)
    , m_entry(std::move(entry))
{ }

QString WidgetPlugin::name() const
{
    return m_entry.className;
}

QString WidgetPlugin::group() const
{
    return m_entry.group;
}

QString WidgetPlugin::toolTip() const
{
    return m_entry.toolTip;
}

QString WidgetPlugin::whatsThis() const
{
    return m_entry.whatsThis;
}

QString WidgetPlugin::includeFile() const
{
    return u'<' + m_entry.header + u'>';
}

QIcon WidgetPlugin::icon() const
{
    return widgetIcon(m_entry.glyph);
}

bool WidgetPlugin::isContainer() const
{
    return m_entry.isContainer;
}

QWidget *WidgetPlugin::createWidget(QWidget *parent)
{
    return m_entry.make(parent);
}

bool WidgetPlugin::isInitialized() const
{
    return m_isInitialized;
}

void WidgetPlugin::initialize(QDesignerFormEditorInterface *)
{
    m_isInitialized = true;
}

QString WidgetPlugin::domXml() const
{
    if (!m_entry.isInWidgetBox)
        return {};
    QString text;
    QXmlStreamWriter xml(&text);
    xml.writeStartElement(u"ui"_s);
    xml.writeAttribute(u"language"_s, u"c++"_s);
    xml.writeStartElement(u"widget"_s);
    xml.writeAttribute(u"class"_s, m_entry.className);
    xml.writeAttribute(u"name"_s, objectNameFor(m_entry.className));
    xml.writeStartElement(u"property"_s);
    xml.writeAttribute(u"name"_s, u"geometry"_s);
    xml.writeStartElement(u"rect"_s);
    xml.writeTextElement(u"x"_s, u"0"_s);
    xml.writeTextElement(u"y"_s, u"0"_s);
    xml.writeTextElement(u"width"_s, QString::number(m_entry.size.width()));
    xml.writeTextElement(u"height"_s, QString::number(m_entry.size.height()));
    xml.writeEndElement();
    xml.writeEndElement();
    for (auto property = m_entry.properties.begin(); property != m_entry.properties.end();
         ++property)
        writeProperty(xml, property.key(), property.value());
    xml.writeEndElement();
    xml.writeEndElement();
    return text;
}
