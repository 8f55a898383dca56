// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSViewController.h>

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QSizeF>

#include <memory>

namespace NS {

/// The edges of a rectangle with y upwards: minY is the lower one, maxY the upper one. Left and
/// right do not depend on the layout direction.
enum class RectEdge {
    minX = 0, ///< the left one
    minY = 1, ///< the lower one
    maxX = 2, ///< the right one
    maxY = 3, ///< the upper one
};

/// A bubble beside a place in a window, with an arrow to it:
///
///     auto *const popover = new NS::Popover(this);
///     popover->setContentViewController(new FilterViewController);
///     popover->setBehavior(NS::Popover::Behavior::transient);
///     popover->setOpener(button); // closes it with the next click
///     connect(button, &QPushButton::clicked, this, [=] {
///         popover->showRelativeToRect({}, button, NS::RectEdge::minY);
///     });
///
/// It follows its view, and uses another edge if the preferred one has no room on the screen. It
/// closes when the view is hidden, scrolled out of sight or destroyed. When shown, it gives the
/// focus to its first widget that accepts it, and Esc closes it. Without such a widget the focus
/// does not move, and screen readers read the content.
///
/// Under Wayland it is part of the view's window or, if it does not fit there, a popup of the
/// compositor, without an arrow before Qt 6.8: see docs/desktops.md. Lengths are in
/// device-independent pixels. Main thread only.
class PELLARVINE_EXPORT Popover : public QObject
{
    Q_OBJECT
    Q_PROPERTY(NS::ViewController *contentViewController READ contentViewController WRITE
                       setContentViewController NOTIFY contentViewControllerChanged)
    Q_PROPERTY(Behavior behavior READ behavior WRITE setBehavior NOTIFY behaviorChanged)
    Q_PROPERTY(QSizeF contentSize READ contentSize WRITE setContentSize NOTIFY contentSizeChanged)
    Q_PROPERTY(QRectF positioningRect READ positioningRect WRITE setPositioningRect NOTIFY
                       positioningRectChanged)
    Q_PROPERTY(QWidget *opener READ opener WRITE setOpener NOTIFY openerChanged)
    Q_PROPERTY(bool deletesOnClose READ deletesOnClose WRITE setDeletesOnClose NOTIFY
                       deletesOnCloseChanged)
    Q_PROPERTY(bool staysInWindow READ staysInWindow WRITE setStaysInWindow NOTIFY
                       staysInWindowChanged)
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged)

public:
    /// The events that close it, besides close() and Esc in it.
    enum class Behavior {
        applicationDefined = 0, ///< nothing
        /// A click or a key elsewhere, which also has its usual effect, or the activation of
        /// another program, except while the desktop picks a colour.
        transient = 1,
        semitransient = 2, ///< a click elsewhere in the window of its view, or Esc there
    };
    Q_ENUM(Behavior)

    explicit Popover(QObject *parent = nullptr);
    ~Popover() override; ///< hides it without popoverShouldClose() and without signals

    /// The controller of the content. Default: null, which also closes the popover. A controller
    /// without a parent becomes its child. The previous one gets deleteLater() if it is a
    /// child.
    ViewController *contentViewController() const;
    void setContentViewController(ViewController *controller);
    Behavior behavior() const; ///< default: applicationDefined
    void setBehavior(Behavior behavior);
    /// The size of the content, without the bubble. An empty size, the default, stands for the size
    /// that the view asks for. The screen limits it.
    QSizeF contentSize() const;
    void setContentSize(const QSizeF &size);
    /// The place that the arrow points to, in the view's coordinates with y upwards. The zero
    /// rectangle stands for the whole view. The setter moves a popover that is shown.
    QRectF positioningRect() const;
    void setPositioningRect(const QRectF &rect);
    /// The button that shows it. A click or a key on the button that has closed one of its popovers
    /// does not show one again. Not owned. Default: null, each call shows it.
    QWidget *opener() const;
    void setOpener(QWidget *opener);
    /// Whether it deletes itself after it has closed, or could not be shown. Default: false.
    bool deletesOnClose() const;
    void setDeletesOnClose(bool deletes);
    /// Whether it is always part of its view's window, and smaller if there is no room. Takes
    /// effect when it is next shown. Default: false; docs/desktops.md has exceptions under Wayland.
    bool staysInWindow() const;
    void setStaysInWindow(bool stays);

    /// Shows it beside a rectangle of the view, which may not be null, or moves it there. Does
    /// nothing without a content controller, or if the view is not visible or in the popover.
    void showRelativeToRect(const QRectF &rect, QWidget *view, NS::RectEdge preferredEdge);
    bool isShown() const; ///< still true while willClose() is emitted
    QWidget *positioningView() const; ///< the view beside which it is shown; null if it is not
    RectEdge edge() const; ///< the edge in use; the preferred one may have had no room

public Q_SLOTS:
    void close(); ///< at once; does nothing if it is not shown
    void performClose(); ///< if popoverShouldClose() returns true; clicks and keys call this

Q_SIGNALS:
    /// Emitted before it is shown, not when it only moves. It is not shown if a receiver hides or
    /// deletes its view, or deletes its content controller.
    void willShow();
    void didShow(); ///< it is shown, and the focus is set
    void willClose(); ///< it is still shown; closing cannot be prevented
    void didClose(); ///< it is hidden and can be shown again
    void contentViewControllerChanged(NS::ViewController *controller);
    void behaviorChanged(NS::Popover::Behavior behavior);
    void contentSizeChanged(const QSizeF &size);
    void positioningRectChanged(const QRectF &rect);
    void openerChanged(QWidget *opener);
    void deletesOnCloseChanged(bool deletes);
    void staysInWindowChanged(bool stays);
    void shownChanged(bool isShown);

protected:
    virtual bool popoverShouldClose(); ///< called by performClose(); default: true
    virtual void popoverDidClose(); ///< called before didClose(); does nothing by default
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
