// SPDX-License-Identifier: MIT
// Not API: keyboard focus and accessibility of the views in a navigation controller.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace NS {
class ViewController;
}

namespace Pellarvine {
class NavigationController;
}

namespace Pellarvine::detail {

/// Watches a navigation controller. The top is the uppermost view in the content view, which may
/// differ from the last in the stack, because a program may change one without the other.
///
/// When another view becomes the top and the content view is visible, the title of its controller
/// is announced. The view gets the keyboard focus after a push, and otherwise only if the previous
/// top had it: a sidebar that replaces pages keeps the focus. The widget that had the focus last
/// gets it again. If viewWillAppear() of the controller sets the focus, it stays there.
///
/// Views below the top are disabled, so that Tab and mnemonics do not reach hidden controls.
class NavigationFocus : public QObject
{
public:
    explicit NavigationFocus(NavigationController *navigation);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Covered
    {
        QPointer<QWidget> view;
        bool isDisabledHere; // false: the program had disabled it
    };

    void watchContentView(QWidget *view);
    void updateLater();
    void update();
    void uncover(QWidget *view);
    void cover();
    void welcome(NS::ViewController *controller, bool isPushed, bool hadFocus);

    NavigationController *m_navigation;
    QPointer<QWidget> m_contentView;
    QPointer<QWidget> m_top;
    QList<QPointer<QObject>> m_added; // since the last update, into a visible content view
    QList<Covered> m_covered;
    bool m_hasTop = false; // even if it has been destroyed since
    bool m_hasLostFocus = false; // the top was hidden while it had the focus
    bool m_isUpdateQueued = false;
    bool m_canGoBack = false; // the value of the last canGoBackChanged()
};

} // namespace Pellarvine::detail
