// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QIcon>
#include <QWidget>

#include <memory>

namespace NS {

/// A row of joined buttons that are one control: one choice of several, several switches, or
/// several commands.
///
///     auto *const scope = new NS::SegmentedControl;
///     scope->setLabels({ tr("Day"), tr("Week"), tr("Month") });
///     scope->setSelectedSegment(1);
///     connect(scope, &NS::SegmentedControl::triggered, this, &Calendar::showScope);
///
/// Segments count from 0 at the leading side. It acts when the mouse is released on the segment
/// that it was pressed on. It is a single Tab stop, within which the left and right arrow keys,
/// Home and End move, and Space acts; disabled segments are passed over. An ampersand in a label
/// marks a shortcut, as on Qt's buttons. Screen readers hear a list of tabs, or (toggle) buttons.
///
/// Style sheets set its colours: `color`, `background-color` (which segments show a little
/// lighter), `selection-color` and `selection-background-color`; `border` and `padding` change
/// nothing.
///
/// Naming a segment that does not exist prints a warning and changes nothing. Main thread only.
class PELLARVINE_EXPORT SegmentedControl : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(SwitchTracking trackingMode READ trackingMode WRITE setTrackingMode NOTIFY
                       trackingModeChanged)
    Q_PROPERTY(QStringList labels READ labels WRITE setLabels NOTIFY labelsChanged)
    Q_PROPERTY(int segmentCount READ segmentCount WRITE setSegmentCount NOTIFY segmentCountChanged
                       DESIGNABLE false)
    Q_PROPERTY(int selectedSegment READ selectedSegment WRITE setSelectedSegment NOTIFY
                       selectedSegmentChanged USER true)

public:
    /// What acting on a segment selects.
    enum class SwitchTracking {
        selectOne, ///< the segment acted on is the one selected
        selectAny, ///< each is switched on and off by itself
        momentary, ///< nothing stays selected
    };
    Q_ENUM(SwitchTracking)

    explicit SegmentedControl(QWidget *parent = nullptr);
    ~SegmentedControl() override;

    /// Default: `selectOne`. A selection that the mode cannot have is given up.
    SwitchTracking trackingMode() const;
    void setTrackingMode(SwitchTracking mode);

    /// Default: 0. New segments come at the trailing end, enabled, without label or icon.
    int segmentCount() const;
    void setSegmentCount(int count);

    /// Of all segments; setting them gives the control as many segments.
    QStringList labels() const;
    void setLabels(const QStringList &labels);

    QString labelForSegment(int segment) const; ///< default: empty
    /// What there is no room for is elided, and a tool tip shows the label if there is no other
    /// one.
    void setLabel(const QString &label, int segment);
    QIcon imageForSegment(int segment) const; ///< default: null
    /// In the style's size of small icons, beside the label if there is one.
    void setImage(const QIcon &image, int segment);
    /// A segment with an image alone needs one: it is what a screen reader says.
    QString toolTipForSegment(int segment) const;
    /// Empty for the tool tip of the whole control.
    void setToolTip(const QString &toolTip, int segment);
    using QWidget::setToolTip;
    /// Any number that the program knows the segment by; default: 0.
    int tagForSegment(int segment) const;
    void setTag(int tag, int segment); ///< of segments with one tag the first is found
    /// Default: true, also while the control as a whole is disabled.
    bool isEnabledForSegment(int segment) const;
    void setEnabled(bool isEnabled, int segment); ///< leaves the selection as it is
    using QWidget::setEnabled;

    /// In device-independent pixels, without the one-pixel lines around the control and between its
    /// segments. 0 fits the segment to its label and icon. Default: 0.
    virtual double widthForSegment(int segment) const;
    void setWidth(double width, int segment); ///< sets what widthForSegment() gives

    /// The selected segment, of several the one selected last; -1 if there is none. Setting it
    /// deselects all others. Disabled segments can be selected, but not by the user.
    int selectedSegment() const;
    void setSelectedSegment(int segment);
    bool isSelectedForSegment(int segment) const; ///< never with `momentary`
    /// Selecting a segment deselects the others, except with `selectAny`. Does nothing with
    /// `momentary`.
    void setSelected(bool isSelected, int segment);
    /// Whether there is a segment with that tag, which is then selected.
    bool selectSegmentWithTag(int tag);

    /// Where the segment lies in the control, without the lines around it; empty if there is none.
    QRect segmentRect(int segment) const;
    /// The one at a point of the control, which may lie on a line around it; -1 if there is none.
    int segmentAt(QPoint point) const;
    /// The segment that keys act on while the control has the focus; -1 if none can be acted on.
    int focusedSegment() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    /// Does what a click of the user does; nothing if the control or the segment is disabled.
    void click(int segment);

Q_SIGNALS:
    /// The user has acted on the segment; what that changes has changed.
    void triggered(int segment);
    /// Some segment has been selected or deselected, by the user or by a call.
    void selectionChanged();
    void selectedSegmentChanged(int segment);
    void trackingModeChanged(NS::SegmentedControl::SwitchTracking mode);
    void labelsChanged(const QStringList &labels);
    void segmentCountChanged(int count);

protected:
    /// What setWidth() does, for all segments in one step.
    void setWidths(const QList<double> &widths);

    /// What the segment needs for its label and image, whatever width it is given.
    double fittingWidthForSegment(int segment) const;
    /// What it needs to show the beginning of its label.
    double smallestWidthForSegment(int segment) const;
    /// The control's size with segments that wide.
    QSize sizeForSegmentWidths(const QList<double> &widths) const;

    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
