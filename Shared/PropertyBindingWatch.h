// SPDX-License-Identifier: MIT
// Not API: a warning of debug builds.
#pragma once

#ifndef QT_NO_DEBUG

#include "Base/Failure.h"
#include "KeyValue/KeyValuePath.h"

#include <QMetaProperty>
#include <QPointer>
#include <QProperty>

#include <string>

namespace Pellarvine::detail {

// Prints a warning if the target of a write loses its own QProperty binding during the object's
// lifetime. Programs rarely intend that.
class PropertyBindingWatch
{
public:
    explicit PropertyBindingWatch(const WatchedPath *path)
    {
        const PlainProperty target = path ? path->plainTarget() : PlainProperty();
        if (!target.object)
            return;
        const QMetaProperty property = target.object->metaObject()->property(target.index);
        if (!property.isBindable() || !property.bindable(target.object).hasBinding())
            return;
        m_object = target.object;
        m_property = property;
        m_name = path->name();
    }
    PropertyBindingWatch(const PropertyBindingWatch &) = delete;
    PropertyBindingWatch &operator=(const PropertyBindingWatch &) = delete;
    ~PropertyBindingWatch()
    {
        if (m_object && !m_property.bindable(m_object).hasBinding())
            printWarning("Warning: a binding has written " + m_name
                         + ", which ended the QProperty binding of that property");
    }

private:
    QPointer<QObject> m_object;
    QMetaProperty m_property;
    std::string m_name;
};

} // namespace Pellarvine::detail

#endif
