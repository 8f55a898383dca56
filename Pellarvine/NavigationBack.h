// SPDX-License-Identifier: MIT
// Not API: the ways in which a user goes back in a navigation controller.
#pragma once

#include <QAction>
#include <QList>
#include <QObject>

namespace Pellarvine {
class NavigationController;
}

namespace Pellarvine::detail {

/// Goes back when it is triggered, and is enabled while there is a way back.
class BackAction : public QAction
{
public:
    explicit BackAction(NavigationController *navigation);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void retranslate();
};

/// Goes back by Alt+Left, the mouse's Back button and Esc inside the navigation controller's view.
/// Of controllers that lie in each other, the innermost that can go back does. Widgets come before
/// Esc, so that it still ends the editing of an item, and after the others: a list would take them.
class BackInput : public QObject
{
public:
    explicit BackInput(NavigationController *navigation);
    ~BackInput() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool goBack();
    const QWidget *view() const;
    bool isInside(const QWidget *widget) const;
    bool isInnermost(const QWidget *widget) const;

    NavigationController *m_navigation;
    static inline QList<BackInput *> s_all;
};

} // namespace Pellarvine::detail
