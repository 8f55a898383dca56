// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/CALayer.h>

#include <QWidget>

namespace Pellarvine {

/// A view with a background and, along any of its edges, a line one unit thick:
///
///     auto *const header = new Pellarvine::BorderView;
///     header->setBackgroundColor(QColor(0xf6, 0xf7, 0xf9));
///     header->setHasBottomBorder(true);
///
/// The lines of the upper and lower edge end where those of the left and right begin, so that
/// translucent ones nowhere cover each other. The lines are layers: whatever the view contains is
/// drawn over them. Main thread only.
class PELLARVINE_EXPORT BorderView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(CA::Layer *leftLayer READ leftLayer CONSTANT DESIGNABLE false)
    Q_PROPERTY(CA::Layer *rightLayer READ rightLayer CONSTANT DESIGNABLE false)
    Q_PROPERTY(CA::Layer *topLayer READ topLayer CONSTANT DESIGNABLE false)
    Q_PROPERTY(CA::Layer *bottomLayer READ bottomLayer CONSTANT DESIGNABLE false)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY
                       backgroundColorChanged)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY borderColorChanged)
    Q_PROPERTY(bool hasLeftBorder READ hasLeftBorder WRITE setHasLeftBorder NOTIFY
                       hasLeftBorderChanged)
    Q_PROPERTY(bool hasRightBorder READ hasRightBorder WRITE setHasRightBorder NOTIFY
                       hasRightBorderChanged)
    Q_PROPERTY(bool hasTopBorder READ hasTopBorder WRITE setHasTopBorder NOTIFY hasTopBorderChanged)
    Q_PROPERTY(bool hasBottomBorder READ hasBottomBorder WRITE setHasBottomBorder NOTIFY
                       hasBottomBorderChanged)
    Q_PROPERTY(bool usesPaletteColors READ usesPaletteColors WRITE setUsesPaletteColors NOTIFY
                       usesPaletteColorsChanged)

public:
    explicit BorderView(QWidget *parent = nullptr);
    /// `NS::setFrame` places the view, once it has a parent.
    explicit BorderView(const QRectF &frame, QWidget *parent = nullptr) = delete;
    ~BorderView() override;

    /// @{
    /// The view's for as long as it lives, shown or not; never null.
    CA::Layer *leftLayer() const;
    CA::Layer *rightLayer() const;
    CA::Layer *topLayer() const;
    CA::Layer *bottomLayer() const;
    /// @}

    /// Default: white.
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    /// Of all four lines, also of those not shown. Default: black at 25 % opacity.
    QColor borderColor() const;
    void setBorderColor(const QColor &color);

    /// @{
    /// Default: all false. A line comes and goes at once; its neighbours take the new room at the
    /// next layout pass. Setting again what is set brings back a layer that was moved elsewhere.
    bool hasLeftBorder() const;
    void setHasLeftBorder(bool hasBorder);
    bool hasRightBorder() const;
    void setHasRightBorder(bool hasBorder);
    bool hasTopBorder() const;
    void setHasTopBorder(bool hasBorder);
    bool hasBottomBorder() const;
    void setHasBottomBorder(bool hasBorder);
    /// @}

    /// Shows the palette's base in place of `backgroundColor`, and its text at 25 % opacity in
    /// place of `borderColor`, which keep their values. Default: false.
    bool usesPaletteColors() const;
    void setUsesPaletteColors(bool usesPaletteColors);

    /// Attaches the lines that are to be seen to the view's layer and detaches the others. Setting
    /// a flag does this; call it after `NS::setWantsLayer` has given the view another layer.
    Q_INVOKABLE void updateLayerVisibility();

    /// Places the lines that are to be seen along the edges of the view's bounds.
    Q_INVOKABLE virtual void performLayout();

Q_SIGNALS:
    void backgroundColorChanged(const QColor &color);
    void borderColorChanged(const QColor &color);
    void hasLeftBorderChanged(bool hasBorder);
    void hasRightBorderChanged(bool hasBorder);
    void hasTopBorderChanged(bool hasBorder);
    void hasBottomBorderChanged(bool hasBorder);
    void usesPaletteColorsChanged(bool usesPaletteColors);

protected:
    void changeEvent(QEvent *event) override;

private:
    void setup();
    QColor shownBackgroundColor() const;
    void applyBackgroundColor();
    void applyBorderColor();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
