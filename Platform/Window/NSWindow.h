// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/NSWindowButton.h>

#include <QUrl>
#include <QWidget>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QAbstractButton)

namespace NS {
class TitlebarAccessoryViewController;

/// A window that draws its own title bar. The desktop moves, resizes, snaps and maximises it.
///
///     NS::Window window;
///     window.setWindowTitle(tr("Letters"));
///     window.setContentView(new QMainWindow); // or any widget, or a layout on the window itself
///     window.show();
///
/// Title, icon, sizes, state and closing are QWidget's. Frames are in device-independent pixels
/// from the lower left corner of the primary screen, with y upwards. Main thread only. See
/// docs/windows.md for dragging, the shadow's margin, frames on Wayland, and a QMainWindow in it.
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
    /// The parts of a window's frame, and what the user can do to the window.
    enum StyleMaskFlag {
        borderless = 0, ///< None of the others.
        titled = 1 << 0, ///< Has a title bar. The flags for buttons count only with this one.
        closable = 1 << 1, ///< Has a close button. The program can close any window.
        miniaturizable = 1 << 2, ///< Has a button to minimise, and miniaturize() works.
        resizable = 1 << 3, ///< By edges, zoom and full screen.
        fullSizeContentView = 1 << 15, ///< The content lies behind the title bar too.
    };
    /// Any number of flags.
    Q_DECLARE_FLAGS(StyleMask, StyleMaskFlag)
    Q_FLAG(StyleMask)

    /// Whether the title bar shows the window's title.
    enum TitleVisibility {
        titleVisible = 0, ///< In the middle, as far as the buttons leave room.
        titleHidden = 1 ///< The bar, its buttons and the document's icon stay visible.
    };
    Q_ENUM(TitleVisibility)

    explicit Window(QWidget *parent = nullptr); ///< titled, with all buttons, and resizable
    /// `contentRect` is the frame of the content below the title bar.
    Window(const QRectF &contentRect, StyleMask styleMask, QWidget *parent = nullptr);
    ~Window() override;
    /// The frame of the content of a window with that frame and without accessories.
    static QRectF contentRectForFrameRect(const QRectF &frame, StyleMask mask);
    static QRectF frameRectForContentRect(const QRectF &content, StyleMask mask); ///< the inverse

    /// The window with its title bar, without its shadow and without a frame of the desktop. The
    /// setters round, and do nothing while the window is maximised or full screen.
    QRectF frame() const;
    void setFrame(const QRectF &frame);
    virtual void setFrame(const QRectF &frame, bool display); ///< `display` repaints at once
    virtual void setFrame(const QRectF &frame, bool display, bool animate); ///< in 200 ms
    int shadowMargin() const; ///< around the window; 0 while it has no shadow
    StyleMask styleMask() const; ///< the setter keeps the window's frame
    void setStyleMask(StyleMask styleMask);
    QWidget *contentView() const; ///< below the title bar; the window owns it; default: null
    void setContentView(QWidget *view); ///< calls deleteLater() on the previous view
    TitleVisibility titleVisibility() const; ///< default: titleVisible
    virtual void setTitleVisibility(TitleVisibility visibility);
    QUrl representedURL() const; ///< the document, whose icon is beside the title; default: empty
    void setRepresentedURL(const QUrl &url);
    bool isMovableByWindowBackground() const; ///< by drags that no widget takes; default: false
    void setMovableByWindowBackground(bool isMovable);
    bool hasFullKeyboardAccess() const; ///< Tab reaches the standard buttons; default: false
    void setFullKeyboardAccess(bool hasAccess);
    bool followsDesktopButtonLayout() const; ///< shows the desktop's buttons; default: false
    void setFollowsDesktopButtonLayout(bool follows);
    bool hasNativeDecorations() const; ///< the desktop draws the frame; default: false
    void setNativeDecorations(bool areNative); ///< hides a shown window for a moment
    /// Null if the style mask lacks the button, or the window has no document.
    virtual QAbstractButton *standardWindowButton(WindowButton kind) const;
    /// Goes below earlier ones. The window owns it until it is removed, or added to another one.
    void addTitlebarAccessoryViewController(TitlebarAccessoryViewController *controller);
    void removeTitlebarAccessoryViewControllerAtIndex(int index); ///< out of range: a fatal error
    /// From top to bottom.
    QList<TitlebarAccessoryViewController *> titlebarAccessoryViewControllers() const;

    virtual QByteArray saveState() const; ///< the window's geometry and state, across screens
    virtual bool restoreState(const QByteArray &state); ///< false, without a change, if damaged
    Q_INVOKABLE virtual void awakeFromNib(); ///< called when an interface file has set properties
    virtual void layoutIfNeeded(); ///< updates the window's layouts; each layout pass calls it
    Q_INVOKABLE virtual void performLayout(); ///< part of the layout pass, see NSView.h
    void setVisible(bool visible) override;

public Q_SLOTS:
    virtual void orderFront(); ///< Shows the window in front, without taking the focus.
    virtual void orderOut(); ///< Hides the window.
    void performClose(); ///< Clicks the close button, or beeps if there is none.
    void miniaturize(); ///< Minimises the window if it is miniaturisable.
    void zoom(); ///< Maximises or restores the window if it is resizable and not full screen.
    void toggleFullScreen(); ///< Does nothing if the window is not resizable.

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
    void documentVersionsRequested(); ///< by a button, shown while a receiver is connected

protected:
    virtual void windowDidResize(QResizeEvent *notification); ///< after a resize; does nothing
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
