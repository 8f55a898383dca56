// SPDX-License-Identifier: MIT
#include "Icons.h"

#include "Theme.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace {

constexpr int side = 16;
constexpr double pixelsPerUnit = 3.0;

QPixmap drawn(const std::function<void(QPainter &)> &draw, const QColor &color)
{
    QPixmap pixmap(QSize(side, side) * pixelsPerUnit);
    pixmap.setDevicePixelRatio(pixelsPerUnit);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter);
    return pixmap;
}

} // namespace

QIcon makeIcon(const std::function<void(QPainter &)> &draw)
{
    const QPalette palette = QApplication::palette();
    QIcon icon;
    icon.addPixmap(drawn(draw, palette.color(QPalette::ButtonText)), QIcon::Normal);
    icon.addPixmap(drawn(draw, palette.color(QPalette::HighlightedText)), QIcon::Selected);
    icon.addPixmap(drawn(draw, palette.color(QPalette::Disabled, QPalette::ButtonText)),
                   QIcon::Disabled);
    return icon;
}

namespace Icons {

QIcon previous()
{
    const bool isMirrored = QApplication::isRightToLeft();
    return makeIcon([isMirrored](QPainter &painter) {
        const double tip = isMirrored ? 10.5 : 5.5;
        painter.drawPolyline(QPolygonF { { 16 - tip, 3.5 }, { tip, 8 }, { 16 - tip, 12.5 } });
    });
}

QIcon next()
{
    const bool isMirrored = QApplication::isRightToLeft();
    return makeIcon([isMirrored](QPainter &painter) {
        const double tip = isMirrored ? 5.5 : 10.5;
        painter.drawPolyline(QPolygonF { { 16 - tip, 3.5 }, { tip, 8 }, { 16 - tip, 12.5 } });
    });
}

QIcon textLines(Qt::Alignment alignment)
{
    return makeIcon([alignment](QPainter &painter) {
        double y = 3.5;
        for (const double width : { 12.0, 7.0, 10.0, 6.0 }) {
            const double shown = alignment == Qt::AlignJustify && width < 12.0 ? 12.0 : width;
            const double x = alignment & Qt::AlignRight     ? 14 - shown
                             : alignment & Qt::AlignHCenter ? 8 - shown / 2
                                                            : 2;
            painter.drawLine(QPointF(x, y), QPointF(x + shown, y));
            y += 3;
        }
    });
}

QIcon letter(QChar letter, bool isBold, bool isItalic, bool isUnderlined)
{
    return makeIcon([=](QPainter &painter) {
        QFont font = Theme::font(Theme::body);
        font.setPixelSize(14);
        font.setWeight(isBold ? QFont::ExtraBold : QFont::Medium);
        font.setItalic(isItalic);
        font.setUnderline(isUnderlined);
        painter.setFont(font);
        painter.drawText(QRectF(0, 0, side, side), Qt::AlignCenter, letter);
    });
}

} // namespace Icons
