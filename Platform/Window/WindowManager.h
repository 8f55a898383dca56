// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QPoint>
#include <QRect>

QT_FORWARD_DECLARE_CLASS(QWindow)

/// Information about the desktop that windows need and Qt does not provide.
namespace Pellarvine::detail::WindowManager {

/// Whether windows can be translucent. Without a compositor, transparent pixels are black.
bool hasCompositor();

/// Some desktops promise to move or resize a window and do nothing. If the window has not changed
/// after the pointer has moved that far, in device-independent pixels, the program moves or resizes
/// it itself.
inline constexpr int unansweredDragDistance = 48;

/// Whether programs can place their windows. False on Wayland.
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
