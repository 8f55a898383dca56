// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Pellarvine/Window.h>

#include <QHash>

class Page;
namespace Pellarvine {
class BorderView;
}
QT_FORWARD_DECLARE_CLASS(QBoxLayout)
QT_FORWARD_DECLARE_CLASS(QLabel)
QT_FORWARD_DECLARE_CLASS(QLineEdit)
QT_FORWARD_DECLARE_CLASS(QListWidget)
QT_FORWARD_DECLARE_CLASS(QListWidgetItem)
QT_FORWARD_DECLARE_CLASS(QMenu)
QT_FORWARD_DECLARE_CLASS(QStackedWidget)
QT_FORWARD_DECLARE_CLASS(QToolButton)

/// The window: the list of pages at the left, the page at the right, and a title bar with a search
/// field and tools. The contents are made after the window is on the screen, each page when it is
/// shown for the first time.
class GalleryWindow : public Pellarvine::Window
{
    Q_OBJECT

public:
    explicit GalleryWindow(QWidget *parent = nullptr);

    /// Shows the page of that name and returns it. Null if there is no such page.
    Page *showPage(const QString &name);

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void fill();
    void makeSidebar();
    QWidget *makeInnerTitleBar();
    QWidget *makeToolBar();
    void fillMenu(QMenu *menu);
    void keepClearOfButtons();
    void styleSidebar();
    void filterPages(const QString &text);
    void step(int by);
    int rowOf(const QString &name) const;
    void showItem(QListWidgetItem *item);

    Pellarvine::BorderView *m_sidebar = nullptr;
    QListWidget *m_list = nullptr;
    QLabel *m_nothing = nullptr;
    QLineEdit *m_search = nullptr;
    QLabel *m_place = nullptr;
    QToolButton *m_back = nullptr;
    QToolButton *m_forward = nullptr;
    QStackedWidget *m_stack = nullptr; // null until the contents are made
    QBoxLayout *m_innerLayout = nullptr;
    QBoxLayout *m_toolLayout = nullptr;
    QHash<QString, Page *> m_made;
    QHash<QString, QWidget *> m_scrollers;
};
