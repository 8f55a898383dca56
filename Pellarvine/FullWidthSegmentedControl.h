// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSSegmentedControl.h>

#include <QRectF>

namespace Pellarvine {

/// A segmented control whose segments fill its whole width. All have the same width, except for the
/// last one, which takes the rest:
///
///     auto *const alignment = new Pellarvine::FullWidthSegmentedControl;
///     alignment->setLabels({ tr("Left"), tr("Centre"), tr("Right") });
///     inspectorLayout->addWidget(alignment); // as wide as the inspector
///
/// A new frame and a new number of segments set the widths of all segments. A width that was set by
/// `setWidth` is kept until then. Widths are in device-independent pixels. Main thread only.
class PELLARVINE_EXPORT FullWidthSegmentedControl : public NS::SegmentedControl
{
    Q_OBJECT

public:
    explicit FullWidthSegmentedControl(QWidget *parent = nullptr);
    ~FullWidthSegmentedControl() override;

    /// Like `NS::setFrame`. Sets the widths of the segments even if the frame is equal.
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
