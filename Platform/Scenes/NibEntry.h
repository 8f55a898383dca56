// SPDX-License-Identifier: MIT
// Not API: the grammar of the entries of an interface file.
#pragma once

#include "Base/Global.h"
#include "Layout/NSLayoutConstraint.h"
#include "Scenes/NibBindingOptions.h"
#include "Scenes/NibFile.h"

#include <QList>
#include <QString>

#include <variant>

namespace Pellarvine::detail {

/// "owner.account.name". The root is "owner", "self" or the name of an object.
struct NibPath
{
    QString root;
    QString keyPath;

    bool operator==(const NibPath &) const = default;
};

/// owner.nameField
struct NibOutlet
{
    NibPath path;

    bool operator==(const NibOutlet &) const = default;
};

/// text = owner.account.name | commit
struct NibBinding
{
    QString key;
    NibPath path;
    NibBindingOptions options = {};

    bool operator==(const NibBinding &) const = default;
};

/// Whether a binding of this name is a list binding: "choices" (NS::bindChoices) or "items" (the
/// rows of a view). Not if the class has a property of that name.
bool isListBinding(const QObject *object, const QString &key);

/// clicked -> owner.document.save
struct NibAction
{
    QString signal;
    NibPath receiver;
    QString slot;

    bool operator==(const NibAction &) const = default;
};

/// leading = superview.leading + 8, width <= 0.5 * panel.width @750, height >= 20
struct NibConstraint
{
    NS::LayoutAttribute firstAttribute;
    NS::LayoutRelation relation;
    double multiplier; ///< 0 without a second item
    QString secondItem; ///< "superview", "self" or a widget's name; empty if there is none
    NS::LayoutAttribute secondAttribute;
    double constant;
    double priority;

    bool operator==(const NibConstraint &) const = default;
};

using NibEntry = std::variant<NibOutlet, NibBinding, NibAction, NibConstraint>;

/// Whether a dynamic property of that name holds entries.
PELLARVINE_INTERNAL_EXPORT bool holdsNibEntries(const QString &property);

/// The correct name, "bindings" for "binding", if the name is similar to one of those and the value
/// has entries of that kind. Empty otherwise.
PELLARVINE_INTERNAL_EXPORT QString misspeltNibProperty(const QString &property,
                                                       const QList<NibText> &values);

/// The entries in a value of such a property, one on each line, with their places.
PELLARVINE_INTERNAL_EXPORT QList<NibText> nibEntries(const NibText &value);

/// Parses an entry of that property. Throws NibFault.
PELLARVINE_INTERNAL_EXPORT NibEntry nibEntry(const QString &property, const QString &text);

} // namespace Pellarvine::detail
