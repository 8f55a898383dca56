// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/CALayer.h>

#include <QWidget>

namespace Pellarvine {

/// A view with a background colour and a thin line along any of its edges:
///
///     auto *const header = new Pellarvine::BorderView;
///     header->setBackgroundColor(QColor(0xf6, 0xf7, 0xf9));
///     header->setHasBottomBorder(true);
///
/// Lines are one device-independent pixel thick, rounded down to whole pixels of the screen. The
/// lines of the upper and lower edge end beside those of the left and right edge, so that
/// translucent lines do not overlap. Children are drawn over the lines. Of style sheets,
/// `background-color` and `color` apply if `usesPaletteColors` is set; `border` and `padding` do
/// not apply. Main thread only.
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
    /// The lines, shown or not. The view owns them; never null.
    CA::Layer *leftLayer() const;
    CA::Layer *rightLayer() const;
    CA::Layer *topLayer() const;
    CA::Layer *bottomLayer() const;
    /// @}

    /// Default: white.
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    /// The colour of all lines, shown or not. Default: black at 25 % opacity.
    QColor borderColor() const;
    void setBorderColor(const QColor &color);

    /// @{
    /// Default: all false. The setters show or hide the line at once; its neighbours change their
    /// length at the next layout pass. Setting an equal value attaches a layer that was removed.
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

    /// Attaches the shown lines to the view's layer and detaches the others. The setters of the
    /// flags do this; call it after `NS::setWantsLayer` has given the view another layer.
    Q_INVOKABLE void updateLayerVisibility();

    /// Places the shown lines along the edges of the view's bounds.
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
