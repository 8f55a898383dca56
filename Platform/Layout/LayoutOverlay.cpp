// SPDX-License-Identifier: MIT
#include "Layout/LayoutOverlay.h"

#include "Layout/LayoutFindings.h"
#include "Layout/LayoutHosts.h"
#include "Layout/NSLayoutOverlay.h"

#include <QChildEvent>
#include <QCoreApplication>
#include <QPainter>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

// Visible on light and on dark backgrounds.
constexpr QColor frameColor(0x2f, 0x86, 0xf6, 0xc0);
constexpr QColor baselineColor(0xc2, 0x3c, 0xd6);
constexpr QColor violationColor(0xd8, 0x4a, 0x1b);
constexpr double arrowHead = 4.0;
constexpr double textMargin = 3.0;

void drawArrow(QPainter &painter, const QLineF &line)
{
    painter.setPen(QPen(violationColor, 2.0));
    painter.drawLine(line);
    painter.save();
    painter.translate(line.p2());
    painter.rotate(-line.angle());
    painter.drawLine(QPointF(), QPointF(-arrowHead, -arrowHead));
    painter.drawLine(QPointF(), QPointF(-arrowHead, arrowHead));
    painter.restore();
}

// Beside the end of the arrow, or as near to it as the text fits into the area.
void drawText(QPainter &painter, const Violation &violation, const QRectF &area)
{
    const QRectF size = painter.boundingRect(QRectF(), Qt::AlignLeft, violation.text)
                                .marginsAdded({ textMargin, 0.0, textMargin, 0.0 });
    QRectF box(violation.line.p2() + QPointF(arrowHead, arrowHead), size.size());
    box.moveRight(std::min(box.right(), area.right()));
    box.moveLeft(std::max(box.left(), area.left()));
    box.moveBottom(std::min(box.bottom(), area.bottom()));
    box.moveTop(std::max(box.top(), area.top()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(violationColor);
    painter.drawRoundedRect(box, textMargin, textMargin);
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter, violation.text);
}

bool changesPlaces(QEvent::Type type)
{
    switch (type) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::LayoutRequest:
    case QEvent::LayoutDirectionChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::ParentChange:
    case QEvent::ZOrderChange:
        return true;
    default:
        return false;
    }
}

// Reads the environment variable once, at the start of the application.
void startDebugging()
{
    if (qEnvironmentVariableIntValue("PELLARVINE_LAYOUT_DEBUG") != 0)
        new LayoutDebugging(QCoreApplication::instance());
}
Q_COREAPP_STARTUP_FUNCTION(startDebugging)

} // namespace

LayoutOverlay::LayoutOverlay(QWidget *view)
{
    qApp->installEventFilter(this); // filters the ChildAdded event that setParent() sends
    setParent(view);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(view->rect());
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.8);
    setFont(small);
    show();
}

LayoutOverlay *LayoutOverlay::of(const QWidget *view)
{
    return view->findChild<LayoutOverlay *>(QString(), Qt::FindDirectChildrenOnly);
}

bool LayoutOverlay::eventFilter(QObject *watched, QEvent *event)
{
    // A QSplitter would make a pane of it.
    if (event->type() == QEvent::ChildAdded)
        return static_cast<QChildEvent *>(event)->child() == this;
    if (watched == this || !watched->isWidgetType() || !changesPlaces(event->type()))
        return false;
    const QWidget *const view = parentWidget();
    auto *const widget = static_cast<QWidget *>(watched);
    if (widget != view && !view->isAncestorOf(widget))
        return false;
    if (geometry() != view->rect())
        setGeometry(view->rect());
    if (widget->parentWidget() == view)
        raise();
    update();
    return false;
}

void LayoutOverlay::paintEvent(QPaintEvent *)
{
    const LayoutFindings findings = layoutFindings(parentWidget());
    QPainter painter(this);
    painter.setPen(frameColor);
    for (const QRectF &frame : findings.frames)
        painter.drawRect(frame.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.setPen(QPen(frameColor, 1.0, Qt::DashLine));
    for (const QRectF &guide : findings.guides)
        painter.drawRect(guide.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.setPen(baselineColor);
    for (const QLineF &baseline : findings.baselines)
        painter.drawLine(baseline);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Violation &violation : findings.violations)
        drawArrow(painter, violation.line);
    for (const Violation &violation : findings.violations)
        drawText(painter, violation, QRectF(rect()));
}

LayoutDebugging::LayoutDebugging(QObject *parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool LayoutDebugging::eventFilter(QObject *watched, QEvent *event)
{
    const bool isOccasion = event->type() == QEvent::Show || event->type() == QEvent::LayoutRequest;
    if (!isOccasion || !watched->isWidgetType())
        return false;
    auto *const widget = static_cast<QWidget *>(watched);
    if (LayoutHosts::all().ownEngine(widget) && widget->window()->isVisible())
        NS::setShowsLayout(widget->window(), true);
    return false;
}

} // namespace Pellarvine::detail

namespace NS {

void setShowsLayout(QWidget *widget, bool shows)
{
    detail::LayoutOverlay *const overlay = detail::LayoutOverlay::of(widget);
    if (shows && !overlay)
        new detail::LayoutOverlay(widget);
    else if (!shows)
        delete overlay;
}

bool showsLayout(const QWidget *widget)
{
    return detail::LayoutOverlay::of(widget);
}

} // namespace NS
