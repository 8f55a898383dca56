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

/// Watches a navigation controller. When a view is placed on top while the content view can be
/// seen, it is announced by its controller's title. The keyboard focus goes to it after a push, and
/// after a replace if what has left had the focus: otherwise a sidebar that replaces pages would
/// lose it with every arrow key. A view that comes again gives it to the widget that had it last,
/// and a controller whose viewWillAppear() sets the focus has its way.
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
    void watchContentView(QWidget *view);
    void coverViews(const QList<NS::ViewController *> &stack);
    void followStack(const QList<NS::ViewController *> &stack);

    QList<NS::ViewController *> m_stack; // for comparison alone: they may be gone
    QPointer<QWidget> m_contentView;
    QPointer<QWidget> m_top; // the view of the last in the stack
    QPointer<QObject> m_added; // came into the visible content view last
    QList<QPointer<QWidget>> m_covered; // disabled here
    bool m_hasLostFocus = false; // the top was hidden while it had the focus
};

} // namespace Pellarvine::detail
