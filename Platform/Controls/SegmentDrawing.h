// SPDX-License-Identifier: MIT
// Not API: what a segmented control looks like.
#pragma once

#include <QIcon>
#include <QList>
#include <QRect>
#include <QString>

QT_FORWARD_DECLARE_CLASS(QPainter)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// A segment as it is drawn.
struct SegmentLook
{
    QRect rect; ///< without the lines around it
    QString label;
    QIcon image; ///< may be null
    bool canAct = true;
    bool isSelected = false;
    bool isPressed = false;
    bool isHovered = false;
    bool hasRing = false; ///< the focus ring
};

/// Draws the control with its segments, in the style, the palette and the font of `control`.
void drawSegments(QPainter &painter, const QWidget &control, const QList<SegmentLook> &segments);

/// The size of the images in the control's style.
QSize segmentIconSize(const QWidget &control);

/// The width that label and image take up, without padding.
int segmentContentWidth(const QWidget &control, const QString &label, const QIcon &image);

} // namespace Pellarvine::detail
