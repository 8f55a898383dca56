// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QUrl>
#include <QWidget>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QAbstractButton)

namespace NS {

class TitlebarAccessoryViewController;

/// The buttons in a window's title bar. The numbers have gaps.
enum class WindowButton {
    close = 0, ///< closes the window as `QWidget::close` does
    miniaturize = 1, ///< minimises it
    zoom = 2, ///< maximises or restores it, and leaves full screen
    documentIcon = 4, ///< opens a menu of the folders that the document is in
    documentVersions = 6, ///< asks for `Window::documentVersionsRequested`
};

/// A window that draws its own title bar and leaves the rest to the desktop: moving, resizing by
/// eight edges, snapping, maximising, the window menu.
///
///     NS::Window window;
///     window.setWindowTitle(tr("Letters"));
///     window.setContentView(new QMainWindow); // or any widget, or a layout on the window itself
///     window.show();
///
/// The title bar is 22 units high and more with accessories. It is a view like others: a child of
/// it that takes a press keeps it, and everything else of the bar moves the window, the empty parts
/// of a QMenuBar and a QTabBar too. Other views say it with a property `mouseDownCanMoveWindow`
/// (bool), or, for some parts, with a method `Q_INVOKABLE bool mouseDownCanMoveWindow(QPoint)`. The
/// window cannot get narrower than the views in its title bar. Title, icon, sizes, state and
/// closing are QWidget's. Main thread only.
///
/// The first window makes the bundle's identifier the application id (the name of the program's
/// .desktop file) unless QGuiApplication::setDesktopFileName() has.
///
/// Frames are in units with y upwards from the lower left corner of the primary screen, in one
/// space for all screens. On Wayland nobody but the compositor places windows: there the origin
/// means nothing, and only the size of a frame that is set has an effect.
///
/// Where the desktop knows of it, the window draws its shadow in a margin of its own, which frames
/// do not count, but QWidget's geometry, size, minimum and maximum do. What of those is set before
/// the window is first shown is for the window without the margin, which is added then.
class PELLARVINE_EXPORT Window : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged STORED false)
    Q_PROPERTY(StyleMask styleMask READ styleMask WRITE setStyleMask NOTIFY styleMaskChanged)
    Q_PROPERTY(QWidget *contentView READ contentView WRITE setContentView NOTIFY contentViewChanged)
    Q_PROPERTY(TitleVisibility titleVisibility READ titleVisibility WRITE setTitleVisibility NOTIFY
                       titleVisibilityChanged)
    Q_PROPERTY(QUrl representedURL READ representedURL WRITE setRepresentedURL NOTIFY
                       representedURLChanged)
    Q_PROPERTY(bool movableByWindowBackground READ isMovableByWindowBackground WRITE
                       setMovableByWindowBackground NOTIFY movableByWindowBackgroundChanged)
    Q_PROPERTY(bool fullKeyboardAccess READ hasFullKeyboardAccess WRITE setFullKeyboardAccess NOTIFY
                       fullKeyboardAccessChanged)
    Q_PROPERTY(bool followsDesktopButtonLayout READ followsDesktopButtonLayout WRITE
                       setFollowsDesktopButtonLayout NOTIFY followsDesktopButtonLayoutChanged)
    Q_PROPERTY(bool nativeDecorations READ hasNativeDecorations WRITE setNativeDecorations NOTIFY
                       nativeDecorationsChanged)

public:
    /// What there is of a window, and what can be done to it.
    enum StyleMaskFlag {
        borderless = 0, ///< none of the others
        titled = 1 << 0, ///< without it there is no title bar and no button
        closable = 1 << 1, ///< by the close button; the program can close it in any case
        miniaturizable = 1 << 2, ///< by the button and by miniaturize()
        resizable = 1 << 3, ///< by edges, zoom and full screen
        fullSizeContentView = 1 << 15, ///< the content reaches up behind the title bar, and has the
                ///< clicks beside the bar's own controls
    };
    /// Any number of them; those for buttons count only together with `titled`.
    Q_DECLARE_FLAGS(StyleMask, StyleMaskFlag)
    Q_FLAG(StyleMask)

    /// Whether the title bar shows the window's title.
    enum TitleVisibility {
        titleVisible = 0, ///< in the middle, as far as the buttons leave room
        titleHidden = 1 ///< the bar, its buttons and the document's icon stay
    };
    Q_ENUM(TitleVisibility)

    /// Titled, closable, miniaturisable and resizable.
    explicit Window(QWidget *parent = nullptr);
    /// With that place and size for what is below the title bar, in screen coordinates.
    Window(const QRectF &contentRect, StyleMask styleMask, QWidget *parent = nullptr);
    ~Window() override;

    /// @{
    /// What the content gets of a frame, and the reverse: for a title bar without accessories.
    static QRectF contentRectForFrameRect(const QRectF &frame, StyleMask styleMask);
    static QRectF frameRectForContentRect(const QRectF &content, StyleMask styleMask);
    /// @}

    /// Of the window with its title bar; a frame that the desktop draws lies outside.
    QRectF frame() const;
    void setFrame(const QRectF &frame);
    /// Rounded to whole units; minimum and maximum size hold, keeping the upper left corner. Does
    /// nothing while the window is maximised or full screen. `display` repaints before it returns.
    virtual void setFrame(const QRectF &frame, bool display);
    /// Gets there within a fifth of a second if `animate`, and at once if the user has asked the
    /// desktop for less motion.
    virtual void setFrame(const QRectF &frame, bool display, bool animate);

    /// The margin around the window, in which its shadow lies and its edges are dragged. 0 until
    /// the window is shown, while it is maximised or full screen, with native decorations, and
    /// where the desktop knows of no such margin.
    int shadowMargin() const;

    /// A change keeps the window's frame: the content takes or leaves the title bar's room. With
    /// native decorations it may hide a visible window for a moment.
    StyleMask styleMask() const;
    void setStyleMask(StyleMask styleMask);

    /// Default: null. The window owns it, lays it out below the title bar and deletes the one
    /// before it. A layout that is set on the window instead has the same room.
    ///
    /// A QMainWindow goes on as a window: its closeEvent() is asked before this window closes, and
    /// closing it closes this window; its title, modified mark and icon become this window's, its
    /// file path the document, its state (full screen) this window's state and the reverse. A
    /// title, icon or document that this window has already stays until the content sets its own.
    QWidget *contentView() const;
    void setContentView(QWidget *view);

    /// Default: `titleVisible`. Has no effect on a frame that the desktop draws.
    TitleVisibility titleVisibility() const;
    virtual void setTitleVisibility(TitleVisibility visibility);

    /// The document that the window shows: its icon stands beside the title, with a menu of the
    /// folders that it is in. Default: empty.
    QUrl representedURL() const;
    void setRepresentedURL(const QUrl &url);

    /// Null where the style mask lacks it, or where there is no document.
    virtual QAbstractButton *standardWindowButton(WindowButton kind) const;

    /// @{
    /// Stacked below the standard title bar in order. Adding or removing one keeps the window's top
    /// edge and the size of its content: the window grows and shrinks at the bottom, unless it is
    /// maximised or full screen. The window owns the controllers that it has; afterwards nobody
    /// does. A controller that another window has moves; one that this window has stays where it
    /// is. An index out of range is a fatal error.
    void addTitlebarAccessoryViewController(TitlebarAccessoryViewController *controller);
    void removeTitlebarAccessoryViewControllerAtIndex(int index);
    /// @}
    /// From top to bottom. Empty unless any were added; one that is destroyed is gone from it.
    QList<TitlebarAccessoryViewController *> titlebarAccessoryViewControllers() const;

    /// Whether content that takes no press moves the window as the title bar does. False unless
    /// set.
    bool isMovableByWindowBackground() const;
    void setMovableByWindowBackground(bool isMovable);

    /// Whether Tab reaches the standard buttons. Default: false.
    bool hasFullKeyboardAccess() const;
    void setFullKeyboardAccess(bool hasAccess);

    /// Whether the title bar has the buttons that the user has set for the desktop's title bars, on
    /// the sides and in the order set there, and follows changes of that. Default: false, which is
    /// close, minimise and zoom on the left.
    bool followsDesktopButtonLayout() const;
    void setFollowsDesktopButtonLayout(bool follows);

    /// Leaves title, buttons, moving and resizing to the desktop's own frame; accessories and other
    /// views in the title bar stay below it. Default: false. Hides a visible window for a moment.
    bool hasNativeDecorations() const;
    void setNativeDecorations(bool areNative);

    /// Geometry and state, also across screens.
    virtual QByteArray saveState() const;
    /// False if `state` is none that saveState() has given; nothing has changed then.
    virtual bool restoreState(const QByteArray &state);

    /// Called once everything from an interface file is set.
    Q_INVOKABLE virtual void awakeFromNib();

    /// Runs on each layout pass, and when called: brings the layouts of the window up to date.
    virtual void layoutIfNeeded();
    /// The layout pass, which `NS::setNeedsLayout` and a change of size ask for.
    Q_INVOKABLE virtual void performLayout();

    /// Has the margin for the shadow by the time that the window is seen.
    void setVisible(bool visible) override;

public Q_SLOTS:
    /// In front of the program's other windows, without taking the focus.
    virtual void orderFront();
    virtual void orderOut(); ///< hides it
    void performClose(); ///< as the close button does; beeps where there is none
    void miniaturize(); ///< minimises it, if it is miniaturisable
    void zoom(); ///< maximises or restores; not if it is not resizable, or in full screen
    void toggleFullScreen(); ///< does nothing if it is not resizable

Q_SIGNALS:
    void frameChanged(const QRectF &frame);
    void styleMaskChanged(NS::Window::StyleMask styleMask);
    void contentViewChanged(QWidget *view);
    void titleVisibilityChanged(NS::Window::TitleVisibility visibility);
    void representedURLChanged(const QUrl &url);
    void movableByWindowBackgroundChanged(bool isMovable);
    void fullKeyboardAccessChanged(bool hasAccess);
    void followsDesktopButtonLayoutChanged(bool follows);
    void nativeDecorationsChanged(bool areNative);
    /// The button beside the title, which shows once somebody is connected, was clicked.
    void documentVersionsRequested();

protected:
    /// The title bar has been arranged for the new size; frameChanged() comes next. For subclasses:
    /// nothing unless overridden.
    virtual void windowDidResize(QResizeEvent *notification);

    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void connectNotify(const QMetaMethod &signal) override;
    void disconnectNotify(const QMetaMethod &signal) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Window::StyleMask)

} // namespace NS
