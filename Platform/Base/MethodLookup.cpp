// SPDX-License-Identifier: MIT
#include "Base/MethodLookup.h"

#include <QObject>

namespace Pellarvine::detail {

QMetaMethod methodWithSignature(const QObject *object, const char *signature)
{
    const QMetaObject *const type = object->metaObject();
    return type->method(type->indexOfMethod(signature));
}

QList<QMetaMethod> methodsNamed(const QObject *object, QByteArrayView name)
{
    QList<QMetaMethod> found;
    const QMetaObject *const type = object->metaObject();
    for (int i = 0; i < type->methodCount(); ++i) {
        const QMetaMethod method = type->method(i);
        if (method.name() == name)
            found.append(method);
    }
    return found;
}

QList<QMetaMethod> methodsMatching(const QObject *object, const QString &text)
{
    const QByteArray wanted = QMetaObject::normalizedSignature(text.toUtf8().constData());
    const qsizetype parenthesis = wanted.indexOf('(');
    QList<QMetaMethod> found = methodsNamed(object, wanted.mid(0, parenthesis));
    if (parenthesis >= 0) {
        found.removeIf(
                [&](const QMetaMethod &method) { return method.methodSignature() != wanted; });
    }
    return found;
}

QList<QMetaMethod> signalsMatching(const QObject *object, const QString &text)
{
    QList<QMetaMethod> found = methodsMatching(object, text);
    found.removeIf(
            [](const QMetaMethod &method) { return method.methodType() != QMetaMethod::Signal; });
    return found;
}

} // namespace Pellarvine::detail
