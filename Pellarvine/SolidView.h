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
/// It draws by its layer. Setting `backgroundColor`, to whatever value, or `usesPaletteColors`
/// fills that; until then the view is clear, in Qt Designer as in the program. `radius` and the
/// loading of an interface file turn the layer on without filling it. Of style sheets,
/// `background-color` applies while `usesPaletteColors` is set; `background-image`, `border` and
/// `padding` never do. Main thread only.
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

    /// Default: white, which fills nothing before it is set.
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    /// Of the corners, in device-independent pixels; default: 0. A corner is never more than a
    /// quarter of a circle within half the shorter side.
    double radius() const;
    void setRadius(double radius);

    /// Shows the palette's base in place of `backgroundColor`, which keeps its value. Default:
    /// false.
    bool usesPaletteColors() const;
    void setUsesPaletteColors(bool usesPaletteColors);

    /// Called once the interface file that the view comes from is loaded.
    Q_INVOKABLE virtual void awakeFromNib();
    /// Called where the view is to be seen while an interface is being designed.
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
