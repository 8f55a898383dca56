// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QString>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The items of a model's list as the choices of a control.

namespace NS {

/// Where an item of a list of choices has what is shown and stored.
struct ChoiceKeys
{
    QString title = {}; ///< what is shown; the item itself if empty
    QString tag = {}; ///< what `selectedTag` stands for; the item itself if empty
};

/// Offers the items of a model's list in `control`, a QComboBox or a SegmentedControl, and gives it
/// two dynamic properties that can be bound: `selectedObject`, the selected item, and
/// `selectedTag`, the item's tag.
///
///     NS::bindChoices(countryBox, shop, u"countries"_s, { .title = u"name"_s, .tag = u"code"_s });
///     NS::bind(countryBox, u"selectedTag"_s, customer, u"address.countryCode"_s);
///
/// `keyPath` leads to a list of QObjects, gadgets, maps or plain values that reports its changes,
/// or is constant; the keys of gadgets and maps lead one step. The control follows the list and, of
/// QObjects, the title. The selection stays with its item while others come and go; a selection
/// that is not in the list is shown as none, and changes only when the user makes another.
///
/// Replaces the choices that the control had. Throws `KeyValueException` for keys that the model or
/// a first item lacks, and `std::invalid_argument` for another kind of control.
PELLARVINE_EXPORT void bindChoices(QWidget *control, const ObjectReference &observed,
                                   const QString &keyPath, const ChoiceKeys &keys = {});

} // namespace NS
