// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QPoint>
#include <QRect>

QT_FORWARD_DECLARE_CLASS(QWindow)

/// What a window has to know of the desktop that it stands on, and Qt does not say.
namespace Pellarvine::detail::WindowManager {

/// Whether pixels can be translucent. Without, what is left transparent is black.
bool hasCompositor();

/// Some desktops say that they move or resize a window and do not. A window that has not changed
/// once the pointer has gone that far, in device-independent pixels, is moved or resized by hand.
inline constexpr int unansweredDragDistance = 48;

/// Whether a program can place its windows. Not on Wayland.
bool canPlaceWindows();

/// Tells the window manager whether the user may resize and maximise the window.
void setResizable(QWindow *window, bool isResizable);

/// Makes the bundle's identifier the application id, by which task bars find the program's icon and
/// name, unless the program has set one.
void setApplicationId();

/// Asks the window manager to show its own menu for the window. False if it has none to show.
bool showWindowMenu(QWindow *window, QPoint globalPosition);

/// Whether the desktop knows of a margin around a window, in which the window draws its own shadow:
/// it then places, snaps and maximises what is inside. Not where a Wayland compositor tiles all
/// windows: Qt does not tell which ones, and the shadows would lie on the windows beside.
bool knowsMargins();

/// Tells the desktop of that margin on all sides, in device-independent pixels. On Wayland this
/// grows or shrinks a visible window by it; the window managers of X11 do so themselves.
void setMargin(QWindow *window, int margin);

/// Whether the desktop says that the window is tiled. Only Wayland compositors do.
bool isTiled(QWindow *window);

/// Whether a window of that frame fills a half of the screen, as desktops do with windows that are
/// dragged to its edge: it touches three edges of the space that there is for windows.
PELLARVINE_INTERNAL_EXPORT bool isSnapped(const QRect &frame, const QRect &available);

} // namespace Pellarvine::detail::WindowManager
