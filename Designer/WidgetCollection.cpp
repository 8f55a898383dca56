// SPDX-License-Identifier: MIT
#include "WidgetCollection.h"

#include "WidgetPlugin.h"
#include "WidgetTable.h"

WidgetCollection::WidgetCollection(QObject *parent)
    : QObject(parent)
{
    for (const WidgetEntry &entry : widgetTable())
        m_plugins.append(new WidgetPlugin(entry, this));
}

QList<QDesignerCustomWidgetInterface *> WidgetCollection::customWidgets() const
{
    return m_plugins;
}
