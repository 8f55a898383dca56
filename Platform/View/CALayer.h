// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QColor>
#include <QList>
#include <QObject>
#include <QRectF>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QPainter)

namespace CA {

/// A coloured rectangle that is drawn behind the contents of a widget. Layers form a tree:
///
///     NS::setWantsLayer(panel, true);
///     NS::layer(panel)->setBackgroundColor(Qt::white);
///     const auto line = std::make_shared<CA::Layer>();
///     line->setFrame(QRectF(0, 0, 100, 1)); // along the lower edge
///     NS::layer(panel)->addSublayer(line);
///
/// Frames are in device-independent pixels, in the coordinates of the superlayer, with y upwards. A
/// layer without a colour still shows its sublayers. Changes are shown at the next paint; nothing
/// animates. Create layers with std::make_shared: a layer shares the ownership of its sublayers.
/// Main thread only.
class PELLARVINE_EXPORT Layer : public QObject, public std::enable_shared_from_this<Layer>
{
    Q_OBJECT
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY
                       backgroundColorChanged)
    Q_PROPERTY(
            double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY cornerRadiusChanged)

public:
    Layer(); ///< an empty frame at the origin, no colour
    ~Layer() override; ///< its sublayers have no superlayer afterwards

    /// In device-independent pixels, in the superlayer or the widget, with y upwards.
    QRectF frame() const;
    void setFrame(const QRectF &frame);

    /// An invalid colour draws nothing. Default: invalid.
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    /// In device-independent pixels. Sublayers are clipped to the round corners. Values below 0
    /// count as 0, and values above half of the shorter side as that half. Default: 0.
    double cornerRadius() const;
    void setCornerRadius(double radius);

    /// The sublayers, from the back to the front.
    const QList<std::shared_ptr<Layer>> &sublayers() const;
    Layer *superlayer() const; ///< null at the top

    /// Adds a layer in front of the other sublayers, and removes it from its previous superlayer.
    /// The layer is not null, this layer or a superlayer of it.
    void addSublayer(const std::shared_ptr<Layer> &layer);

    /// Removes the layer from its superlayer, which may destroy it. Does nothing without a
    /// superlayer.
    void removeFromSuperlayer();

    /// Draws the layer and its sublayers. `spaceHeight` is the height in device-independent pixels
    /// of the area that contains the layer: y grows downwards in the painter, upwards in the layer.
    /// Edges are aligned to device pixels, so lines of equal width look equal at any position.
    void render(QPainter &painter, double spaceHeight) const;

Q_SIGNALS:
    void frameChanged(const QRectF &frame);
    void backgroundColorChanged(const QColor &color);
    void cornerRadiusChanged(double radius);
    void needsDisplay(); ///< emitted by the topmost layer after a visible change in its tree

private:
    void noteChange();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace CA
