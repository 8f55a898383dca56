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

/// A property that is an argument of a computed binding.
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

/// Binds a property of `object` to a value that a function computes from other properties:
///
///     NS::bind(label, u"text"_s, { { person, u"first"_s }, { person, u"last"_s } },
///              [](const QString &first, const QString &last) { return first + u' ' + last; });
///
/// The function is called once during the call, and again after each change of a source, before the
/// setter of the source returns. It has one argument for each source; otherwise the program does
/// not compile. Values are converted by QVariant::value() to the types of the arguments. If a
/// source or an object on its path is null or destroyed, the argument is the default value of its
/// type; a std::optional is empty, and a QVariant is invalid. The result is written as `NS::bind`
/// writes a model's value.
///
/// If there is a group, changes of the sources wait for its next flush, which calls the function
/// once. The group is not owned.
///
/// `object` owns the binding. `NS::unbind` ends it, and a binding of the same name replaces it.
/// Throws the exceptions of `NS::bind` and of the first call of the function; nothing is bound
/// then. A later exception is caught and printed as a warning. Main thread only.
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
