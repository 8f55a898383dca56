// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Shared/Settings.h>

QT_FORWARD_DECLARE_CLASS(QDialogButtonBox)

/// @file
/// The buttons of a settings dialog:
///
///     auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply
///                                                | QDialogButtonBox::Cancel, dialog);
///     Pellarvine::connectButtons(settings, buttons);

namespace Pellarvine {

/// Connects the standard buttons of `box` to `settings`. Apply and OK commit the edits of the
/// window (NS::commitEditing) and store them. Cancel and Reset discard them. Restore Defaults shows
/// the defaults. Apply and Reset are enabled while a property is modified or a control has an edit
/// of one, Restore Defaults while one differs from its default. OK accepts the dialog of the box
/// unless an edit is refused or the file cannot be written, and Cancel rejects it, so do not
/// connect these yourself. Esc and the close button of the dialog discard the edits like Cancel.
///
/// The connection ends with either object. Neither is null. Main thread only.
PELLARVINE_EXPORT void connectButtons(Settings *settings, QDialogButtonBox *box);

} // namespace Pellarvine
