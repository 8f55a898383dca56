// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Layout/NSLayoutConstraint.h"

#include <QLineF>
#include <QRectF>

#include <vector>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace Pellarvine::detail {

/// A constraint or a size hint that does not hold: a line from the actual to the required place,
/// and a text.
struct Violation
{
    QLineF line;
    QString text;
};

/// The result of the constraints below a view, in the coordinates of the view.
struct LayoutFindings
{
    std::vector<QRectF> frames; ///< of the aligned parts of the widgets with constraints
    std::vector<QRectF> guides; ///< of the layout guides with constraints
    std::vector<QLineF> baselines; ///< those that constraints are about
    std::vector<Violation> violations; ///< of constraints and of size hints
};

/// By how much the first side of the constraint is too large for the current frames, negative if it
/// is too small. 0 if the constraint holds, apart from rounding to whole units.
double excessOf(const NS::LayoutConstraint &constraint);

/// Reads the current frames. Differences by rounding to whole units are no violations.
PELLARVINE_INTERNAL_EXPORT LayoutFindings layoutFindings(const QWidget *view);

} // namespace Pellarvine::detail
