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

/// A coloured rectangle in a tree of such, drawn beneath what a widget itself draws:
///
///     NS::setWantsLayer(panel, true);
///     NS::layer(panel)->setBackgroundColor(Qt::white);
///     const auto line = std::make_shared<CA::Layer>();
///     line->setFrame(QRectF(0, 0, 100, 1)); // along the lower edge
///     NS::layer(panel)->addSublayer(line);
///
/// Frames are in device-independent pixels, in the layer above, with y growing upwards. A layer
/// that is invisible for having no colour still shows its sublayers. Nothing animates: changes show
/// at the next paint. To be held by std::shared_ptr; a layer keeps its sublayers. Main thread only.
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

    /// Default: 0. Round corners cut off what the sublayers draw there. Values below 0 count as
    /// 0, and ones above half a side as that.
    double cornerRadius() const;
    void setCornerRadius(double radius);

    /// From the back to the front.
    const QList<std::shared_ptr<Layer>> &sublayers() const;
    Layer *superlayer() const; ///< null at the top

    /// Puts the layer in front of the other sublayers, taking it from where it was. Neither null
    /// nor this layer nor one above it.
    void addSublayer(const std::shared_ptr<Layer> &layer);

    /// Does nothing at the top. The layer ends if nobody else holds it.
    void removeFromSuperlayer();

    /// Draws the layer and those below it into a space of that height; the painter's y grows
    /// downwards, as Qt's does. Edges are sharp: they fall on whole pixels of the device. A line is
    /// equally thick wherever it lies in the layer above.
    void render(QPainter &painter, double spaceHeight) const;

Q_SIGNALS:
    void frameChanged(const QRectF &frame);
    void backgroundColorChanged(const QColor &color);
    void cornerRadiusChanged(double radius);
    void needsDisplay(); ///< of the topmost layer: anything in the tree looks different

private:
    void noteChange();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace CA
