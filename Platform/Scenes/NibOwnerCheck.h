// SPDX-License-Identifier: MIT
// Not API: checks entries that begin at an owner that is not there.
#pragma once

#include "Scenes/NibEntry.h"

QT_FORWARD_DECLARE_CLASS(QMetaProperty)
QT_FORWARD_DECLARE_CLASS(QObject)
QT_FORWARD_DECLARE_STRUCT(QMetaObject)

namespace Pellarvine::detail {

/// Whether an outlet of that property can be the object.
bool canBeOutlet(const QMetaProperty &property, const QObject *object);

/// Whether the entry's path begins at the owner.
bool beginsAtOwner(const NibEntry &entry);

/// Compares an entry that begins at the owner with the object that has it, and with the owner's
/// class if that is not null. Keys behind the first depend on objects that are not there, and are
/// left alone. Throws NibFault.
void checkOwnerEntry(const QObject *object, const NibEntry &entry, const QMetaObject *owner);

} // namespace Pellarvine::detail
