// SPDX-License-Identifier: MIT
// Not API: checks entries of an owner without having the owner.
#pragma once

#include "Scenes/NibEntry.h"

QT_FORWARD_DECLARE_CLASS(QMetaProperty)
QT_FORWARD_DECLARE_CLASS(QObject)
QT_FORWARD_DECLARE_STRUCT(QMetaObject)

namespace Pellarvine::detail {

/// Whether the object can be the value of that outlet.
bool canBeOutlet(const QMetaProperty &property, const QObject *object);

/// Whether the path of the entry begins with the owner.
bool beginsAtOwner(const NibEntry &entry);

/// Checks an entry that begins with the owner against its object, and against the class of the
/// owner if that is not null. Only the first key is checked; the others depend on objects. Throws
/// NibFault.
void checkOwnerEntry(const QObject *object, const NibEntry &entry, const QMetaObject *owner);

} // namespace Pellarvine::detail
