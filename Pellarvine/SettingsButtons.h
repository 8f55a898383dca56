// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Shared/Settings.h>

QT_FORWARD_DECLARE_CLASS(QDialogButtonBox)

/// @file
/// The buttons of a settings dialog.

namespace Pellarvine {

/// Gives the standard buttons of `box` their meaning for `settings`: Apply and OK commit the edits
/// of the window (NS::commitEditing) and store them, Cancel and Reset discard them, Restore
/// Defaults shows the defaults. Apply and Reset are enabled while something is modified, Restore
/// Defaults while something is no default. OK accepts the box's QDialog unless an edit is refused
/// or the file cannot be written, and Cancel rejects it: connect neither yourself.
///
/// Ends with either of the two.
PELLARVINE_EXPORT void connectButtons(Settings *settings, QDialogButtonBox *box);

} // namespace Pellarvine
