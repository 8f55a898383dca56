// SPDX-License-Identifier: MIT
#include "Base/MethodLookup.h"

#include <QObject>

namespace Pellarvine::detail {

QMetaMethod methodWithSignature(const QObject *object, const char *signature)
{
    const QMetaObject *const type = object->metaObject();
    return type->method(type->indexOfMethod(signature));
}

namespace {

QList<QMetaMethod> methodsOf(const QMetaObject *type, QByteArrayView name)
{
    QList<QMetaMethod> found;
    for (int i = 0; i < type->methodCount(); ++i) {
        const QMetaMethod method = type->method(i);
        if (method.name() == name)
            found.append(method);
    }
    return found;
}

} // namespace

QList<QMetaMethod> methodsNamed(const QObject *object, QByteArrayView name)
{
    return methodsOf(object->metaObject(), name);
}

QList<QMetaMethod> methodsMatching(const QObject *object, const QString &text)
{
    return methodsMatching(object->metaObject(), text);
}

QList<QMetaMethod> signalsMatching(const QObject *object, const QString &text)
{
    return signalsMatching(object->metaObject(), text);
}

QList<QMetaMethod> methodsMatching(const QMetaObject *type, const QString &text)
{
    const QByteArray wanted = QMetaObject::normalizedSignature(text.toUtf8().constData());
    const qsizetype parenthesis = wanted.indexOf('(');
    QList<QMetaMethod> found = methodsOf(type, wanted.mid(0, parenthesis));
    if (parenthesis >= 0) {
        found.removeIf(
                [&](const QMetaMethod &method) { return method.methodSignature() != wanted; });
    }
    return found;
}

QList<QMetaMethod> signalsMatching(const QMetaObject *type, const QString &text)
{
    QList<QMetaMethod> found = methodsMatching(type, text);
    found.removeIf(
            [](const QMetaMethod &method) { return method.methodType() != QMetaMethod::Signal; });
    return found;
}

} // namespace Pellarvine::detail
