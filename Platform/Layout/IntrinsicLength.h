// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QSizePolicy>
#include <QWidget>

#include <optional>

namespace Pellarvine::detail {

/// What a widget says about its length in one direction.
struct LengthHints
{
    QSizePolicy::Policy policy = QSizePolicy::Preferred;
    double hint = -1.0; ///< below 0: none
    double minimumHint = -1.0; ///< below 0: none
    double minimum = 0.0;
    double maximum = QWIDGETSIZE_MAX;
    double insets = 0.0; ///< how much longer it is than the part of it that is aligned
};

/// What a widget says about its width and its height.
struct SizeHints
{
    LengthHints width;
    LengthHints height;
};

/// Without the insets.
PELLARVINE_INTERNAL_EXPORT SizeHints sizeHints(const QWidget *widget);

/// The length that the aligned part of a widget wants in one direction, and how much.
struct IntrinsicLength
{
    double target = 0.0;
    std::optional<double> lower; ///< none: no limit of its own
    std::optional<double> upper;
    double notBelow = 0.0; ///< the levels at which it is kept from falling below the target
    double notAbove = 0.0; ///< ... and from rising above it
    double lowerLevel = 0.0;
    bool operator==(const IntrinsicLength &) const = default;
};

PELLARVINE_INTERNAL_EXPORT IntrinsicLength intrinsicLength(const LengthHints &hints);

} // namespace Pellarvine::detail
