// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/PlainProperty.h>

#include <QObject>
#include <QScopeGuard>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace Pellarvine {

/// The member functions of one property. See property().
template <typename Get, typename Set, typename Signal>
struct MemberProperty
{
    Get get; ///< `&QSlider::value`
    Set set; ///< `&QSlider::setValue`
    Signal notify; ///< `&QSlider::valueChanged`

    /// The type of the property of an `Object`.
    template <typename Object>
    using Value = std::decay_t<std::invoke_result_t<Get, Object *>>;
};

/// A property for `MemberBinding`: its getter, its setter and its NOTIFY signal.
template <typename Get, typename Set, typename Signal>
MemberProperty<Get, Set, Signal> property(Get get, Set set, Signal notify)
{
    return { get, set, notify };
}

/// @cond internal
namespace detail {

/// Whether each `From` can be converted to a `To` without loss.
template <typename From, typename To>
concept FitsInto = requires(From from)
{
    To { from };
};

} // namespace detail
/// @endcond

/// A binding of two properties by their member functions. The compiler checks the types, and it
/// costs about as much as a pair of hand-written connections:
///
///     const MemberBinding volume(
///             slider, property(&QSlider::value, &QSlider::setValue, &QSlider::valueChanged),
///             player, property(&Player::volume, &Player::setVolume, &Player::volumeChanged));
///
/// The constructor copies the first side to the second. From then on each change of the first side
/// is copied to the second and, in a two-way binding, each change of the second side to the first.
/// A side that has an equal value is not written. The binding does not compile if one side's type
/// cannot hold every value of the other's.
///
/// Neither object is kept alive. After one was destroyed, the binding does nothing. It may be
/// destroyed while it writes. If the sides never agree, it stops as a `Binding` does.
///
/// Both objects live in one thread, where all changes are made; this is not checked. A change that
/// another thread makes is carried later, by the event loop. An exception of a setter is not
/// caught: it passes through the signal, which Qt does not support.
class PELLARVINE_EXPORT MemberBinding
{
public:
    MemberBinding() = delete; ///< not possible: a binding needs two objects

    /// Neither object may be null.
    template <typename A, typename PropertyA, typename B, typename PropertyB>
    [[nodiscard]] MemberBinding(A *first, PropertyA firstProperty, B *second,
                                PropertyB secondProperty, bool twoWayBinding = true)
    {
        using ValueA = typename PropertyA::template Value<A>;
        using ValueB = typename PropertyB::template Value<B>;
        static_assert(detail::FitsInto<ValueA, ValueB>,
                      "The second property cannot hold every value of the first");
        static_assert(detail::FitsInto<ValueB, ValueA>,
                      "The first property cannot hold every value of the second");
        const auto depth = std::make_shared<int>(0);
        pass<ValueB>(first, firstProperty, second, secondProperty, *depth);
        m_forward = QObject::connect(first, firstProperty.notify, second, [=] {
            pass<ValueB>(first, firstProperty, second, secondProperty, *depth);
        });
        if (twoWayBinding)
            m_reverse = QObject::connect(second, secondProperty.notify, first, [=] {
                pass<ValueA>(second, secondProperty, first, firstProperty, *depth);
            });
    }
    MemberBinding(const MemberBinding &) = delete;
    MemberBinding &operator=(const MemberBinding &) = delete;
    ~MemberBinding();

private:
    static constexpr int deepestExchange = 16;

    template <typename Value, typename Source, typename From, typename Target, typename To>
    static void pass(Source *source, const From &from, Target *target, const To &to, int &depth)
    {
        const Value value { std::invoke(from.get, source) };
        if (detail::isSame<Value>(std::invoke(to.get, target), value))
            return;
        if (depth == deepestExchange)
            return doesNotSettle(source, target);
        ++depth;
        // `depth` outlives the binding: the running connection owns it.
        const auto leave = qScopeGuard([&depth] { --depth; });
        std::invoke(to.set, target, value);
    }

    static void doesNotSettle(const QObject *source, const QObject *target);

    QMetaObject::Connection m_forward;
    QMetaObject::Connection m_reverse;
};

} // namespace Pellarvine
