// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QIcon>
#include <QWidget>

#include <memory>

namespace NS {

/// A row of joined buttons: one choice of several, several switches, or several commands.
///
///     auto *const scope = new NS::SegmentedControl;
///     scope->setLabels({ tr("Day"), tr("Week"), tr("Month") });
///     scope->setSelectedSegment(1);
///     connect(scope, &NS::SegmentedControl::triggered, this, &Calendar::showScope);
///
/// Segments are numbered from 0 at the leading side. A segment acts when the mouse is released on
/// it. The control is one Tab stop: the arrow keys, Home and End move in it, and Space acts. An
/// ampersand in a label marks a shortcut, as on Qt's buttons. Screen readers find a list of tabs or
/// buttons. Of style sheets, `color`, `background-color` (segments are a little lighter),
/// `selection-color` and `selection-background-color` apply; `border` and `padding` do not. A wrong
/// segment number prints a warning and changes nothing. Main thread only.
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
    /// The effect of a click on the selection.
    enum class SwitchTracking {
        selectOne, ///< selects the segment and deselects the others
        selectAny, ///< selects or deselects the segment alone
        momentary, ///< selects nothing
    };
    Q_ENUM(SwitchTracking)

    explicit SegmentedControl(QWidget *parent = nullptr);
    ~SegmentedControl() override;

    /// Default: `selectOne`. The setter drops a selection that the new mode does not allow.
    SwitchTracking trackingMode() const;
    void setTrackingMode(SwitchTracking mode);

    /// Default: 0. New segments come at the trailing end, enabled, without label or icon.
    int segmentCount() const;
    void setSegmentCount(int count);
    QStringList labels() const; ///< of all segments; the setter also sets the number of segments
    void setLabels(const QStringList &labels);

    QString labelForSegment(int segment) const; ///< default: empty
    /// A label that does not fit is elided, and shown in a tool tip.
    void setLabel(const QString &label, int segment);
    QIcon imageForSegment(int segment) const; ///< default: null
    void setImage(const QIcon &image, int segment); ///< beside the label, as a small icon
    /// Default: empty. Screen readers read it for a segment without a label.
    QString toolTipForSegment(int segment) const;
    void setToolTip(const QString &toolTip, int segment); ///< empty: that of the control
    using QWidget::setToolTip;
    int tagForSegment(int segment) const; ///< a number for the program's own use; default: 0
    void setTag(int tag, int segment); ///< several segments may have the same
    /// Default: true, also while the control as a whole is disabled.
    bool isEnabledForSegment(int segment) const;
    void setEnabled(bool isEnabled, int segment); ///< leaves the selection as it is
    using QWidget::setEnabled;

    /// In device-independent pixels, without the lines around the segment. Default: 0, to fit the
    /// label and the icon.
    virtual double widthForSegment(int segment) const;
    void setWidth(double width, int segment); ///< for widthForSegment()

    /// The segment that was selected last; -1 if none is selected. The setter deselects all others.
    /// The setter, unlike the user, can select a disabled segment.
    int selectedSegment() const;
    void setSelectedSegment(int segment);
    bool isSelectedForSegment(int segment) const; ///< never with `momentary`
    /// With `selectOne`, deselects the others. With `momentary`, does nothing.
    void setSelected(bool isSelected, int segment);
    /// Selects the first segment with that tag. Returns false if there is none.
    bool selectSegmentWithTag(int tag);

    QRect segmentRect(int segment) const; ///< in the control, without the lines around it
    int segmentAt(QPoint point) const; ///< -1 if there is none at that point of the control
    int focusedSegment() const; ///< on which the keys act; -1 if all are disabled

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void click(int segment); ///< as by the user; does nothing if the segment or control is disabled

Q_SIGNALS:
    /// The user has acted on the segment. Emitted after selectionChanged().
    void triggered(int segment);
    /// The user or the program has selected or deselected a segment.
    void selectionChanged();
    void selectedSegmentChanged(int segment);
    void trackingModeChanged(NS::SegmentedControl::SwitchTracking mode);
    void labelsChanged(const QStringList &labels);
    void segmentCountChanged(int count);

protected:
    void setWidths(const QList<double> &widths); ///< like setWidth() for each segment
    double fittingWidthForSegment(int segment) const; ///< for the whole label and image
    double smallestWidthForSegment(int segment) const; ///< for the beginning of the label
    QSize sizeForSegmentWidths(const QList<double> &widths) const; ///< of the control

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
