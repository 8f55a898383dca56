// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QSizePolicy>
#include <QWidget>

#include <optional>

namespace Pellarvine::detail {

/// The size hints and limits of a widget in one direction.
struct LengthHints
{
    QSizePolicy::Policy policy = QSizePolicy::Preferred;
    double hint = -1.0; ///< negative if there is none
    double minimumHint = -1.0; ///< negative if there is none
    double minimum = 0.0;
    double maximum = QWIDGETSIZE_MAX;
    double insets = 0.0; ///< the length of the widget minus that of its aligned part
};

/// The size hints and limits of a widget.
struct SizeHints
{
    LengthHints width;
    LengthHints height;
};

/// Leaves the insets at 0.
PELLARVINE_INTERNAL_EXPORT SizeHints sizeHints(const QWidget *widget);

/// The preferred length of the aligned part of a widget in one direction, its limits, and their
/// priorities.
struct IntrinsicLength
{
    double target = 0.0;
    std::optional<double> lower; ///< none if the target is the limit
    std::optional<double> upper;
    double notBelow = 0.0; ///< the priority of being at least the target
    double notAbove = 0.0; ///< the priority of being at most the target
    double lowerLevel = 0.0;
    bool operator==(const IntrinsicLength &) const = default;
};

PELLARVINE_INTERNAL_EXPORT IntrinsicLength intrinsicLength(const LengthHints &hints);

} // namespace Pellarvine::detail
