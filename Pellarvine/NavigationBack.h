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

/// Goes back when it is triggered. Enabled while canGoBack() is true.
class BackAction : public QAction
{
public:
    explicit BackAction(NavigationController *navigation);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void retranslate();
};

/// Goes back by Alt+Left, the mouse's Back button and Esc inside the navigation controller's view.
/// If navigation controllers are nested, the innermost that can go back does. Esc goes to the
/// widgets first, so that it still ends the editing of an item. The others do not, because a list
/// would take them.
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
