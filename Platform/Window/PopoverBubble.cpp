// SPDX-License-Identifier: MIT
#include "Window/PopoverBubble.h"

#include "Drawing/NSShadow.h"
#include "Drawing/Shades.h"
#include "Scenes/NSViewController.h"
#include "View/NSView.h"
#include "Window/AccessibleWindow.h"
#include "Window/WaylandPlugin.h"
#include "Window/WindowManager.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

bool isFocusable(const QWidget *widget, const QWidget *content)
{
    // The content itself is hidden until it has its place.
    return (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy()
           && widget->isEnabledTo(content) && (widget == content || widget->isVisibleTo(content));
}

Qt::Edge qtEdge(NS::RectEdge edge)
{
    switch (edge) {
    case NS::RectEdge::minX:
        return Qt::LeftEdge;
    case NS::RectEdge::maxX:
        return Qt::RightEdge;
    case NS::RectEdge::minY:
        return Qt::BottomEdge;
    case NS::RectEdge::maxY:
        return Qt::TopEdge;
    }
    Q_UNREACHABLE();
}

void collectTexts(QAccessibleInterface *part, QStringList &texts)
{
    if (!part || part->state().invisible)
        return;
    const QString text = part->text(QAccessible::Name).simplified();
    if (!text.isEmpty()) {
        texts.append(text);
        return;
    }
    for (int i = 0; i < part->childCount(); ++i)
        collectTexts(part->child(i), texts);
}

// A dialog, or a message that is read when it is shown. Orca does not read an alert.
class AccessibleBubble : public AccessiblePopups
{
public:
    explicit AccessibleBubble(PopoverBubble *bubble)
        : AccessiblePopups(bubble,
                           bubble->takesFocus() ? QAccessible::Dialog : QAccessible::Notification)
    { }

    // Qt takes the application for the parent of a window, but does not count popups there.
    QAccessibleInterface *parent() const override
    {
        return widget()->windowType() == Qt::Popup
                       ? QAccessible::queryAccessibleInterface(widget()->parentWidget())
                       : AccessiblePopups::parent();
    }

    // Without the arrow and the shadow.
    QRect rect() const override
    {
        constexpr int margin = PopoverShape::margin;
        return AccessiblePopups::rect().adjusted(margin, margin, -margin, -margin);
    }

protected:
    QString ownName() const override
    {
        QStringList texts;
        for (int i = 0; i < childCount(); ++i)
            collectTexts(child(i), texts);
        return texts.join(u' ');
    }
};

} // namespace

PopoverBubble::Surface PopoverBubble::surfaceFor(const QWidget *view, QWidget *content,
                                                 bool fitsInWindow, bool clicksClose)
{
    const QWidget *const window = view->window();
    const bool isInMenu =
            window->windowType() == Qt::Popup && !qobject_cast<const PopoverBubble *>(window);
    if (window->graphicsProxyWidget() || isInMenu)
        return Surface::child;
    if (WindowManager::canPlaceWindows())
        return WindowManager::hasCompositor() ? Surface::translucentWindow : Surface::maskedWindow;
    if (fitsInWindow)
        return Surface::child;
    if (!firstFocusable(content))
        return Surface::hint;
    // A popup takes the keyboard from the whole desktop. So it needs a user who has just done
    // something in the window that it belongs to, and no other popup may be open.
    const QWidget *const open = QApplication::activePopupWidget();
    const bool canTakeKeyboard =
            window->isActiveWindow() && (!open || open == window) && WaylandPlugin::hasSeenInput();
    return clicksClose && canTakeKeyboard ? Surface::popup : Surface::child;
}

QWidget *PopoverBubble::firstFocusable(QWidget *content)
{
    QWidget *widget = content;
    do {
        if ((widget == content || content->isAncestorOf(widget)) && isFocusable(widget, content))
            return widget;
        widget = widget->nextInFocusChain();
    } while (widget && widget != content);
    return nullptr;
}

PopoverBubble::PopoverBubble(QWidget *view, QWidget *content, Surface surface)
    : QWidget(view->window())
    , m_view(view)
    , m_content(content)
    , m_surface(surface)
    , m_takesFocus(firstFocusable(content))
{
    makeAccessible<PopoverBubble, AccessibleBubble>();
    if (surface != Surface::child) {
        Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint;
        flags |= surface == Surface::popup  ? Qt::Popup
                 : surface == Surface::hint ? Qt::ToolTip
                                            : Qt::Tool;
        if (!m_takesFocus) {
            flags |= Qt::WindowDoesNotAcceptFocus;
            setAttribute(Qt::WA_ShowWithoutActivating);
        }
        setWindowFlags(flags);
        if (surface == Surface::popup)
            AccessibleWindow::replaceStandard(parentWidget());
        setAttribute(Qt::WA_WindowPropagation);
        setAttribute(Qt::WA_TranslucentBackground, surface != Surface::maskedWindow);
    }
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_NoMousePropagation);
    setLayoutDirection(view->layoutDirection());
    updatePalette();
    content->setParent(this);
    content->show();
}

PopoverBubble::~PopoverBubble()
{
    releaseContent();
}

void PopoverBubble::releaseContent()
{
    // A view that is no controller's any more ends with the bubble.
    if (m_content && m_content->parentWidget() == this && NS::viewController(m_content)) {
        m_content->clearMask();
        m_content->setParent(nullptr);
    }
}

QRectF PopoverBubble::innerBody() const
{
    constexpr int margin = PopoverShape::margin;
    return QRectF(rect().adjusted(margin, margin, -margin, -margin));
}

QRectF PopoverBubble::body() const
{
    return innerBody().translated(geometry().topLeft());
}

void PopoverBubble::setBody(const QRectF &body)
{
    constexpr int margin = PopoverShape::margin;
    setGeometry(NS::roundedToUnits(body).adjusted(-margin, -margin, margin, margin));
}

void PopoverBubble::setArrow(NS::RectEdge edge, std::optional<double> arrow)
{
    if (edge == m_edge && arrow == m_arrow)
        return;
    m_edge = edge;
    m_arrow = arrow;
    updateShape();
}

void PopoverBubble::setAnchor(const QRectF &anchor, NS::RectEdge edge)
{
    // The arrow's tip is that far from the edge of the window.
    constexpr double inset = PopoverShape::margin - PopoverShape::arrowLength;
    const QRectF touched = anchor.adjusted(inset, inset, -inset, -inset);
    if (!windowHandle())
        create(); // not winId(), which gives the widgets of the parent windows of their own, too
    WaylandPlugin::setPopupAnchor(windowHandle(), touched.toRect(), qtEdge(edge));
}

QPainterPath PopoverBubble::outline() const
{
    return popoverOutline(innerBody(), m_edge, m_arrow);
}

void PopoverBubble::updateShape()
{
    if (m_surface == Surface::maskedWindow) {
        // A unit more for the line around.
        const QPainterPath shape =
                popoverOutline(innerBody().adjusted(-1, -1, 1, 1), m_edge,
                               m_arrow ? std::optional(*m_arrow + 1) : std::nullopt);
        setMask(shape.toFillPolygon().toPolygon());
    }
    update();
}

// A little raised above the window that it belongs to.
void PopoverBubble::updatePalette()
{
    const QPalette around = parentWidget()->palette();
    QPalette own = palette();
    for (const auto group : { QPalette::Active, QPalette::Inactive, QPalette::Disabled }) {
        const QColor window = around.color(group, QPalette::Window);
        own.setColor(group, QPalette::Window,
                     isDark(around) ? mixed(window, Qt::white, 0.07)
                                    : mixed(window, Qt::white, 0.8));
    }
    if (own.color(QPalette::Window) != palette().color(QPalette::Window))
        setPalette(own);
}

bool PopoverBubble::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::LayoutRequest:
        Q_EMIT contentChanged();
        break;
    case QEvent::ShortcutOverride:
        // Esc belongs to the popover before it belongs to a shortcut of the window.
        if (static_cast<QKeyEvent *>(event)->matches(QKeySequence::Cancel)) {
            event->accept();
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool PopoverBubble::focusNextPrevChild(bool next)
{
    if (isWindow())
        return QWidget::focusNextPrevChild(next);
    QWidget *const current = window()->focusWidget();
    if (!current || !m_content)
        return false;
    for (QWidget *widget = current;;) {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        if (widget == current)
            return true;
        if (isAncestorOf(widget) && isFocusable(widget, m_content)) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
}

void PopoverBubble::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    // With a style sheet, no palette change says that the window has other colours.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        updatePalette();
    // The window that it points into looks active together with it.
    if (event->type() == QEvent::ActivationChange && isWindow() && parentWidget()) {
        QEvent change(QEvent::ActivationChange);
        QCoreApplication::sendEvent(parentWidget(), &change);
    }
}

void PopoverBubble::closeEvent(QCloseEvent *event)
{
    const QPointer<PopoverBubble> self(this);
    Q_EMIT dismissed();
    event->setAccepted(!self || !isVisible()); // it can refuse to close
}

void PopoverBubble::keyPressEvent(QKeyEvent *event)
{
    // Keys that nothing in it wants are not for what lies behind it.
    if (event->matches(QKeySequence::Cancel))
        Q_EMIT escaped();
}

void PopoverBubble::mousePressEvent(QMouseEvent *event)
{
    // Qt sends a popup the clicks outside of it, too.
    if (rect().contains(event->position().toPoint()) && !outline().contains(event->position()))
        Q_EMIT pressedBeside(event->globalPosition().toPoint());
}

void PopoverBubble::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    Q_EMIT moved();
}

void PopoverBubble::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool onDark = isDark(palette());
    const double hairline = 1.0 / devicePixelRatioF();
    const double half = hairline / 2.0;
    const QPainterPath edge =
            popoverOutline(innerBody().adjusted(-half, -half, half, half), m_edge,
                           m_arrow ? std::optional(*m_arrow + half) : std::nullopt);
    const QColor line = mixed(palette().color(QPalette::Window),
                              palette().color(QPalette::WindowText), onDark ? 0.25 : 0.2);
    if (m_surface != Surface::maskedWindow) {
        const NS::Shadow shadow(
                NS::Color({ .red = 0, .green = 0, .blue = 0, .alpha = onDark ? 0.5 : 0.25 }),
                { 0, -2 }, 7);
        shadow.draw(painter, edge);
    } else {
        painter.fillRect(rect(), line); // up to the steps of the mask
    }
    painter.fillPath(edge, palette().color(QPalette::Window));
    painter.strokePath(edge, QPen(line, m_surface == Surface::maskedWindow ? 1.0 : hairline));
}

void PopoverBubble::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_content) {
        const QRect place = innerBody().toRect();
        m_content->setGeometry(place);
        // Opaque content must not cover the round corners.
        QPainterPath round;
        round.addRoundedRect(QRectF(QPointF(), QSizeF(place.size())), PopoverShape::cornerRadius,
                             PopoverShape::cornerRadius);
        m_content->setMask(round.toFillPolygon().toPolygon());
    }
    updateShape();
}

} // namespace Pellarvine::detail
