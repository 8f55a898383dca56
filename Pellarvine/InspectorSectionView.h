// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QWidget>

#include <memory>

namespace Pellarvine {

/// One section of an inspector: a container with a light grey line along its lower edge, which
/// separates it from the section below:
///
///     auto *const section = new Pellarvine::InspectorSectionView;
///     section->setAccessibleName(tr("Border"));
///     inspectorLayout->addWidget(section);
///
/// Screen readers call it a group of its accessible name. Of style sheets, `color` applies to the
/// line if `usesPaletteColors` is set; `background`, `border` and `padding` do not apply. Main
/// thread only.
class PELLARVINE_EXPORT InspectorSectionView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool usesPaletteColors READ usesPaletteColors WRITE setUsesPaletteColors NOTIFY
                       usesPaletteColorsChanged)

public:
    explicit InspectorSectionView(QWidget *parent = nullptr);
    ~InspectorSectionView() override;

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
