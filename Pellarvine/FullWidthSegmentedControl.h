// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSSegmentedControl.h>

#include <QRectF>

namespace Pellarvine {

/// A segmented control whose segments fill it, however wide it is made: all equally wide, but for
/// the last one, which takes what is left.
///
///     auto *const alignment = new Pellarvine::FullWidthSegmentedControl;
///     alignment->setLabels({ tr("Left"), tr("Centre"), tr("Right") });
///     inspectorLayout->addWidget(alignment); // as wide as the inspector
///
/// The widths of its segments are set anew whenever it is given a frame, and when the number of
/// segments changes; what `setWidth` sets holds until then. Main thread only.
class PELLARVINE_EXPORT FullWidthSegmentedControl : public NS::SegmentedControl
{
    Q_OBJECT

public:
    explicit FullWidthSegmentedControl(QWidget *parent = nullptr);
    ~FullWidthSegmentedControl() override;

    /// As `NS::setFrame`, and spreads the segments even where the frame stays the same.
    Q_INVOKABLE virtual void setFrame(const QRectF &frame);

    double widthForSegment(int segment) const override;

    /// Wide enough for the widest label in each segment. The control shrinks to
    /// minimumSizeHint(), eliding the labels.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void spreadSegments();

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Pellarvine
