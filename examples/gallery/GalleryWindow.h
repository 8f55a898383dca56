// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QWidget>

class Page;
QT_FORWARD_DECLARE_CLASS(QListWidget)
QT_FORWARD_DECLARE_CLASS(QListWidgetItem)
QT_FORWARD_DECLARE_CLASS(QStackedWidget)

/// The list of pages at the left, the page at the right. A page is made when it is first shown.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    explicit GalleryWindow(QWidget *parent = nullptr);

    /// Shows the page of that name and returns it; null if there is none.
    Page *showPage(const QString &name);

private:
    void showItem(QListWidgetItem *item);

    QListWidget *m_list;
    QStackedWidget *m_stack;
    QHash<QString, Page *> m_made;
    QHash<QString, QWidget *> m_scrollers;
};
