// SPDX-License-Identifier: MIT
#pragma once

namespace NS {

/// The buttons in a window's title bar. The numbers have gaps.
///
///     window.standardWindowButton(NS::WindowButton::zoom)->setEnabled(false);
enum class WindowButton {
    close = 0, ///< Calls `QWidget::close`.
    miniaturize = 1, ///< Minimises the window.
    zoom = 2, ///< Maximises or restores the window, or leaves full screen.
    documentIcon = 4, ///< Opens a menu of the folders that contain the document.
    documentVersions = 6, ///< Emits `Window::documentVersionsRequested`.
};

} // namespace NS
