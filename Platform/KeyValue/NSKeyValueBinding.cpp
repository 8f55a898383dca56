// SPDX-License-Identifier: MIT
#include "KeyValue/NSKeyValueBinding.h"

#include "KeyValue/BindingValue.h"
#include "KeyValue/ControlBindings.h"
#include "KeyValue/ValueBinding.h"

#include <QObject>
#include <QPointer>

#include <memory>

namespace NS {

void bind(QObject *object, const QString &binding, const ObjectReference &observed,
          const QString &keyPath)
{
    bind(object, binding, observed, keyPath, BindingOptions());
}

void bind(QObject *object, const QString &binding, const ObjectReference &observed,
          const QString &keyPath, const BindingOptions &options)
{
    detail::ControlBindings::made(object).add(
            binding,
            std::make_shared<detail::ValueBinding>(object, detail::boundProperty(object, binding),
                                                   observed, keyPath, options));
}

void unbind(QObject *object, const QString &binding)
{
    if (detail::ControlBindings *const bindings = detail::ControlBindings::of(object))
        bindings->remove(binding);
}

bool commitEditing(QObject *object)
{
    bool isDone = true;
    const QPointer<QObject> committed = object;
    if (detail::ControlBindings *const bindings = detail::ControlBindings::of(object))
        isDone = bindings->commit();
    if (!committed)
        return isDone; // a receiver of its signals has deleted it
    QList<QPointer<QObject>> children;
    for (QObject *const child : object->children())
        children.append(child);
    for (const QPointer<QObject> &child : std::as_const(children)) {
        if (child)
            isDone = commitEditing(child) && isDone;
    }
    return isDone;
}

QVariantMap infoForBinding(const QObject *object, const QString &binding)
{
    const detail::ControlBindings *const bindings = detail::ControlBindings::of(object);
    const detail::ControlBinding *const found = bindings ? bindings->find(binding) : nullptr;
    return found ? found->info() : QVariantMap();
}

} // namespace NS
