// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSButtonCell.h>

#include <QMarginsF>
#include <QRectF>

namespace Pellarvine {

/// Draws the colour of a ColorPickerButton in place of a text and an icon: a rounded swatch with a
/// darker rim, over a checkerboard where the colour is transparent. In any other button it draws
/// nothing, and prints a warning each time. Main thread only.
class PELLARVINE_EXPORT ColorPickerButtonCell : public NS::ButtonCell
{
    Q_OBJECT

public:
    explicit ColorPickerButtonCell(QObject *parent = nullptr);
    ~ColorPickerButtonCell() override;

    void drawInterior(const QRectF &frame, QWidget *view) override;

    /// The place of the swatch in a cell of that frame: 3 units inside the aligned part, half a
    /// unit more at the left and the right, and one unit more at the bottom.
    static QRectF swatchRect(const QRectF &frame, const QMarginsF &alignmentRectInsets);
};

} // namespace Pellarvine
