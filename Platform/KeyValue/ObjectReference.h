// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <variant>

namespace NS {

/// A reference to an object that a piece of the library works on. It is made, unasked, from what
/// the caller has:
///
///     const Pellarvine::Binding level(slider, u"value"_s, model, u"level"_s);
///     // slider, a QSlider * with a parent: watched, and null from the moment it is destroyed
///     // model, a std::shared_ptr<Model>: kept alive
///
/// A value: copying it copies the reference, not the object.
class ObjectReference
{
public:
    /// Watches an object that somebody else owns. `object` may be null.
    template <typename T, std::enable_if_t<std::is_convertible_v<T *, QObject *>, int> = 0>
    ObjectReference(T *object) // NOLINT(google-explicit-constructor)
        : m_reference(QPointer<QObject>(object))
    { }

    /// Owns the object together with everybody else who has the pointer.
    template <typename T, std::enable_if_t<std::is_convertible_v<T *, QObject *>, int> = 0>
    ObjectReference(std::shared_ptr<T> object) // NOLINT(google-explicit-constructor)
        : m_reference(std::shared_ptr<QObject>(std::move(object)))
    { }

    ObjectReference(std::nullptr_t) = delete; ///< a piece with nothing to work on is a mistake

    /// The object; null once an object that is only watched has been destroyed.
    QObject *get() const
    {
        if (const auto *const watched = std::get_if<QPointer<QObject>>(&m_reference))
            return watched->data();
        return std::get_if<std::shared_ptr<QObject>>(&m_reference)->get();
    }

private:
    std::variant<QPointer<QObject>, std::shared_ptr<QObject>> m_reference;
};

} // namespace NS
