// SPDX-License-Identifier: MIT
#include "Controls/SegmentDrawing.h"

#include "Controls/SegmentGeometry.h"
#include "Drawing/PixelAlignment.h"
#include "Drawing/Shades.h"
#include "View/FocusRing.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace Pellarvine::detail {

namespace {

constexpr double cornerRadius = 4.5;
constexpr double hoveredTint = 0.06;
constexpr double pressedTint = 0.14;
constexpr int raised = 115; // per cent of the palette's button, where that is the window's colour
constexpr double disabledOpacity = 0.45; // of the selection's fill
constexpr float selectedLine = 0.4F; // between two selected segments
constexpr float disabledInk = 0.55F; // on it

QColor withAlpha(QColor color, float alpha)
{
    color.setAlphaF(alpha);
    return color;
}

// The colour that fills a segment's cell up to the outer edge of the control; invalid for none.
QColor fillColor(const QPalette &palette, const SegmentLook &segment, const QColor &face)
{
    const QColor highlight = palette.color(QPalette::Highlight);
    const QColor ink =
            palette.color(segment.isSelected ? QPalette::HighlightedText : QPalette::ButtonText);
    const double tint = !segment.canAct     ? 0.0
                        : segment.isPressed ? pressedTint
                        : segment.isHovered ? hoveredTint
                                            : 0.0;
    if (segment.isSelected && !segment.canAct)
        return mixed(face, highlight, disabledOpacity);
    if (segment.isSelected)
        return mixed(highlight, ink, tint);
    return tint > 0.0 ? withAlpha(ink, float(tint)) : QColor();
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
    const double inset = segment.isSelected ? 2.0 : 1.0;
    drawFocusRing(
            painter, QRectF(segment.rect).adjusted(inset, inset, -inset, -inset),
            palette.color(segment.isSelected ? QPalette::HighlightedText : QPalette::Highlight),
            { .width = segment.isSelected ? 1.0 : 2.0, .radius = cornerRadius - 1.5 });
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
    // On whole pixels, like the lines between the segments.
    const QTransform toDevice = painter.deviceTransform();
    const QRectF edges = alignedToPixels(body, body, toDevice);
    const double scale = toDevice.m11() > 0 ? toDevice.m11() : 1;
    const double stroke = wholeThickness(SegmentMetrics::line * scale) / scale;
    QPainterPath shape;
    shape.addRoundedRect(edges, cornerRadius, cornerRadius);
    QPainterPath inside;
    inside.addRoundedRect(edges.adjusted(stroke, stroke, -stroke, -stroke), cornerRadius - 1,
                          cornerRadius - 1);
    QColor face = palette.color(QPalette::Button);
    if (face == palette.color(QPalette::Window))
        face = face.lighter(raised);
    const QColor lines = edgeColor(palette);
    painter.fillPath(shape, lines);
    painter.fillPath(inside, face);

    // Over the outline, which would part a selected segment from the edge.
    painter.save();
    for (int i = 0; i < segments.size(); ++i) {
        const QColor color = fillColor(palette, segments[i], face);
        if (color.isValid()) {
            const int before = segments[i].isSelected ? SegmentMetrics::line : 0;
            painter.setClipRect(segmentCell(rects, i, direction).adjusted(-before, 0, 0, 0));
            painter.fillPath(shape, color);
        }
    }
    painter.restore();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int i = 0; i + 1 < segments.size(); ++i) {
        const bool isBeside = segments[i].isSelected || segments[i + 1].isSelected;
        const bool isBetween = segments[i].isSelected && segments[i + 1].isSelected;
        if (isBeside && !isBetween)
            continue; // the selection's own edge parts them
        const int x = direction == Qt::RightToLeft ? rects[i].left() - SegmentMetrics::line
                                                   : rects[i].right() + 1;
        const QColor ink = withAlpha(palette.color(QPalette::HighlightedText), selectedLine);
        const QRect divider(x, body.top() + SegmentMetrics::line, SegmentMetrics::line,
                            body.height() - 2 * SegmentMetrics::line);
        painter.fillRect(alignedToPixels(divider, body, painter.deviceTransform()),
                         isBetween ? ink : lines);
    }
    painter.setRenderHint(QPainter::Antialiasing);

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
