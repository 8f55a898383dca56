// SPDX-License-Identifier: MIT
#include "Window/WindowBorder.h"

#include "Base/Assign.h"
#include "Window/StandardWindowButton.h"
#include "Window/WindowShadow.h"

#include <QPainter>
#include <QPainterPath>

namespace Pellarvine::detail {

namespace {

constexpr int cornerRadius = WindowShadow::cornerRadius;

} // namespace

WindowBorder::WindowBorder(QWidget *window)
    : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    // By this name Qt leaves a widget out of what screen readers find.
    setObjectName(QStringLiteral("qt_rubberband"));
}

double WindowBorder::radius() const
{
    return m_isRound ? cornerRadius : 0.0;
}

void WindowBorder::setRound(bool isRound)
{
    if (!assign(m_isRound, isRound))
        return;
    arrange();
    update();
}

void WindowBorder::setMargin(int margin)
{
    if (!assign(m_margin, margin))
        return;
    arrange();
    update();
}

QRect WindowBorder::seen() const
{
    return rect().adjusted(m_margin, m_margin, -m_margin, -m_margin);
}

// Widgets outside the mask scroll and paint as if nothing were above them.
void WindowBorder::arrange()
{
    setGeometry(parentWidget()->rect());
    const QRect whole = seen();
    QRegion region = QRegion(rect()) - QRegion(whole.adjusted(1, 1, -1, -1));
    if (m_isRound) {
        constexpr QSize corner(cornerRadius, cornerRadius);
        QRect square(whole.topLeft(), corner);
        region += square;
        square.moveRight(whole.right());
        region += square;
        square.moveBottom(whole.bottom());
        region += square;
        square.moveLeft(whole.left());
        region += square;
    }
    setMask(region);
    raise();
}

void WindowBorder::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_isRound) {
        QPainterPath outside;
        outside.addRect(rect());
        outside.addRoundedRect(seen(), radius(), radius());
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.fillPath(outside, Qt::black);
        if (m_margin > 0) {
            painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
            WindowShadow::draw(painter, rect(), looksActive(this));
        }
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(looksActive(this) ? 0.28F : 0.18F);
    painter.setPen(line);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(seen()).adjusted(0.5, 0.5, -0.5, -0.5), radius() - 0.5,
                            radius() - 0.5);
}

} // namespace Pellarvine::detail
