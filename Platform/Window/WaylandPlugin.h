// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include <Qt>

QT_FORWARD_DECLARE_CLASS(QPoint)
QT_FORWARD_DECLARE_CLASS(QRect)
QT_FORWARD_DECLARE_CLASS(QWindow)

/// Functions of Qt's Wayland plugin for programs that draw their own frames, which have no public
/// header. They are looked up by name; if a version of Qt lacks one, nothing happens. Only for
/// windows of that plugin.
namespace Pellarvine::detail::WaylandPlugin {

/// Whether setMargin() works.
bool knowsMargins();

/// The margin, in device-independent pixels, at a window's edges that the compositor does not count
/// as part of the window. A visible window grows or shrinks by the difference.
void setMargin(QWindow *window, int margin);

/// Whether the compositor has tiled the window: as of its last resize event. False where Qt's
/// plugin cannot tell.
bool isTiled(QWindow *window);

/// Asks the compositor to show its menu for the window; a compositor without one ignores that.
/// False if it could not be asked.
bool showWindowMenu(QWindow *window, QPoint globalPosition);

/// Whether the user has clicked or typed in the program yet. Only then can a popup have the
/// keyboard.
bool hasSeenInput();

/// Whether the plugin moves popups, in Qt's eyes too, to where the compositor has placed them.
bool tellsPopupPlaces();

/// Asks the compositor to place the popup beside that edge of `anchor`, in device-independent
/// pixels from the parent's corner; on the opposite edge, or slid along it, where there is no room.
/// For popups that are not visible yet; an older Qt places them by their geometry.
void setPopupAnchor(QWindow *popup, const QRect &anchor, Qt::Edge edge);

} // namespace Pellarvine::detail::WaylandPlugin
