// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

/// The Fusion style without gradients. Controls have equal heights, and their edges are visible in
/// light and dark palettes (a contrast of 3:1, as WCAG 1.4.11 requires).
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
};
