// SPDX-License-Identifier: MIT
#include "KeyValue/KeyValueObserving.h"

#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/KeyValuePath.h"

#include <QObject>

#include <exception>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace NS {

KeyValueObserver::~KeyValueObserver()
{
    while (m_registrations)
        delete std::exchange(m_registrations, m_registrations->m_next);
}

void KeyValueObserver::remove(detail::Registration *registration)
{
    detail::Registration **link = &m_registrations;
    while (*link != registration)
        link = &(*link)->m_next;
    *link = registration->m_next;
    delete registration;
}

void KeyValueObserver::pathChanged(detail::Registration &path)
{
    KeyValueChange change { path.value() };
    if (!change.newValue.isValid())
        change.newValue = nullObject();
    // Copied, because the registration may end in the call.
    const QString keyPath = path.keyPath();
    const char *const className = path.root() ? path.root()->metaObject()->className() : "nullptr";
    try {
        observeValue(keyPath, path.root(), &change);
    } catch (const KeyValueException &) {
        throw; // its text names the class and the key path
    } catch (...) {
        throw detail::ObserverFailure { std::current_exception(), std::string("the observer of ")
                                                                          + className + '.'
                                                                          + keyPath.toStdString() };
    }
}

void addObserver(QObject *object, KeyValueObserver *observer, const QString &keyPath,
                 KeyValueObservingOptions options)
{
    detail::Registration::add(object, observer, keyPath, options);
}

void removeObserver(QObject *object, KeyValueObserver *observer, const QString &keyPath)
{
    detail::Registration *registration = observer->m_registrations;
    while (registration && (registration->root() != object || registration->keyPath() != keyPath))
        registration = registration->next();
    if (!object || !registration)
        throw KeyValueException(KeyValueException::undefinedKey,
                                object ? object->metaObject()->className() : "nullptr", keyPath,
                                keyPath, u"no such observer is registered"_s);
    observer->remove(registration);
}

} // namespace NS
