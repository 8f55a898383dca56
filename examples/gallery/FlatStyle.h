// SPDX-License-Identifier: MIT
#pragma once

#include <QBrush>
#include <QPen>
#include <QProxyStyle>

/// The Fusion style without gradients. Controls have equal heights, and their edges are visible in
/// light and dark palettes (a contrast of 3:1, as WCAG 1.4.11 requires).
///
/// Frames with the object name "card" are panels with round corners; those named "well" have a
/// dashed line, and "highlightedWell" a line in the accent colour.
class FlatStyle : public QProxyStyle
{
public:
    FlatStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override;
    void polish(QWidget *widget) override;
    using QProxyStyle::polish;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override;

    /// The edge of a control in that palette.
    static QColor edge(const QPalette &palette);

    /// Draws a box whose line lies inside `rect`, on whole pixels, so that it is equally thick on
    /// all sides at every scale. `corner` is the radius of the corners, at the middle of the line.
    static void drawBox(QPainter *painter, const QRectF &rect, double corner, QPen line,
                        const QBrush &fill);
};
