// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QWidget>

#include <memory>

namespace Pellarvine {

/// The strip along the upper edge of a window that holds its tools: white, with a grey line along
/// its lower edge.
///
///     auto *const tools = new Pellarvine::ToolBarView;
///     auto *const layout = new QHBoxLayout(tools);
///     layout->addWidget(penButton);
///
/// It is a plain container; screen readers call it a tool bar. Of style sheets, `background-color`
/// and `color` apply if `usesPaletteColors` is set; `border` and `padding` do not apply. Main
/// thread only.
class PELLARVINE_EXPORT ToolBarView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool opaqueBackground READ opaqueBackground WRITE setOpaqueBackground NOTIFY
                       opaqueBackgroundChanged)
    Q_PROPERTY(bool usesPaletteColors READ usesPaletteColors WRITE setUsesPaletteColors NOTIFY
                       usesPaletteColorsChanged)

public:
    explicit ToolBarView(QWidget *parent = nullptr);
    ~ToolBarView() override;

    /// Whether the strip is white. If not, only the line is drawn. Default: true.
    bool opaqueBackground() const;
    void setOpaqueBackground(bool isOpaque);

    /// Draws in the palette's colours, as `StyleKit` does with a palette. Default: false.
    bool usesPaletteColors() const;
    void setUsesPaletteColors(bool usesPaletteColors);

    /// Draws the whole view, y upwards, into the current graphics context. Ignores the rectangle.
    Q_INVOKABLE virtual void draw(const QRectF &dirtyRect);

Q_SIGNALS:
    void opaqueBackgroundChanged(bool isOpaque);
    void usesPaletteColorsChanged(bool usesPaletteColors);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
