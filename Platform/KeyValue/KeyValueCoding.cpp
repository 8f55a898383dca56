// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValueCoding.h"

#include "KeyValue/KeyValueAccess.h"

namespace NS {

QVariant valueForKeyPath(QObject *object, const QString &keyPath)
{
    const detail::Keys keys = detail::keys(object, keyPath);
    QVariant value = QVariant::fromValue(object);
    for (const QString &key : keys) {
        if (const auto holder = detail::object(value)) {
            // Null is an error at the start of the path only.
            if (!*holder && &key != &keys.constFirst())
                return {};
            const detail::Access access = detail::findProperty(*holder, key, keyPath);
            value = detail::readProperty(*holder, access, key);
        } else if (value.isValid()) {
            value = detail::valueInside(value, key, keyPath);
        } else {
            return {};
        }
    }
    return detail::withoutNull(value);
}

void setValueForKeyPath(QObject *object, const QString &keyPath, const QVariant &value)
{
    detail::setValue(object, detail::keys(object, keyPath), 0, value, keyPath);
}

} // namespace NS
