// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSTableCellView.h>

#include <memory>

namespace Pellarvine {

/// A table cell with a light grey line along its lower edge, for tables that belong to an
/// inspector:
///
///     auto *const cell = new Pellarvine::InspectorSectionTableCellView;
///     table->setCellWidget(row, column, cell);
///
/// It draws only the line; the background and the selection are drawn by the table. Main thread
/// only.
class PELLARVINE_EXPORT InspectorSectionTableCellView : public NS::TableCellView
{
    Q_OBJECT
    Q_PROPERTY(bool usesPaletteColors READ usesPaletteColors WRITE setUsesPaletteColors NOTIFY
                       usesPaletteColorsChanged)

public:
    explicit InspectorSectionTableCellView(QWidget *parent = nullptr);
    ~InspectorSectionTableCellView() override;

    /// Draws in the palette's colours, as `StyleKit` does with a palette. Default: false.
    bool usesPaletteColors() const;
    void setUsesPaletteColors(bool usesPaletteColors);

    /// Draws the whole view, y upwards, into the current graphics context. Ignores the rectangle.
    Q_INVOKABLE virtual void draw(const QRectF &dirtyRect);

Q_SIGNALS:
    void usesPaletteColorsChanged(bool usesPaletteColors);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
