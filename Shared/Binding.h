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
/// The constructor copies the first side to the second. From then on each change of the first side
/// is written to the second and, in a two-way binding, each change of the second side to the first.
/// A side that is equal to the new value (NS::isEqual), or whose type has no `==`, is not written.
/// Null is carried as an invalid QVariant.
///
/// A side that changes the value that it gets, such as a slider with a limit, changes the other
/// side too. Use `NS::bind` for controls: it never changes a model that is only shown. Two changes
/// are not carried back: a QString that gets null becomes "", and a text property that gets 5
/// becomes "5".
///
/// If the sides never agree, for example because the transformers are not inverse to each other,
/// the binding stops after `deepestExchange` nested passes and prints a warning. The sides keep
/// their values, and the next change starts again.
///
/// A failure in the constructor is thrown. Later failures, such as a value that does not fit, are
/// printed as a warning, or passed to the function of setErrorHandler(). Debug builds of the
/// library also warn if a write ends the target's own QProperty binding.
///
/// An object that is given by a shared pointer is kept alive. Another one may be destroyed first;
/// the binding then does nothing. The binding may be destroyed within its transformers and writes.
///
/// Both objects must live in one thread, where the binding is made, destroyed and used. A debug
/// build of the library aborts the process if they live in two; a release build does not check. A
/// value is carried on the thread that makes the change, before its setter returns.
class PELLARVINE_EXPORT Binding final : public detail::BindingBase
{
public:
    /// Converts a value. The argument and the result may be invalid, which is null.
    using Transformer = std::function<QVariant(const QVariant &)>;

    /// Binds `with`, a key path of `object`, to `toWith`, a key path of `to`. `forwardTransformer`
    /// converts values on the way from the first object to the second, `reverseTransformer` on the
    /// way back. Throws `NS::KeyValueException` if an object lacks its key path, if a path that is
    /// observed does not report its changes, and if the second side cannot take the first value.
    /// Passes on the exceptions of transformers.
    [[nodiscard]] Binding(NS::ObjectReference object, const QString &with, NS::ObjectReference to,
                          const QString &toWith, bool twoWayBinding = true,
                          Transformer forwardTransformer = {}, Transformer reverseTransformer = {});

    /// For functions of other types. The compiler's message names the class to use.
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

    /// Replaces an object. No value is copied. The binding still observes the objects that it was
    /// made with, and only these: it carries a change if the object that changed is still first()
    /// or second(), to the present object of the other side. The old object is no longer kept
    /// alive.
    using BindingBase::setFirst;
    using BindingBase::setSecond;

    /// Converts from the first object to the second. May be empty.
    const Transformer &forwardTransformer() const;
    /// Converts from the second object to the first. May be empty.
    const Transformer &reverseTransformer() const;
};

} // namespace Pellarvine
