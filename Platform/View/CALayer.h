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

/// A coloured rectangle in a tree of layers, which is drawn below the widget's own drawing:
///
///     NS::setWantsLayer(panel, true);
///     NS::layer(panel)->setBackgroundColor(Qt::white);
///     const auto line = std::make_shared<CA::Layer>();
///     line->setFrame(QRectF(0, 0, 100, 1)); // along the lower edge
///     NS::layer(panel)->addSublayer(line);
///
/// Frames are in device-independent pixels of the layer above, with y upwards. A layer without a
/// colour still shows its sublayers. Nothing is animated: changes show at the next paint. Layers
/// must be made by std::make_shared; a layer shares the ownership of its sublayers. Main thread
/// only.
class PELLARVINE_EXPORT Layer : public QObject, public std::enable_shared_from_this<Layer>
{
    Q_OBJECT
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY
                       backgroundColorChanged)
    Q_PROPERTY(
            double cornerRadius READ cornerRadius WRITE setCornerRadius NOTIFY cornerRadiusChanged)

public:
    Layer(); ///< of no size, at the origin, without a colour
    ~Layer() override; ///< its sublayers are detached

    /// In device-independent pixels, with y upwards, in the layer above or the widget.
    QRectF frame() const;
    void setFrame(const QRectF &frame);

    /// Default: invalid, which draws nothing.
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    /// In device-independent pixels; default: 0. Round corners clip the sublayers. Values below 0
    /// count as 0, values above half a side as half a side.
    double cornerRadius() const;
    void setCornerRadius(double radius);

    /// From the back to the front.
    const QList<std::shared_ptr<Layer>> &sublayers() const;
    Layer *superlayer() const; ///< null at the top

    /// Puts the layer in front of the other sublayers, and removes it from its previous superlayer.
    /// `layer` must not be null, this layer, or a layer above it.
    void addSublayer(const std::shared_ptr<Layer> &layer);

    /// Does nothing without a superlayer. Deletes the layer if nothing else owns it.
    void removeFromSuperlayer();

    /// Draws the layer and those below it into a space of that height; the painter's y grows
    /// downwards, as Qt's does. Edges are sharp: they fall on whole pixels of the device. A line is
    /// equally thick wherever it lies in the layer above.
    void render(QPainter &painter, double spaceHeight) const;

Q_SIGNALS:
    void frameChanged(const QRectF &frame);
    void backgroundColorChanged(const QColor &color);
    void cornerRadiusChanged(double radius);
    void needsDisplay(); ///< emitted by the topmost layer when anything in its tree has changed

private:
    void noteChange();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace CA
