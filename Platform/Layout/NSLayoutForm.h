// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSLayoutConstraint.h>

/// @file
/// A form by constraints: labels in one column, the fields that they name in another.
///
///     NS::LayoutConstraint::activateConstraints(NS::form(panel, {
///             { new QLabel(tr("&Name:")), name },
///             { new QLabel(tr("&Server:")), server },
///             { nullptr, rememberMe },
///     }, 16));
namespace NS {

/// A line of a form.
struct FormRow
{
    QWidget *label = nullptr; ///< may be null
    QWidget *field = nullptr; ///< may not be null
};

/// Makes labels and fields children of `container`, which owns them from then on, and returns the
/// constraints that place them in it, not yet active. In a row, both are on one baseline. Labels
/// are as wide as the widest one, fields share the rest. Between them lies `systemSpacing`, and
/// around them `border`, in device-independent pixels. Height that is left goes to fields that
/// expand, or else stays free below the last one. Labels are supposed to be no higher than their
/// fields. A QLabel without a buddy gets the field for one, so that its shortcut works, and the
/// alignment that the style has for labels of forms.
[[nodiscard]] PELLARVINE_EXPORT QList<std::shared_ptr<LayoutConstraint>>
form(QWidget *container, const QList<FormRow> &rows, double border = 0.0);

} // namespace NS
