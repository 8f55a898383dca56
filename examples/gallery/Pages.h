// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

class Page;
QT_FORWARD_DECLARE_CLASS(QWidget)

/// One entry of the gallery's list.
struct PageEntry
{
    QString name; ///< the argument of --page, and the file name of the picture
    QString title; ///< the text in the list
    QString group; ///< the heading above it in the list
    Page *(*make)(QWidget *parent);
};

/// All pages in the order of the list. The pages of a group follow each other.
QList<PageEntry> pages();
