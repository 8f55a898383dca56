// SPDX-License-Identifier: MIT
#pragma once

#include "WidgetIcon.h"

#include <QList>
#include <QSize>
#include <QString>
#include <QVariantMap>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// The description of a class for Qt Designer.
struct WidgetEntry
{
    QString className; ///< with its namespace
    QString header; ///< the path in a program's #include
    QString group; ///< the heading in the widget box
    Glyph glyph;
    QString toolTip; ///< a description in a few words
    QString whatsThis; ///< a description in one or two sentences
    bool isContainer = false; ///< whether it can contain children
    bool isInWidgetBox = true; ///< false for windows, which are whole forms
    QSize size; ///< the size when it is dropped on a form
    QVariantMap properties; ///< initial values: numbers, Booleans, texts, lists of texts
    QWidget *(*make)(QWidget *parent);
};

/// All view classes of the library, in the order of the widget box.
QList<WidgetEntry> widgetTable();
