// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"
#include "Window/NSWindowButton.h"

#include <QList>

namespace Pellarvine::detail {

/// The close, minimise and zoom buttons of a title bar, on either side, from left to right.
struct PELLARVINE_INTERNAL_EXPORT ButtonLayout
{
    QList<NS::WindowButton> left { NS::WindowButton::close, NS::WindowButton::miniaturize,
                                   NS::WindowButton::zoom };
    QList<NS::WindowButton> right {};

    bool contains(NS::WindowButton kind) const
    {
        return left.contains(kind) || right.contains(kind);
    }
    /// Where a button begins in a bar, or 0 if the layout lacks it. `margin` is beside the
    /// outermost button, `gap` between two.
    double place(NS::WindowButton kind, double barWidth, double margin, double buttonWidth,
                 double gap) const;

    friend bool operator==(const ButtonLayout &, const ButtonLayout &) = default;
};

/// The user's setting for title bars: from KWin's file under KDE, else from the settings portal.
/// The standard layout if there is none.
PELLARVINE_INTERNAL_EXPORT ButtonLayout desktopButtonLayout();

} // namespace Pellarvine::detail
