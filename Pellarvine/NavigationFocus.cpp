// SPDX-License-Identifier: MIT
#include "Pellarvine/NavigationFocus.h"

#include "Pellarvine/NavigationController.h"
#include "Pellarvine/NavigationPlacement.h"

#include <QAccessible>
#include <QChildEvent>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace Pellarvine::detail {

namespace {

// Kept here because Qt forgets the focus widget of a view that changes its window.
constexpr auto lastFocusProperty = "_pellarvine_lastFocus";

// Also true in an inactive window, where no widget has the focus now.
bool hasFocusInside(const QWidget *view)
{
    const QWidget *const focus = view->window()->focusWidget();
    return focus && (focus == view || view->isAncestorOf(focus));
}

// The focus may have moved to another view already; focusWidget() still returns the last one here.
void rememberFocus(QWidget *view)
{
    if (QWidget *const focus = view->focusWidget())
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
    : m_navigation(navigation)
{
    connect(navigation, &NavigationController::contentViewChanged, this,
            &NavigationFocus::watchContentView);
    connect(navigation, &NavigationController::navigationStackChanged, this,
            &NavigationFocus::update);
}

bool NavigationFocus::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_contentView
        && (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildRemoved)) {
        QObject *const child = static_cast<QChildEvent *>(event)->child();
        if (!child->isWidgetType())
            return false; // for example a layout
        if (event->type() == QEvent::ChildAdded) {
            child->installEventFilter(this);
            if (m_contentView->isVisible())
                m_added.append(child);
        } else {
            child->removeEventFilter(this);
        }
        updateLater();
        return false;
    }
    switch (event->type()) {
    case QEvent::Hide:
        if (watched == m_top && !event->spontaneous()) {
            // Qt moves the focus after this event.
            m_hasLostFocus = hasFocusInside(m_top);
            rememberFocus(m_top);
        }
        break;
    case QEvent::HideToParent:
    case QEvent::ShowToParent:
    case QEvent::ZOrderChange:
        if (watched != m_contentView)
            updateLater();
        break;
    default:
        break;
    }
    return false;
}

void NavigationFocus::watchContentView(QWidget *view)
{
    if (m_contentView) {
        m_contentView->removeEventFilter(this);
        for (QObject *const child : m_contentView->children())
            child->removeEventFilter(this);
    }
    m_contentView = view;
    if (view) {
        view->installEventFilter(this);
        for (QObject *const child : view->children()) {
            if (child->isWidgetType())
                child->installEventFilter(this);
        }
    }
    update();
}

// The program may still be removing views, or may set the stack next.
void NavigationFocus::updateLater()
{
    if (!std::exchange(m_isUpdateQueued, true))
        QMetaObject::invokeMethod(this, &NavigationFocus::update, Qt::QueuedConnection);
}

// Enabling, disabling and setting the focus can call the program's code, which may delete these
// objects or navigate.
void NavigationFocus::update()
{
    m_isUpdateQueued = false;
    const QPointer<NavigationFocus> self = this;
    const QList<NS::ViewController *> all = screens(m_navigation);
    NS::ViewController *const controller = all.isEmpty() ? nullptr : all.last();
    QWidget *const top = controller ? controller->view() : nullptr;
    const QList<QPointer<QObject>> added = std::exchange(m_added, {});
    if (top != m_top) {
        QWidget *const before = std::exchange(m_top, top);
        const bool hadTop = std::exchange(m_hasTop, top != nullptr);
        const bool isAdded = added.contains(top);
        const bool isBelow = before && std::any_of(all.cbegin(), all.cend(), [&](auto *one) {
                                 return one->view() == before;
                             });
        const bool hadFocus = std::exchange(m_hasLostFocus, false)
                              || (before && hasFocusInside(before))
                              || (m_contentView && !m_contentView->window()->focusWidget());
        if (isBelow)
            rememberFocus(before);
        if (top)
            uncover(top);
        // A view that was there before the first appearance is shown by the window itself.
        const bool hasCome = isAdded || hadTop;
        if (self && top && top == m_top && hasCome && m_contentView->isVisible())
            welcome(controller, isAdded && (isBelow || !hadTop), hadFocus);
    }
    if (self)
        cover();
    const bool canGoBack = self && m_navigation->canGoBack();
    if (self && std::exchange(m_canGoBack, canGoBack) != canGoBack)
        Q_EMIT m_navigation->canGoBackChanged(canGoBack);
}

void NavigationFocus::uncover(QWidget *view)
{
    const auto found = std::find_if(m_covered.begin(), m_covered.end(),
                                    [view](const Covered &one) { return one.view == view; });
    if (found == m_covered.end())
        return;
    const bool isDisabledHere = found->isDisabledHere;
    m_covered.erase(found);
    const QPointer<NavigationFocus> self = this;
    const QPointer<NS::ViewController> controller = NS::viewController(view);
    const bool isHere = view->parentWidget() == m_contentView;
    if (isDisabledHere)
        view->setEnabled(true);
    if (self && controller && isHere)
        Q_EMIT m_navigation->viewUncovered(controller);
}

void NavigationFocus::cover()
{
    const QPointer<NavigationFocus> self = this;
    QList<QPointer<QWidget>> below;
    const QList<NS::ViewController *> all = screens(m_navigation);
    for (NS::ViewController *const controller : all) {
        if (controller != all.last())
            below.append(controller->view());
    }
    const QList<Covered> before = m_covered;
    for (const Covered &one : before) {
        if (self && one.view && !below.contains(one.view))
            uncover(one.view);
    }
    for (const QPointer<QWidget> &view : std::as_const(below)) {
        if (!self)
            return;
        const bool isCovered = std::any_of(m_covered.cbegin(), m_covered.cend(),
                                           [&](const Covered &one) { return one.view == view; });
        if (!view || isCovered)
            continue;
        m_covered.append({ view, view->isEnabledTo(m_contentView) });
        if (m_covered.constLast().isDisabledHere) {
            rememberFocus(view);
            view->setEnabled(false);
        }
        NS::ViewController *const controller = self ? NS::viewController(view) : nullptr;
        if (controller)
            Q_EMIT m_navigation->viewCovered(controller);
    }
    if (self)
        m_covered.removeIf([](const Covered &one) { return !one.view; });
}

void NavigationFocus::welcome(NS::ViewController *controller, bool isPushed, bool hadFocus)
{
    QWidget *const view = controller->view();
    announce(controller, view);
    // Unless the controller has set the focus.
    if ((isPushed || hadFocus) && !hasFocusInside(view))
        focus(view);
}

} // namespace Pellarvine::detail
