// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

class Page;
QT_FORWARD_DECLARE_CLASS(QWidget)

/// One entry of the gallery's list.
struct PageEntry
{
    QString name; ///< what --page takes, and the picture's file name
    QString title; ///< what the list shows
    QString group; ///< the heading in the list that it stands under
    Page *(*make)(QWidget *parent);
};

/// All pages in the order of the list; those of one group stand together.
QList<PageEntry> pages();
