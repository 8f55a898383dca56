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
/// right stay left and right whatever the direction of the text.
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
/// It stays on its screen, on another edge if need be, and follows its view. It closes when the
/// view is hidden, scrolled out of sight or destroyed. The first widget in it that accepts the
/// focus gets it, until the popover closes; Esc closes it. Without such a widget the focus stays
/// where it is, and a screen reader reads the content out.
///
/// Under Wayland, where programs cannot place windows, the window of the view contains the popover.
/// If it has no room there, it is a popup, like a menu, and the compositor places it. Qt before 6.8
/// does not tell where that is: a popup then has no arrow and does not follow the view. Main thread
/// only.
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
    /// What closes it besides close() and Esc in it.
    enum class Behavior {
        applicationDefined = 0, ///< nothing
        /// A click or a key elsewhere, which still does what it does. Another program that becomes
        /// active, but not while the desktop picks a colour.
        transient = 1,
        semitransient = 2, ///< a click elsewhere in the window of its view, or Esc there
    };
    Q_ENUM(Behavior)

    explicit Popover(QObject *parent = nullptr);
    ~Popover() override; ///< takes it off the screen without asking or telling

    /// What it shows. A controller without a parent becomes this object's child; the one before it,
    /// if it is a child, is deleted.
    ViewController *contentViewController() const;
    void setContentViewController(ViewController *controller);

    /// Default: `applicationDefined`.
    Behavior behavior() const;
    void setBehavior(Behavior behavior);

    /// Without the bubble around. While it is not set, or empty, it is what the view asks for, and
    /// follows that on screen. What is too large for the screen gets smaller.
    QSizeF contentSize() const;
    void setContentSize(const QSizeF &size);

    /// The place the arrow points to, in the view's coordinates, y upwards; the zero rectangle is
    /// all of its bounds. Setting it moves a popover on the screen.
    QRectF positioningRect() const;
    void setPositioningRect(const QRectF &rect);

    /// The widget whose click opens it and closes it again: while the click or the key on it lasts
    /// that closed a popover of the same opener, showing does nothing. Default: null, so that every
    /// call shows it.
    QWidget *opener() const;
    void setOpener(QWidget *opener);

    /// Whether it deletes itself once it has closed, for one that nobody holds. Default: false.
    bool deletesOnClose() const;
    void setDeletesOnClose(bool deletes);

    /// Whether the window of its view always contains it, and makes it smaller if there is no room.
    /// Under Wayland this also happens to an `applicationDefined` popover with the focus, and to
    /// one that is shown while its window is not active: a popup would take all keys and clicks.
    /// From the next show on; default: false.
    bool staysInWindow() const;
    void setStaysInWindow(bool stays);

    /// Shows it beside a rectangle of the view, which may not be null; on the screen already, it
    /// moves there. Does nothing without content, and if the view is not visible.
    void showRelativeToRect(const QRectF &rect, QWidget *view, NS::RectEdge preferredEdge);
    /// Whether it is on the screen; still true while willClose() is emitted.
    bool isShown() const;
    /// The view it is shown at; null if it is not shown.
    QWidget *positioningView() const;
    /// The edge it got; the preferred one may have had no room.
    RectEdge edge() const;

public Q_SLOTS:
    /// Closes at once. Does nothing if it is not shown.
    void close();
    /// Closes if `popoverShouldClose` says so. This is what clicks and keys do.
    void performClose();

Q_SIGNALS:
    /// It is about to come up; not when it only moves. Nothing comes up if its view or its content
    /// is gone afterwards.
    void willShow();
    void didShow(); ///< it is on the screen, with the focus where it goes
    void willClose(); ///< it is still on the screen, and cannot be kept there
    void didClose(); ///< it has left the screen and can be shown again
    void contentViewControllerChanged(NS::ViewController *controller);
    void behaviorChanged(NS::Popover::Behavior behavior);
    void contentSizeChanged(const QSizeF &size);
    void positioningRectChanged(const QRectF &rect);
    void openerChanged(QWidget *opener);
    void deletesOnCloseChanged(bool deletes);
    void staysInWindowChanged(bool stays);
    void shownChanged(bool isShown);

protected:
    /// True unless overridden.
    virtual bool popoverShouldClose();
    /// Called before `didClose()`. Does nothing unless overridden.
    virtual void popoverDidClose();
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace NS
