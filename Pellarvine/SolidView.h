// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QColor>
#include <QWidget>

#include <memory>

namespace Pellarvine {

/// A view filled with one colour, with round corners if wanted:
///
///     auto *const swatch = new Pellarvine::SolidView;
///     swatch->setBackgroundColor(QColor(0x2f, 0x6f, 0xde));
///     swatch->setRadius(6);
///
/// The view is transparent until `backgroundColor` is set, even to its default, or
/// `usesPaletteColors` is turned on. This is so in Qt Designer too. Of style sheets,
/// `background-color` applies if `usesPaletteColors` is set; `background-image`, `border` and
/// `padding` do not apply. Main thread only.
class PELLARVINE_EXPORT SolidView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY
                       backgroundColorChanged)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(bool usesPaletteColors READ usesPaletteColors WRITE setUsesPaletteColors NOTIFY
                       usesPaletteColorsChanged)

public:
    explicit SolidView(QWidget *parent = nullptr);
    ~SolidView() override;

    /// Default: white, which is drawn only after it has been set.
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    /// The radius of the corners in device-independent pixels; default: 0. At most half the shorter
    /// side is drawn.
    double radius() const;
    void setRadius(double radius);

    /// Shows the palette's base in place of `backgroundColor`, which keeps its value. Default:
    /// false.
    bool usesPaletteColors() const;
    void setUsesPaletteColors(bool usesPaletteColors);

    /// Called after the interface file of the view has been loaded.
    Q_INVOKABLE virtual void awakeFromNib();
    /// Called when the view is shown in an interface designer.
    Q_INVOKABLE virtual void prepareForInterfaceBuilder();

Q_SIGNALS:
    void backgroundColorChanged(const QColor &color);
    void radiusChanged(double radius);
    void usesPaletteColorsChanged(bool usesPaletteColors);

protected:
    void changeEvent(QEvent *event) override;

private:
    void ensureLayer();
    void applyBackgroundColor();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
