// SPDX-License-Identifier: MIT
// Not API.
#pragma once

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// Moves a window to the centre of another one, or of its screen if `other` is null, but not beyond
/// the edges of the screen.
void moveToCentre(QWidget *window, const QWidget *other);

} // namespace Pellarvine::detail
