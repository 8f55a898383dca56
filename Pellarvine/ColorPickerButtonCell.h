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

    /// Where the swatch lies in a cell of that frame: 3 units inside of what is to be aligned,
    /// which ends half a unit early at the left, half a unit at the right, and one at the bottom.
    static QRectF swatchRect(const QRectF &frame, const QMarginsF &alignmentRectInsets);
};

} // namespace Pellarvine
