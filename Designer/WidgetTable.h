// SPDX-License-Identifier: MIT
#pragma once

#include "WidgetIcon.h"

#include <QList>
#include <QSize>
#include <QString>
#include <QVariantMap>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// What Qt Designer is told of one class of view.
struct WidgetEntry
{
    QString className; ///< with its namespace
    QString header; ///< as a program includes it
    QString group; ///< the heading in the widget box
    Glyph glyph;
    QString toolTip; ///< what it is, in a few words
    QString whatsThis; ///< what it does, in a sentence or two
    bool isContainer = false; ///< takes children
    bool isInWidgetBox = true; ///< false for windows, which are forms and not parts of one
    QSize size; ///< of one just dropped
    QVariantMap properties; ///< that a new one is given: numbers, Booleans, texts, text lists
    QWidget *(*make)(QWidget *parent);
};

/// All view classes of the library, in the order of the widget box.
QList<WidgetEntry> widgetTable();
