// SPDX-License-Identifier: MIT
#include "Controls/SegmentDrawing.h"

#include "Controls/SegmentGeometry.h"
#include "View/FocusRing.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

constexpr int line = SegmentMetrics::line;
constexpr double cornerRadius = 4.0;
constexpr float hoveredTint = 0.06F;
constexpr float pressedTint = 0.14F;
constexpr int raised = 115; // per cent of the palette's button, where that is the window's colour
constexpr double disabledOpacity = 0.45; // of the selection's fill
constexpr float disabledInk = 0.55F; // on it

QColor withAlpha(QColor color, float alpha)
{
    color.setAlphaF(alpha);
    return color;
}

void fill(QPainter &painter, const QPalette &palette, const SegmentLook &segment, const QRect &cell)
{
    if (segment.isSelected) {
        painter.setOpacity(segment.canAct ? 1.0 : disabledOpacity);
        painter.fillRect(cell, palette.color(QPalette::Highlight));
        painter.setOpacity(1.0);
    }
    if (segment.canAct && (segment.isPressed || segment.isHovered)) {
        const auto ink = segment.isSelected ? QPalette::HighlightedText : QPalette::ButtonText;
        painter.fillRect(
                cell, withAlpha(palette.color(ink), segment.isPressed ? pressedTint : hoveredTint));
    }
}

void drawContent(QPainter &painter, const QWidget &control, const SegmentLook &segment)
{
    QPalette palette = control.palette();
    if (!segment.canAct) {
        palette.setCurrentColorGroup(QPalette::Disabled);
        if (segment.isSelected) {
            palette.setColor(
                    QPalette::ButtonText,
                    withAlpha(palette.color(QPalette::Active, QPalette::ButtonText), disabledInk));
        }
    }
    const QRect &rect = segment.rect;
    const QFontMetrics metrics = control.fontMetrics();
    const QSize icon = segment.image.isNull() ? QSize(0, 0) : segmentIconSize(control);
    const int gap = segment.image.isNull() || segment.label.isEmpty() ? 0 : SegmentMetrics::iconGap;
    const int room = std::max(0, rect.width() - icon.width() - gap);
    QString label = segment.label;
    int textWidth = metrics.size(Qt::TextShowMnemonic, label).width();
    const int textRoom = std::max(0, room - SegmentMetrics::leastPadding);
    if (textWidth > textRoom) {
        label = metrics.elidedText(label, Qt::ElideRight, textRoom, Qt::TextShowMnemonic);
        textWidth = std::min(textRoom, textWidth);
    }
    const int width = icon.width() + gap + textWidth;
    const QRect content(rect.x() + (rect.width() - width) / 2, rect.y(), width, rect.height());
    const auto place = [&](int x, int partWidth) {
        const QRect part(content.x() + x, content.y(), partWidth, content.height());
        return QStyle::visualRect(control.layoutDirection(), content, part);
    };
    if (!segment.image.isNull()) {
        const QIcon::Mode mode = !segment.canAct      ? QIcon::Disabled
                                 : segment.isSelected ? QIcon::Selected
                                                      : QIcon::Normal;
        segment.image.paint(&painter, place(0, icon.width()), Qt::AlignCenter, mode,
                            segment.isSelected ? QIcon::On : QIcon::Off);
    }
    const bool underlines =
            control.style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, &control);
    const bool isOnHighlight = segment.isSelected && segment.canAct;
    control.style()->drawItemText(
            &painter, place(icon.width() + gap, textWidth),
            Qt::AlignCenter | Qt::TextSingleLine
                    | (underlines ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
            palette, segment.canAct, label,
            isOnHighlight ? QPalette::HighlightedText : QPalette::ButtonText);
}

void drawRing(QPainter &painter, const QPalette &palette, const SegmentLook &segment)
{
    // On the highlight colour a ring of that colour would not be seen.
    const double inset = segment.isSelected ? 2.5 : 1.0;
    drawFocusRing(
            painter, QRectF(segment.rect).adjusted(inset, inset, -inset, -inset),
            palette.color(segment.isSelected ? QPalette::HighlightedText : QPalette::Highlight),
            { .width = segment.isSelected ? 1.0 : 2.0, .radius = cornerRadius - 1.0 });
}

} // namespace

void drawSegments(QPainter &painter, const QWidget &control, const QList<SegmentLook> &segments)
{
    if (segments.isEmpty())
        return;
    const QPalette &palette = control.palette();
    const Qt::LayoutDirection direction = control.layoutDirection();
    QList<QRect> rects;
    for (const SegmentLook &segment : segments)
        rects.append(segment.rect);
    QRect body;
    for (int i = 0; i < rects.size(); ++i)
        body |= segmentCell(rects, i, direction);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(QRectF(body).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    QColor face = palette.color(QPalette::Button);
    if (face == palette.color(QPalette::Window))
        face = face.lighter(raised);
    painter.fillPath(outline, face);

    painter.save();
    painter.setClipPath(outline);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QColor lines = palette.color(QPalette::Mid);
    for (int i = 0; i < segments.size(); ++i) {
        fill(painter, palette, segments[i], segmentCell(rects, i, direction));
        if (i + 1 == segments.size())
            break;
        const int divider =
                direction == Qt::RightToLeft ? rects[i].left() - line : rects[i].right() + 1;
        painter.fillRect(QRect(divider, 0, line, control.height()), lines);
    }
    painter.restore();

    painter.setPen(QPen(lines, line));
    painter.drawPath(outline);
    for (const SegmentLook &segment : segments)
        drawContent(painter, control, segment);
    for (const SegmentLook &segment : segments) {
        if (segment.hasRing)
            drawRing(painter, palette, segment);
    }
}

QSize segmentIconSize(const QWidget &control)
{
    const int side = control.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &control);
    return { side, side };
}

int segmentContentWidth(const QWidget &control, const QString &label, const QIcon &image)
{
    int width = 0;
    if (!label.isEmpty())
        width += control.fontMetrics().size(Qt::TextShowMnemonic, label).width();
    if (!image.isNull())
        width += segmentIconSize(control).width() + (label.isEmpty() ? 0 : SegmentMetrics::iconGap);
    return width;
}

} // namespace Pellarvine::detail
