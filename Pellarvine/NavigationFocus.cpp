// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationFocus.h"

#include "Pellarvine/NavigationController.h"

#include <QAccessible>
#include <QChildEvent>
#include <QVariant>

#include <utility>

namespace Pellarvine::detail {

namespace {

// Of a view that has left: Qt forgets where the focus was when a widget changes its window.
constexpr auto lastFocusProperty = "_pellarvine_lastFocus";

// Null if it is elsewhere. Also in a window that is not active, where nothing has the focus now.
QWidget *focusInside(const QWidget *view)
{
    QWidget *const focus = view->window()->focusWidget();
    return focus && (focus == view || view->isAncestorOf(focus)) ? focus : nullptr;
}

void rememberFocus(QWidget *view)
{
    if (QWidget *const focus = focusInside(view))
        view->setProperty(lastFocusProperty, QVariant::fromValue(QPointer<QWidget>(focus)));
}

bool canTakeFocus(const QWidget *widget, const QWidget *view)
{
    return view->isAncestorOf(widget) && widget->isEnabled() && widget->isVisibleTo(view)
           && (widget->focusPolicy() & Qt::TabFocus);
}

void focus(QWidget *view)
{
    QWidget *target = view->property(lastFocusProperty).value<QPointer<QWidget>>();
    if (!target || !canTakeFocus(target, view))
        target = nullptr;
    for (QWidget *next = view->nextInFocusChain(); !target && next != view;
         next = next->nextInFocusChain()) {
        if (canTakeFocus(next, view))
            target = next;
    }
    (target ? target : view)->setFocus(Qt::OtherFocusReason);
}

void announce(const NS::ViewController *controller, QWidget *view)
{
    if (view->accessibleName().isEmpty())
        view->setAccessibleName(controller->title());
    QAccessibleEvent alert(view, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace

NavigationFocus::NavigationFocus(NavigationController *navigation)
{
    connect(navigation, &NavigationController::contentViewChanged, this,
            &NavigationFocus::watchContentView);
    connect(navigation, &NavigationController::navigationStackChanged, this,
            &NavigationFocus::followStack);
}

bool NavigationFocus::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_contentView && event->type() == QEvent::ChildAdded
        && m_contentView->isVisible())
        m_added = static_cast<QChildEvent *>(event)->child();
    // The focus moves on once this event is done.
    if (watched == m_top && event->type() == QEvent::Hide && !event->spontaneous()) {
        m_hasLostFocus = focusInside(m_top);
        rememberFocus(m_top);
    }
    return false;
}

void NavigationFocus::watchContentView(QWidget *view)
{
    if (m_contentView && m_contentView != m_top)
        m_contentView->removeEventFilter(this);
    m_contentView = view;
    if (view)
        view->installEventFilter(this);
}

void NavigationFocus::coverViews(const QList<NS::ViewController *> &stack)
{
    const QList<QPointer<QWidget>> before = std::exchange(m_covered, {});
    for (NS::ViewController *const controller : stack) {
        QWidget *const view = controller->isViewLoaded() ? controller->view() : nullptr;
        if (!view || view == m_top || view->parentWidget() != m_contentView)
            continue;
        if (before.contains(view)) {
            m_covered.append(view);
        } else if (view->isEnabled()) { // else that is the program's affair
            m_covered.append(view);
            rememberFocus(view);
            view->setEnabled(false);
        }
    }
    for (QWidget *const view : before) {
        if (view && !m_covered.contains(view))
            view->setEnabled(true);
    }
}

void NavigationFocus::followStack(const QList<NS::ViewController *> &stack)
{
    const QList<NS::ViewController *> before = std::exchange(m_stack, stack);
    const bool hadFocus = std::exchange(m_hasLostFocus, false);
    if (m_top && m_top != m_contentView)
        m_top->removeEventFilter(this);
    NS::ViewController *const controller = stack.isEmpty() ? nullptr : stack.last();
    m_top = controller && controller->isViewLoaded() ? controller->view() : nullptr;
    coverViews(stack);
    if (!m_top)
        return;
    m_top->installEventFilter(this);
    if (std::exchange(m_added, nullptr) != m_top)
        return; // it was there before
    announce(controller, m_top);
    const bool isPushed = stack.size() > before.size();
    // Unless its controller has chosen where.
    if ((isPushed || hadFocus) && !focusInside(m_top))
        focus(m_top);
}

} // namespace Pellarvine::detail
