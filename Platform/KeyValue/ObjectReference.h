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

/// An argument of functions that keep a reference to an object, such as `NS::bind`. It converts
/// implicitly from a plain pointer, which does not own the object, and from a std::shared_ptr,
/// which does:
///
///     const Pellarvine::Binding level(slider, u"value"_s, model, u"level"_s);
///     // slider, a QSlider * with a parent: not owned; the reference is null once it is destroyed
///     // model, a std::shared_ptr<Model>: kept alive by the binding
///
/// A copy refers to the same object. It is not synchronized, as QPointer is not: use it on the
/// thread of the object.
class ObjectReference
{
public:
    /// Does not own the object. `object` may be null.
    template <typename T, std::enable_if_t<std::is_convertible_v<T *, QObject *>, int> = 0>
    ObjectReference(T *object) // NOLINT(google-explicit-constructor)
        : m_reference(QPointer<QObject>(object))
    { }

    /// Shares the ownership of the object.
    template <typename T, std::enable_if_t<std::is_convertible_v<T *, QObject *>, int> = 0>
    ObjectReference(std::shared_ptr<T> object) // NOLINT(google-explicit-constructor)
        : m_reference(std::shared_ptr<QObject>(std::move(object)))
    { }

    ObjectReference(std::nullptr_t) = delete; ///< a literal nullptr does not compile

    /// The object. Null after an object that is not owned was destroyed.
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
