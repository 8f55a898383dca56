// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/NSLayoutConstraint.h"

#include <QLineF>
#include <QRectF>

#include <vector>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// What is not as somebody wants it: a line from where it is to where it is wanted, and a text.
struct Violation
{
    QLineF line;
    QString text;
};

/// What the constraints below a view have made of it, in the view's coordinates.
struct LayoutFindings
{
    std::vector<QRectF> frames; ///< of the aligned parts of the widgets with constraints
    std::vector<QRectF> guides; ///< of the layout guides with constraints
    std::vector<QLineF> baselines; ///< of those whose constraints are about them
    std::vector<Violation> violations; ///< of constraints, and of widgets about their own sizes
};

/// By how much the first side of the constraint is too large as the widgets and guides stand now;
/// negative if it is too small, and 0 if the constraint holds, but for rounding to whole units.
double excessOf(const NS::LayoutConstraint &constraint);

/// Reads the places of the widgets as they are now. Differences that rounding to whole units can
/// explain are none.
PELLARVINE_INTERNAL_EXPORT LayoutFindings layoutFindings(const QWidget *view);

} // namespace Pellarvine::detail
