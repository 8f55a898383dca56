// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

/// @file
/// A form by constraints, with labels in one column and their fields in another:
///
///     NS::LayoutConstraint::activateConstraints(NS::form(panel, {
///             { new QLabel(tr("&Name:")), name },
///             { new QLabel(tr("&Server:")), server },
///             { nullptr, rememberMe },
///     }, 16));
namespace NS {

/// A row of a form.
struct FormRow
{
    QWidget *label = nullptr; ///< may be null
    QWidget *field = nullptr; ///< may not be null
};

/// Makes labels and fields children of `container`, which takes ownership, and returns the
/// constraints that place them, not yet active. Label and field of a row have the same baseline.
/// All labels are as wide as the widest one. Fields get the rest, except those whose size policy
/// does not let them grow. `systemSpacing` lies between them, and `border`, in device-independent
/// pixels, around them. Extra height goes to fields that expand, or else stays free below the last
/// row. No label should be higher than its field. The field becomes the buddy of a QLabel without
/// one, which also gets the alignment that the style has for labels of forms. Main thread only.
[[nodiscard]] PELLARVINE_EXPORT QList<std::shared_ptr<LayoutConstraint>>
form(QWidget *container, const QList<FormRow> &rows, double border = 0.0);

} // namespace NS
