// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/BindingGroup.h>
#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QString>
#include <QVariant>
#include <QVariantList>

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

/// @file
/// Bindings whose value is computed from several properties.

namespace NS {

/// A property that a computed binding is computed from.
struct BindingSource
{
    ObjectReference object; ///< kept alive if it is given by a shared pointer
    QString keyPath; ///< from `object` to the property
};

} // namespace NS

/// @cond internal
namespace Pellarvine::detail {

// Not API. The argument types of a function, function pointer or lambda.
template <typename F>
struct FunctionArguments : FunctionArguments<decltype(&F::operator())>
{ };
template <typename R, typename... A>
struct FunctionArguments<R (*)(A...)>
{
    using Types = std::tuple<std::decay_t<A>...>;
};
template <typename C, typename R, typename... A>
struct FunctionArguments<R (C::*)(A...)> : FunctionArguments<R (*)(A...)>
{ };
template <typename C, typename R, typename... A>
struct FunctionArguments<R (C::*)(A...) const> : FunctionArguments<R (*)(A...)>
{ };

template <typename T>
concept HasArguments = requires
{
    typename FunctionArguments<std::decay_t<T>>::Types;
};

/// A value as the argument it is for: no value is an empty optional or a default value.
template <typename T>
struct ArgumentFrom
{
    static T from(const QVariant &value) { return value.value<T>(); }
};
template <>
struct ArgumentFrom<QVariant>
{
    static QVariant from(const QVariant &value) { return value; }
};
template <typename T>
struct ArgumentFrom<std::optional<T>>
{
    static std::optional<T> from(const QVariant &value)
    {
        return value.isValid() ? std::optional<T>(value.value<T>()) : std::nullopt;
    }
};

PELLARVINE_EXPORT void bindComputed(QObject *object, const QString &binding,
                                    std::span<const NS::BindingSource> sources,
                                    std::function<QVariant(const QVariantList &)> function,
                                    Pellarvine::BindingGroup *group);

} // namespace Pellarvine::detail
/// @endcond

namespace NS {

/// Binds a property of `object` to what a function makes of any number of others:
///
///     NS::bind(label, u"text"_s, { { person, u"first"_s }, { person, u"last"_s } },
///              [](const QString &first, const QString &last) { return first + u' ' + last; });
///
/// The function is called at once, and again before the setter of any source returns. It takes as
/// many arguments as there are sources, or the program does not compile. A value is converted to
/// the type of its argument as QVariant::value() does it; where there is none, since the property
/// or an object on the way to it is null, the argument is its type's default: take a std::optional
/// or a QVariant to see the difference. What the function returns is written as `NS::bind` writes a
/// model's value. What it throws later is printed as a warning.
///
/// With a group, changes of the sources are carried by the group's next flush, with one call for
/// all of them. The group is not owned.
///
/// Replaces the binding of that name; `NS::unbind` ends it. Once the object of a source is gone,
/// the source has no value. Throws `KeyValueException`, with nothing bound, as `NS::bind` does, and
/// what the function throws in its first call.
template <std::size_t count, detail::HasArguments Function>
void bind(QObject *object, const QString &binding, const BindingSource (&sources)[count],
          Function function, Pellarvine::BindingGroup *group = nullptr)
{
    using Types = typename detail::FunctionArguments<Function>::Types;
    static_assert(std::tuple_size_v<Types> == count,
                  "The function of a computed binding takes one argument for each source");
    if constexpr (std::tuple_size_v<Types> == count) {
        detail::bindComputed(
                object, binding, sources,
                [function = std::move(function)](const QVariantList &values) mutable {
                    return [&]<std::size_t... i>(std::index_sequence<i...>)
                    {
                        return QVariant::fromValue(
                                function(detail::ArgumentFrom<std::tuple_element_t<i, Types>>::from(
                                        values[qsizetype(i)])...));
                    }
                    (std::make_index_sequence<count>());
                },
                group);
    }
}

} // namespace NS
