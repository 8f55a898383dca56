// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Window/NSWindow.h"

#include <QList>

namespace Pellarvine::detail {

/// Which of close, minimise and zoom a title bar has, on which side, from left to right.
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

/// What the user has set for title bars: in KWin's file under KDE, else told by the settings
/// portal. The standard layout where neither says anything.
PELLARVINE_INTERNAL_EXPORT ButtonLayout desktopButtonLayout();

} // namespace Pellarvine::detail
