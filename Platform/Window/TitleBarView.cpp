// SPDX-License-Identifier: MIT
#include "Window/TitleBarView.h"

#include "View/AccessibleControl.h"
#include "View/NSView.h"
#include "Window/NSTitlebarAccessoryViewController.h"
#include "Window/TitleBarHandles.h"
#include "Window/TitleBarItems.h"
#include "Window/WindowDrag.h"

#include <QChildEvent>
#include <QContextMenuEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Pellarvine::detail {

namespace {

class AccessibleTitleBar : public AccessibleControl
{
public:
    explicit AccessibleTitleBar(TitleBarView *bar)
        : AccessibleControl(bar, QAccessible::TitleBar, TitleBarView::tr("Title bar"))
    { }
};

} // namespace

TitleBarView::TitleBarView(QWidget *window, WindowDrag *drag)
    : QWidget(window)
    , m_drag(drag)
{
    makeAccessible<TitleBarView, AccessibleTitleBar>();
    m_items = new TitleBarItems(this);
}

// The accessories' views end with the bar's children, when the bar itself no longer listens.
TitleBarView::~TitleBarView()
{
    for (NS::TitlebarAccessoryViewController *const controller : std::as_const(m_accessories))
        controller->disconnect(this);
}

void TitleBarView::setLetsClicksThrough(bool lets)
{
    m_letsClicksThrough = lets;
    updateMask();
    update();
}

void TitleBarView::insertAccessory(NS::TitlebarAccessoryViewController *controller)
{
    m_accessories.append(controller);
    QPointer<QWidget> shown = controller->view();
    if (shown)
        NS::addSubview(this, shown);
    connect(controller, &NS::ViewController::viewChanged, this,
            [this, shown](QWidget *view) mutable {
                const QPointer<QWidget> former = std::exchange(shown, view);
                if (view) {
                    NS::addSubview(this, view);
                    if (former && former->parentWidget() == this) {
                        former->hide();
                        former->deleteLater(); // the bar was its only owner
                    }
                }
                Q_EMIT fullHeightChanged();
            });
    connect(controller, &NS::TitlebarAccessoryViewController::fullScreenMinHeightChanged, this,
            &TitleBarView::fullHeightChanged);
    connect(controller, &QObject::destroyed, this, [this, controller] {
        m_accessories.removeOne(controller);
        Q_EMIT fullHeightChanged();
    });
    Q_EMIT fullHeightChanged();
}

void TitleBarView::removeAccessory(int index)
{
    NS::TitlebarAccessoryViewController *const controller = m_accessories.takeAt(index);
    controller->disconnect(this);
    controller->setParent(nullptr);
    if (QWidget *const view = controller->view())
        view->setParent(nullptr);
    Q_EMIT fullHeightChanged();
}

// A view that a program has moved into another widget is not the bar's any more.
int TitleBarView::heightOf(NS::TitlebarAccessoryViewController *controller) const
{
    const QWidget *const view = controller->view();
    return view && view->parentWidget() == this ? view->height() : 0;
}

int TitleBarView::fullHeight() const
{
    int height = standardHeight;
    for (NS::TitlebarAccessoryViewController *const controller : m_accessories)
        height += heightOf(controller);
    return height;
}

int TitleBarView::fullScreenHeight() const
{
    double height = standardHeight;
    for (const NS::TitlebarAccessoryViewController *const controller : m_accessories)
        height = std::max(height, controller->fullScreenMinHeight());
    return std::min(fullHeight(), int(std::ceil(height)));
}

void TitleBarView::arrange()
{
    const QScopedValueRollback<bool> guard(m_isArranging, true);
    m_items->arrange();
    arrangeAccessories();
    updateMask();
}

int TitleBarView::leastWidth() const
{
    int width = m_items->leastWidth();
    if (layout())
        width = std::max(width, layout()->totalMinimumSize().width());
    for (NS::TitlebarAccessoryViewController *const controller : m_accessories) {
        const QWidget *const view = controller->view();
        if (view && view->parentWidget() == this)
            width = std::max({ width, view->minimumWidth(), view->minimumSizeHint().width() });
    }
    return width;
}

// A mask leaves the pointer, its cursor and the wheel to what lies below.
void TitleBarView::updateMask()
{
    if (!m_letsClicksThrough)
        return clearMask();
    QRegion solid(-1, -1, 1, 1); // an empty region would be no mask
    for (const QObject *const child : children()) {
        if (child->isWidgetType() && !static_cast<const QWidget *>(child)->isHidden())
            solid += static_cast<const QWidget *>(child)->geometry();
    }
    setMask(solid);
}

void TitleBarView::arrangeAccessories()
{
    int y = standardHeight;
    for (NS::TitlebarAccessoryViewController *const controller : std::as_const(m_accessories)) {
        QWidget *const view = controller->view();
        if (view && view->parentWidget() == this)
            view->setGeometry(0, y, width(), view->height());
        y += heightOf(controller);
    }
    m_arrangedHeight = y;
}

void TitleBarView::refresh()
{
    m_items->refresh();
    update();
}

bool TitleBarView::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        Q_EMIT leastWidthChanged();
    return QWidget::event(event);
}

// Sees its children, and the window before its widgets do.
bool TitleBarView::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return watched->isWindowType() && takeFromHandle(static_cast<QMouseEvent *>(event));
    case QEvent::Resize:
        if (!m_isArranging && fullHeight() != m_arrangedHeight)
            Q_EMIT fullHeightChanged();
        [[fallthrough]];
    case QEvent::Move:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        if (!m_isArranging && m_letsClicksThrough && watched->isWidgetType())
            updateMask();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

// Takes a press on a part of a view that moves the window, as if the bar itself were there.
bool TitleBarView::takeFromHandle(QMouseEvent *event)
{
    const QPoint place = mapFrom(parentWidget(), event->position().toPoint());
    QWidget *const target = childAt(place);
    // Something of the window may lie above the bar.
    const bool isOnTop = target && parentWidget()->childAt(event->position().toPoint()) == target;
    if (m_items->isBare() || !isOnTop || event->button() != Qt::LeftButton
        || !mouseDownCanMoveWindow(target, target->mapFrom(this, place)))
        return false;
    QMouseEvent own(event->type(), place, event->globalPosition(), event->button(),
                    event->buttons(), event->modifiers());
    return QCoreApplication::sendEvent(this, &own);
}

void TitleBarView::childEvent(QChildEvent *event)
{
    QWidget::childEvent(event);
    if (!event->child()->isWidgetType())
        return;
    if (event->type() == QEvent::ChildRemoved) {
        event->child()->removeEventFilter(this);
        // Until the event ends, the bar is still the parent.
        QMetaObject::invokeMethod(
                this,
                [this] {
                    if (fullHeight() != m_arrangedHeight)
                        Q_EMIT fullHeightChanged();
                },
                Qt::QueuedConnection);
    }
    if (event->type() != QEvent::ChildAdded)
        return;
    event->child()->installEventFilter(this);
    if (m_items)
        m_items->raiseAbove(event->child());
}

void TitleBarView::paintEvent(QPaintEvent *)
{
    if (m_letsClicksThrough)
        return;
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.14F);
    painter.fillRect(0, height() - 1, width(), 1, line);
}

void TitleBarView::mousePressEvent(QMouseEvent *event)
{
    if (m_items->isBare()
        || (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton))
        return event->ignore();
    if (event->button() == Qt::LeftButton)
        m_drag->prepare(event->globalPosition().toPoint());
    event->accept();
}

void TitleBarView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_items->isBare() || event->button() != Qt::MiddleButton || !rect().contains(event->pos()))
        return event->ignore();
    Q_EMIT clicked(TitleBarClick::middle, event->globalPosition().toPoint());
}

void TitleBarView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (m_items->isBare() || event->button() != Qt::LeftButton)
        return event->ignore();
    Q_EMIT clicked(TitleBarClick::doubleClick, event->globalPosition().toPoint());
}

void TitleBarView::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_items->isBare())
        return event->ignore();
    Q_EMIT clicked(TitleBarClick::right, event->globalPos());
}

} // namespace Pellarvine::detail
