// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindow.h"
#include "Window/TitleBarAction.h"

#include <QObject>

QT_FORWARD_DECLARE_CLASS(QShortcut)

namespace Pellarvine::detail {

class TitleBarView;
class WindowBorder;
class WindowDrag;
class WindowEdges;

/// Draws a window's frame in place of the desktop: title bar, border with round corners, shadow;
/// and leaves moving, resizing and the window menu to the desktop. It acts on the window's events
/// before the window receives them, so that it works for any top-level widget. While the widget is
/// no window, but in another one, it has no title bar and no border. The window owns it.
class WindowFrame : public QObject
{
    Q_OBJECT

public:
    /// Sizes that the window already has count as sizes of its content.
    WindowFrame(QWidget *window, NS::Window::StyleMask styleMask, bool canZoom = true);

    /// Null if the window has none.
    PELLARVINE_INTERNAL_EXPORT static WindowFrame *of(const QWidget *window);

    QWidget *window() const { return m_window; }
    TitleBarView *titleBar() const { return m_titleBar; }
    WindowDrag *drag() const { return m_drag; }

    NS::Window::StyleMask styleMask() const { return m_styleMask; }
    void setStyleMask(NS::Window::StyleMask styleMask);
    /// Whether the user can maximise the window. Some dialogs can be resized, but not maximised.
    bool canZoom() const { return m_canZoom && m_styleMask & NS::Window::resizable; }
    /// Whether the desktop draws the frame after all.
    bool isNative() const { return m_isNative; }
    void setNative(bool isNative);
    bool hasFullKeyboardAccess() const { return m_hasFullKeyboardAccess; }
    void setFullKeyboardAccess(bool hasAccess);
    bool followsDesktopButtonLayout() const { return m_followsDesktopButtonLayout; }
    void setFollowsDesktopButtonLayout(bool follows);

    /// Neither maximised nor full screen.
    bool isNormal() const;
    /// The margin around the visible window, in which the shadow lies.
    int margin() const { return m_margin; }
    /// The window without the margin, in its own coordinates.
    QRect seen() const;
    /// The height of the title bar that is visible.
    int barHeight() const;

    /// Places title bar, border and content for the window's size.
    void arrange();

    /// The window's geometry and state, without the margin.
    QByteArray saveState() const;
    /// Returns false and changes nothing if `state` is not from saveState().
    bool restoreState(const QByteArray &state);

    void miniaturize();
    void zoom();
    void toggleFullScreen();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isTiled() const;
    bool isOnScreen() const;
    void rearrange();
    void barHeightChanged();
    void boundWidth();
    void enterFocus();
    Qt::WindowFlags wantedFlags() const;
    void applyFlags();
    void keepFlags();
    void takeButton(NS::WindowButton kind);
    void takeClick(TitleBarClick click, QPoint position);
    void updateButtonLayout();
    void updateBorder();
    void updateMargin(bool canBeTranslucent);
    void moveLimits(QSize by);
    void updateItems();
    void prepareMargin();
    void placeDialog();
    void painted();
    void confirmMargin(QWindow *window);
    void exposureChanged(QWindow *window);
    void tellResizable();
    void watchNativeWindow();
    void windowShown();
    void warnOfCoveredWidget();
    void raiseAbove(const QObject *child);
    void drawBackground();

    QWidget *m_window;
    WindowDrag *m_drag;
    WindowEdges *m_edges;
    TitleBarView *m_titleBar;
    WindowBorder *m_border;
    QShortcut *m_menuShortcut;
    NS::Window::StyleMask m_styleMask;
    bool m_canZoom;
    int m_fullBarHeight; // that the window's height counts with
    bool m_hasFullKeyboardAccess = false;
    bool m_followsDesktopButtonLayout = false;
    bool m_isNative = false;
    bool m_hasWarned = false;
    bool m_wasFixed = false; // the last value sent to the window manager
    int m_boundedWidth = 0; // the least width that boundWidth() has set
    bool m_knowsMargins = false; // the desktop does
    bool m_isExposed = false;
    int m_margin = 0;
    int m_confirmedMargin = 0; // that the window's last picture has
    int m_normalMargin = 0; // that the window has when it is normal
};

/// A window in its own coordinates, without the margin in which it draws its shadow.
QRect seenRect(const QWidget *window);

} // namespace Pellarvine::detail
