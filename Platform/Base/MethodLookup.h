// SPDX-License-Identifier: MIT
// Not API: finds the methods that an object's meta-object knows.
#pragma once

#include "Base/Global.h"

#include <QByteArrayView>
#include <QList>
#include <QMetaMethod>
#include <QString>

namespace Pellarvine::detail {

/// The method with a normalized signature, such as "save(bool)", of the most derived class that
/// declares it. Invalid if there is none.
PELLARVINE_PRIVATE_EXPORT QMetaMethod methodWithSignature(const QObject *object,
                                                          const char *signature);

/// All overloads of that name in the order of declaration, base classes first.
PELLARVINE_PRIVATE_EXPORT QList<QMetaMethod> methodsNamed(const QObject *object,
                                                          QByteArrayView name);

/// @{
/// All methods that `text` means, in the same order. `text` is a name, or a signature with any
/// spacing; it comes from an interface file.
PELLARVINE_PRIVATE_EXPORT QList<QMetaMethod> methodsMatching(const QObject *object,
                                                             const QString &text);
PELLARVINE_PRIVATE_EXPORT QList<QMetaMethod> signalsMatching(const QObject *object,
                                                             const QString &text);
PELLARVINE_PRIVATE_EXPORT QList<QMetaMethod> methodsMatching(const QMetaObject *type,
                                                             const QString &text);
PELLARVINE_PRIVATE_EXPORT QList<QMetaMethod> signalsMatching(const QMetaObject *type,
                                                             const QString &text);
/// @}

} // namespace Pellarvine::detail
