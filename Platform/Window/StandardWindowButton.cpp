// SPDX-License-Identifier: MIT
#include "Window/StandardWindowButton.h"

#include "Base/Assign.h"
#include "Drawing/Shades.h"
#include "View/FocusRing.h"
#include "Window/PopoverBubble.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace Pellarvine::detail {

namespace {

constexpr double diameter = 12.0;

// The colours of the close, minimise and zoom buttons.
constexpr QRgb activeColors[] = { 0xffef6156, 0xfff2b63c, 0xff56bf53 };

} // namespace

bool looksActive(const QWidget *widget)
{
    const QWidget *const window = widget->window();
    if (!window->isVisible() || widget->isActiveWindow())
        return true;
    // A popover belongs to the window that it points into, even where it is a window itself. Not
    // every style counts that window as active then.
    const QWidget *active = QApplication::activeWindow();
    while (const auto *const bubble = qobject_cast<const PopoverBubble *>(active))
        active = bubble->parentWidget();
    return active == window;
}

StandardWindowButton::StandardWindowButton(NS::WindowButton kind, QWidget *parent)
    : QAbstractButton(parent)
    , m_kind(kind)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_NoMousePropagation);
    updateName();
}

void StandardWindowButton::setShowsGlyph(bool shows)
{
    if (!assign(m_showsGlyph, shows))
        return;
    update();
}

void StandardWindowButton::updateName()
{
    switch (m_kind) {
    case NS::WindowButton::close:
        return setAccessibleName(tr("Close"));
    case NS::WindowButton::miniaturize:
        return setAccessibleName(tr("Minimise"));
    case NS::WindowButton::zoom:
        if (window()->isFullScreen())
            return setAccessibleName(tr("Leave full screen"));
        return setAccessibleName(window()->isMaximized() ? tr("Restore") : tr("Maximise"));
    case NS::WindowButton::documentIcon:
        return setAccessibleName(tr("Folders of the document"));
    case NS::WindowButton::documentVersions:
        return setAccessibleName(tr("Versions of the document"));
    }
}

QSize StandardWindowButton::sizeHint() const
{
    return m_kind == NS::WindowButton::documentIcon || m_kind == NS::WindowButton::documentVersions
                   ? QSize(16, 16)
                   : QSize(14, 16);
}

void StandardWindowButton::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    Q_EMIT hovered(true);
}

void StandardWindowButton::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    Q_EMIT hovered(false);
}

void StandardWindowButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        animateClick();
    else
        QAbstractButton::keyPressEvent(event);
}

void StandardWindowButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect().toRectF().center());
    if (hasFocus()) {
        drawFocusRing(painter, QRectF(rect()).translated(-QRectF(rect()).center()),
                      palette().color(QPalette::Highlight), { .width = 1.5, .radius = 7 });
        painter.scale(0.85, 0.85);
    }
    switch (m_kind) {
    case NS::WindowButton::documentIcon:
        return drawDocument(painter);
    case NS::WindowButton::documentVersions:
        return drawVersions(painter);
    default:
        return drawControl(painter);
    }
}

void StandardWindowButton::drawControl(QPainter &painter) const
{
    const bool isColored = isEnabled() && (looksActive(this) || m_showsGlyph);
    QColor fill = mixed(palette().color(QPalette::Window), palette().color(QPalette::WindowText),
                        isDark(palette()) ? 0.24 : 0.18);
    if (isColored)
        fill = QColor::fromRgb(activeColors[int(m_kind)]);
    if (isDown())
        fill = fill.darker(130);
    painter.setPen(QPen(fill.darker(isDark(palette()) ? 125 : 112), 1.0));
    painter.setBrush(fill);
    constexpr double radius = diameter / 2.0 - 0.5;
    painter.drawEllipse(QPointF(), radius, radius);

    const QColor ink(0, 0, 0, 150);
    if (m_kind == NS::WindowButton::close && window()->isWindowModified() && !m_showsGlyph) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isColored ? ink : palette().color(QPalette::WindowText));
        painter.drawEllipse(QPointF(), 2.0, 2.0);
    }
    if (!m_showsGlyph || !isEnabled())
        return;
    painter.setPen(QPen(ink, 1.4, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    if (m_kind == NS::WindowButton::close) {
        painter.drawLine(QPointF(-2.25, -2.25), QPointF(2.25, 2.25));
        painter.drawLine(QPointF(-2.25, 2.25), QPointF(2.25, -2.25));
    } else if (m_kind == NS::WindowButton::miniaturize) {
        painter.drawLine(QPointF(-3.0, 0.0), QPointF(3.0, 0.0));
    } else {
        // Two triangles, pointing outwards to grow or inwards to come back.
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        const bool isInwards = window()->isMaximized() || window()->isFullScreen();
        for (const double side : { -1.0, 1.0 }) {
            const double outer = side * (isInwards ? 0.6 : 3.0);
            const double inner = side * (isInwards ? 4.0 : -1.0);
            painter.drawPolygon(QPolygonF(
                    { QPointF(outer, -outer), QPointF(inner, -outer), QPointF(outer, -inner) }));
        }
    }
}

void StandardWindowButton::drawDocument(QPainter &painter) const
{
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(looksActive(this) ? 0.75F : 0.4F);
    painter.setPen(QPen(line, 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(isDown() ? palette().color(QPalette::Mid) : palette().color(QPalette::Base));
    QPainterPath sheet(QPointF(-4.5, -6.5));
    sheet.lineTo(1.5, -6.5);
    sheet.lineTo(4.5, -3.5);
    sheet.lineTo(4.5, 6.5);
    sheet.lineTo(-4.5, 6.5);
    sheet.closeSubpath();
    painter.drawPath(sheet);
    painter.drawPolyline(QPolygonF({ QPointF(1.5, -6.5), QPointF(1.5, -3.5), QPointF(4.5, -3.5) }));
    for (const double y : { -1.0, 1.5, 4.0 })
        painter.drawLine(QPointF(-2.5, y), QPointF(2.5, y));
}

void StandardWindowButton::drawVersions(QPainter &painter) const
{
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(looksActive(this) && !isDown() ? 0.75F : 0.4F);
    painter.setPen(QPen(line, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({ QPointF(-3.0, -1.5), QPointF(0.0, 1.5), QPointF(3.0, -1.5) }));
}

} // namespace Pellarvine::detail
