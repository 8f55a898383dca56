// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/BindingGroup.h>
#include <pellarvine/Platform/KeyValueObserving.h>
#include <pellarvine/Platform/ObjectReference.h>
#include <pellarvine/Platform/PlainProperty.h>

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

// AnyBinding and BindingError are API. All else in namespace detail is not.

namespace Pellarvine::detail {

/// @cond internal
struct BindingPrivate;

enum class Direction {
    forward, ///< from first to second
    reverse,
};

/// `value` as a value of `type`. Invalid if `value` is an object of another class, a number that
/// `type` cannot hold exactly (3.0 fits into int, 3.7 does not), or of another type.
PELLARVINE_EXPORT QVariant downcast(const QVariant &value, QMetaType type);

/// The transfer of one value from the side that has changed to the other side.
struct PELLARVINE_EXPORT Passage
{
    BindingPrivate *binding;
    Direction direction;
    PlainProperty source;
    PlainProperty target;
    const bool *isDirect; ///< while true, `root` is valid, and the target is its property
    const NS::ObjectReference *root; ///< null if the target's key path has several keys

    /// As hasItsTarget(), but faster for a key path of one key.
    bool stillHasItsTarget() const
    {
        return root && *isDirect ? root->get() == target.object : hasItsTarget();
    }
    /// Whether `target` is still the property to write. Check it after the program's code has run.
    bool hasItsTarget() const;
    /// Writes a value in a QVariant, unless the target is equal or the binding was destroyed.
    void write(const QVariant &value) const;
};

/// The transformers of a binding.
class PELLARVINE_EXPORT Transformers
{
public:
    Transformers() = default;
    Transformers(const Transformers &) = delete;
    Transformers &operator=(const Transformers &) = delete;
    virtual ~Transformers();

    virtual bool transforms(Direction direction) const = 0;
    virtual QVariant transformed(Direction direction, const QVariant &value) const = 0;
    /// Transfers the value without a QVariant and returns true, if the types are known. Called for
    /// directions that have a transformer only.
    virtual bool pass(const Passage &passage) const;
};
/// @endcond

/// A value that a binding could not carry.
struct BindingError
{
    QObject *object; ///< the object that was not written; null if it was destroyed
    QString keyPath; ///< the key path of that object
    QVariant value; ///< the refused value; if a transformer refused it, its argument
    QString message; ///< the text of the exception; empty if the error is over
};

/// The base class of `Binding` and `TransformableBinding`, which describe it.
class PELLARVINE_EXPORT BindingBase : private NS::KeyValueObserver
{
public:
    /// The limit of nested passes of one binding: writing to a side changes it, and starts the next
    /// pass. At the limit a warning names both key paths, and the binding does nothing more until
    /// the outermost pass has returned.
    static constexpr int deepestExchange = 16;

    BindingBase() = delete; ///< not possible: a binding needs two objects
    ~BindingBase() override;

    QObject *first() const; ///< null after it was destroyed
    QObject *second() const; ///< null after it was destroyed
    const QString &firstKeyPath() const; ///< as passed to the constructor
    const QString &secondKeyPath() const; ///< as passed to the constructor
    bool twoWayBinding() const; ///< whether changes of the second side are carried

    /// Sets a function to call, in place of a printed warning, if a side cannot take a value or a
    /// transformer refuses one by throwing an exception derived from std::exception. When the next
    /// value is carried, the function is called again, with an empty message. It may destroy the
    /// binding. It is called on the thread that makes the change.
    ///
    ///     binding.setErrorHandler([label](const Pellarvine::BindingError &error) {
    ///         label->setText(error.message);
    ///     });
    void setErrorHandler(std::function<void(const BindingError &)> handler);

    /// Lets changes wait for the next flush of a group. If both sides change before it, the later
    /// change is carried. The group is not owned. Default: null, each change is carried at once.
    void setGroup(BindingGroup *group);

    /// Called by the key-value layer. Carries the new value to the other side. Does nothing if
    /// object and key path belong to neither side. A null `change` aborts the process.
    void observeValue(const QString &keyPath, QObject *object,
                      const NS::KeyValueChange *change) override;

protected:
    /// Registers the observers and carries the first value.
    BindingBase(NS::ObjectReference object, const QString &with, NS::ObjectReference to,
                const QString &toWith, bool twoWayBinding,
                std::unique_ptr<Transformers> transformers);
    void setFirst(NS::ObjectReference object); ///< public and described in `Binding`
    void setSecond(NS::ObjectReference object); ///< public and described in `Binding`
    const Transformers *transformers() const; ///< null if there are none

private:
    void pathChanged(Registration &path) override;
    BindingPrivate *d; // outlives the binding while a pass runs
};

} // namespace Pellarvine::detail

namespace Pellarvine {

/// The common base class of `Binding` and `TransformableBinding`. One container can hold both:
///
///     std::vector<std::unique_ptr<Pellarvine::AnyBinding>> m_bindings;
using AnyBinding = detail::BindingBase;
using detail::BindingError;

} // namespace Pellarvine
