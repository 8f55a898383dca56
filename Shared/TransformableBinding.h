// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Shared/BindingBase.h>

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace Pellarvine {

/// @cond internal
namespace detail {

/// A type whose values can be read and written without a QVariant. The key-value layer treats
/// pointers as objects.
template <typename T>
concept PlainValue = std::default_initializable<T> && std::equality_comparable<
                             T> && !std::is_pointer_v<T> && !std::is_same_v<T, QVariant>;

template <typename A, typename B>
class TypedTransformers final : public Transformers
{
public:
    TypedTransformers(std::function<B(A)> forward, std::function<A(B)> reverse)
        : m_forward(std::move(forward))
        , m_reverse(std::move(reverse))
    { }

    bool transforms(Direction direction) const override
    {
        return direction == Direction::forward ? bool(m_forward) : bool(m_reverse);
    }
    QVariant transformed(Direction direction, const QVariant &value) const override
    {
        return direction == Direction::forward ? apply(m_forward, value) : apply(m_reverse, value);
    }
    bool pass(const Passage &passage) const override
    {
        return passage.direction == Direction::forward ? pass(m_forward, passage)
                                                       : pass(m_reverse, passage);
    }

private:
    template <typename From, typename To>
    static QVariant apply(const std::function<To(From)> &transformer, const QVariant &value)
    {
        if (!value.isValid())
            return value;
        if constexpr (std::is_same_v<From, QVariant>) {
            return QVariant::fromValue(transformer(value));
        } else {
            const QVariant cast = downcast(value, QMetaType::fromType<From>());
            if (!cast.isValid())
                return value;
            return QVariant::fromValue(transformer(*static_cast<const From *>(cast.constData())));
        }
    }

    template <typename From, typename To>
    static bool pass(const std::function<To(From)> &transformer, const Passage &passage)
    {
        if constexpr (PlainValue<From> && PlainValue<To>) {
            if (!passage.source.isA(QMetaType::fromType<From>())
                || !passage.target.isA(QMetaType::fromType<To>()))
                return false;
            From value {};
            passage.source.read(&value);
            To result = transformer(std::move(value));
            if (!passage.stillHasItsTarget()) {
                passage.write(QVariant::fromValue(std::move(result)));
                return true;
            }
            To current {};
            passage.target.read(&current);
            if (!NS::detail::isSame(current, result))
                passage.target.write(&result);
            return true;
        } else {
            return false;
        }
    }

    std::function<B(A)> m_forward;
    std::function<A(B)> m_reverse;
};

} // namespace detail
/// @endcond

/// A `Binding` with typed transformers. `A` is the type of the first side, `B` that of the second:
///
///     // A slider from -40 to 80 degrees in steps of half a degree.
///     slider->setRange(-80, 160);
///     const Pellarvine::TransformableBinding<double, int> shown(
///             thermometer, u"celsius"_s, slider, u"value"_s, true,
///             [](double celsius) { return qRound(celsius * 2); },
///             [](int halves) { return halves / 2.0; });
///
/// Do not bind a text field for numbers like this: each key would rewrite the text, "2" to "2.0".
/// `NS::bind` with the option `commit` waits until the number is complete.
///
/// Unlike with `Binding`, the objects cannot be replaced. Null and values of another type than `A`
/// (on the way back, `B`) are carried without the transformer; if the property cannot take one, a
/// warning is printed. A number of another type is transformed if `A` can hold its exact value, an
/// object if it is of that class. Properties that are declared with exactly these types need no
/// QVariant, and cost less. Threads, ownership and failures are those of `Binding`.
template <typename A, typename B>
class TransformableBinding final : public detail::BindingBase
{
    static_assert(std::is_same_v<A, std::decay_t<A>> && std::is_same_v<B, std::decay_t<B>>,
                  "TransformableBinding takes value types: QString, not const QString &");

public:
    /// Throws the exceptions of the constructor of `Binding`.
    [[nodiscard]] TransformableBinding(NS::ObjectReference object, const QString &with,
                                       NS::ObjectReference to, const QString &toWith,
                                       bool twoWayBinding = true,
                                       std::function<B(A)> forwardTransformer = {},
                                       std::function<A(B)> reverseTransformer = {})
        : BindingBase(std::move(object), with, std::move(to), toWith, twoWayBinding,
                      forwardTransformer || reverseTransformer
                              ? std::make_unique<detail::TypedTransformers<A, B>>(
                                      std::move(forwardTransformer), std::move(reverseTransformer))
                              : nullptr)
    { }
};

} // namespace Pellarvine
