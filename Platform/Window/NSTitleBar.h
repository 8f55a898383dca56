// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

QT_FORWARD_DECLARE_CLASS(QByteArray)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS::TitleBar {

/// Gives an existing window the title bar, shadow and behaviour of an `NS::Window`:
///
///     QMessageBox box(QMessageBox::Question, tr("Letters"), tr("Send the letter now?"),
///                     QMessageBox::Yes | QMessageBox::No);
///     NS::TitleBar::install(&box);
///     const bool isAccepted = box.exec() == QMessageBox::Yes;
///
/// Works for a QMainWindow, a QDialog and any other top-level widget with a layout. Without one, as
/// in a QWizard or a QProgressDialog, the title bar covers widgets; a warning on standard output
/// names the first. The window keeps its class, result, default button and closeEvent(). Its flags
/// at the time of the call decide which of close, minimise and zoom it has. Sizes set before the
/// call count as sizes of its content; sizes set later include the title bar and, while it is
/// visible, the shadow's margin. The window's contents margins are the bar's from now on.
///
/// Hides a visible window for a moment, which ends exec(): call it before. A second call, or a call
/// for an `NS::Window`, does nothing.
/// A widget that is no window is a fatal error. Main thread only.
PELLARVINE_EXPORT void install(QWidget *window);

/// The window's geometry and state, as QWidget::saveGeometry(), without the margin for the shadow.
PELLARVINE_EXPORT QByteArray saveState(const QWidget *window);
/// Restores a result of saveState(). Returns false and changes nothing for any other `state`.
PELLARVINE_EXPORT bool restoreState(QWidget *window, const QByteArray &state);

} // namespace NS::TitleBar
