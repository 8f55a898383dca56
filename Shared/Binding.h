// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Shared/BindingBase.h>

#include <functional>
#include <type_traits>
#include <utility>

namespace Pellarvine {

/// Keeps a property of one object equal to a property of another, for as long as the binding lives:
///
///     const Pellarvine::Binding volume(slider, u"value"_s, player, u"output.volume"_s);
///     const Pellarvine::Binding title(document, u"title"_s, window, u"windowTitle"_s, false,
///             [](const QVariant &title) {
///                 return title.isValid() ? title : QVariant(tr("Untitled")); });
///
/// While it is made, the first side is copied to the second: the first wins. From then on every
/// change of the first is written to the second and, in a two-way binding, every change of the
/// second to the first, on the thread that makes the change and before its setter returns. A side
/// that equals the new value already (NS::isEqual) is not written, which ends the exchange; nor is
/// one whose type has no `==`. Null is carried as no value, an invalid QVariant.
///
/// Two things are not carried back: what a type that cannot hold null reports after null has been
/// written to it ("" of a QString), and the text "5" of a side that holds 5 as its text. Every
/// other report is, also of a control that limits what it is given, such as a slider: `NS::bind` is
/// for controls, it never changes a model that is only shown.
///
/// Two transformers that do not undo each other make the sides write to each other again and again.
/// After `deepestExchange` passes within passes the binding stops, prints one warning that names
/// both key paths, and leaves the sides as they are; the next change from outside starts anew.
///
/// An object given by a shared pointer is kept alive; one given plainly may die first, and the
/// binding then does nothing. The binding may be destroyed within its own transformers and writes.
/// What goes wrong in a later pass, a value that does not fit say, is printed as a warning. Writing
/// ends a binding that the target's QProperty has by itself; a debug build warns. Both objects must
/// live in one thread: a debug build stops the process if they do not.
class PELLARVINE_EXPORT Binding final : public detail::BindingBase
{
public:
    /// Takes a value or no value, and returns either.
    using Transformer = std::function<QVariant(const QVariant &)>;

    /// `forwardTransformer` is applied to values going from the first object to the second,
    /// `reverseTransformer` to those going back. Throws `NS::KeyValueException` for a key path that
    /// an object lacks or that is observed and does not report changes, and for a first value that
    /// the second side cannot take; and what a transformer throws.
    [[nodiscard]] Binding(NS::ObjectReference object, const QString &with, NS::ObjectReference to,
                          const QString &toWith, bool twoWayBinding = true,
                          Transformer forwardTransformer = {}, Transformer reverseTransformer = {});

    /// Does not compile, and says what to use instead.
    template <typename Function, typename... Others>
    requires(!std::is_convertible_v<Function, Transformer>)
            Binding(NS::ObjectReference object, const QString &with, NS::ObjectReference to,
                    const QString &toWith, bool twoWayBinding, Function, Others...)
        : Binding(std::move(object), with, std::move(to), toWith, twoWayBinding)
    {
        static_assert(
                std::is_convertible_v<Function, Transformer>,
                "The transformers of a Binding take a const QVariant & and return a QVariant: "
                "for functions of other types, use TransformableBinding<A, B>");
    }

    /// Replaces an object, which is no longer kept alive, and nothing else: nothing is copied, and
    /// the binding goes on listening to the object it was made with. A change is carried if it
    /// comes from what is now `first` or `second`, and written to what is now the other.
    using BindingBase::setFirst;
    using BindingBase::setSecond;

    /// From the first object to the second; empty if there is none.
    const Transformer &forwardTransformer() const;
    /// From the second object to the first; empty if there is none.
    const Transformer &reverseTransformer() const;
};

} // namespace Pellarvine
