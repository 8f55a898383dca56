// SPDX-License-Identifier: MIT
// Not API: signals that announce changes of properties without NOTIFY.
#pragma once

#include "Base/Global.h"

#include <QMetaProperty>

QT_FORWARD_DECLARE_STRUCT(QMetaObject)

namespace Pellarvine::detail {

/// The index of the signal that reports changes of `property`: its NOTIFY signal, otherwise the
/// registered one. -1 if there is neither. Any thread.
PELLARVINE_PRIVATE_EXPORT int changeSignal(const QMetaObject *metaObject,
                                           const QMetaProperty &property);

} // namespace Pellarvine::detail
