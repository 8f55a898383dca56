// SPDX-License-Identifier: MIT
// Not API: looks after the keyboard and the screen reader where views come and go.
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

/// Watches a navigation controller. The top is the uppermost of the views in the content view; the
/// stack does not decide, because a program may change one without the other. When another view
/// becomes the top while the content view can be seen, it is announced by its controller's title.
/// The keyboard focus goes to it after a push, and otherwise if the view before it had the focus: a
/// sidebar that replaces pages would else lose it with every arrow key. A view that comes again
/// gives it to the widget that had it last, and a controller whose viewWillAppear() sets the focus
/// has its way.
///
/// Views below the top stay where they are, but the mouse does not reach them. Neither does the
/// keyboard: they are disabled for as long as something lies on them, or Tab and mnemonics would
/// work what nobody sees.
class NavigationFocus : public QObject
{
public:
    explicit NavigationFocus(NavigationController *navigation);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Covered
    {
        QPointer<QWidget> view;
        bool isDisabledHere; // else that is the program's affair
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
    bool m_hasTop = false; // even if that is gone by now
    bool m_hasLostFocus = false; // the top was hidden while it had the focus
    bool m_isUpdateQueued = false;
    bool m_canGoBack = false; // as it was told last
};

} // namespace Pellarvine::detail
