// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QString>

QT_FORWARD_DECLARE_CLASS(QWidget)

/// @file
/// The items of a model's list as the choices of a control.

namespace NS {

/// The keys of an item of a list of choices.
struct ChoiceKeys
{
    QString title = {}; ///< of the shown text; if empty, the item itself
    QString tag = {}; ///< of the value of `selectedTag`; if empty, the item itself
};

/// Offers the items of a model's list in `control`, a QComboBox or a SegmentedControl, and gives it
/// two dynamic properties that can be bound: `selectedObject`, the selected item, and
/// `selectedTag`, the item's tag.
///
///     NS::bindChoices(countryBox, shop, u"countries"_s, { .title = u"name"_s, .tag = u"code"_s });
///     NS::bind(countryBox, u"selectedTag"_s, customer, u"address.countryCode"_s);
///
/// `keyPath` leads to a list of QObjects, gadgets, maps or plain values, which reports its changes
/// or is constant. `title` and `tag` are key paths for QObjects, and single keys for gadgets and
/// maps. The control follows the list and the titles of QObjects. The selected item stays selected
/// when other items change. A selection that is not in the list is shown as none; only the user's
/// next selection changes it.
///
/// Replaces the choices of an earlier call. Throws `KeyValueException` if the model or its first
/// item lacks a key, and `std::invalid_argument` for another kind of control. Main thread only.
PELLARVINE_EXPORT void bindChoices(QWidget *control, const ObjectReference &observed,
                                   const QString &keyPath, const ChoiceKeys &keys = {});

} // namespace NS
