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

// Not API: what Binding and TransformableBinding share. Their users read the public part of
// BindingBase.

namespace Pellarvine::detail {

/// @cond internal
struct BindingPrivate;

enum class Direction {
    forward, ///< from first to second
    reverse,
};

/// `value` as a value of `type`, invalid if it is none: a checked downcast, of objects and of
/// numbers too (3.0 is an int, 3.7 is not).
PELLARVINE_EXPORT QVariant downcast(const QVariant &value, QMetaType type);

/// One value on its way from the side that has changed to the other.
struct PELLARVINE_EXPORT Passage
{
    BindingPrivate *binding;
    Direction direction;
    PlainProperty source;
    PlainProperty target;
    const bool *isDirect; ///< while true, `root` is whole, and the target is its property
    const NS::ObjectReference *root; ///< null if the target is found another way

    /// hasItsTarget() at a fraction of its cost.
    bool stillHasItsTarget() const
    {
        return root && *isDirect ? root->get() == target.object : hasItsTarget();
    }

    /// Whether `target` is still what it was. To be asked after a function of the program has run.
    bool hasItsTarget() const;

    /// Writes a boxed value if the target differs; nothing if the binding is gone.
    void write(const QVariant &value) const;
};

/// The functions that a binding applies on the way.
class PELLARVINE_EXPORT Transformers
{
public:
    Transformers() = default;
    Transformers(const Transformers &) = delete;
    Transformers &operator=(const Transformers &) = delete;
    virtual ~Transformers();

    virtual bool transforms(Direction direction) const = 0;
    virtual QVariant transformed(Direction direction, const QVariant &value) const = 0;

    /// Does the whole passage without boxing the values, if their types are known. Asked for
    /// directions that transform.
    virtual bool pass(const Passage &passage) const;
};

/// @endcond

/// A value that a binding could not carry.
struct BindingError
{
    QObject *object; ///< that was to be written; null if it is gone
    QString keyPath; ///< of that object
    QVariant value; ///< what it could not take; a value that a transformer refused, as it came
    QString message; ///< of the exception, in UTF-8; empty once a value was carried again
};

/// What `Binding` and `TransformableBinding` have in common; not made by itself.
class PELLARVINE_EXPORT BindingBase : private NS::KeyValueObserver
{
public:
    /// How many passes of one binding may run within each other: a pass writes a side, whose change
    /// brings the next pass. The pass behind the last is not made. Instead a warning names both key
    /// paths, and the binding does nothing more until the outermost pass has returned.
    static constexpr int deepestExchange = 16;

    BindingBase() = delete; ///< there is nothing to bind
    ~BindingBase() override;

    /// Null once an object that is only watched has been destroyed.
    QObject *first() const;
    QObject *second() const; ///< likewise
    const QString &firstKeyPath() const; ///< as it was given
    const QString &secondKeyPath() const; ///< as it was given
    bool twoWayBinding() const; ///< changes of the second side are carried too

    /// Calls a function, instead of printing a warning, for a value that the side to be written
    /// cannot take, and for whatever is derived from std::exception and thrown by a transformer:
    /// that is how a transformer refuses a value. The function is called again, with an empty
    /// message, when a value has been carried after an error. It may destroy the binding.
    ///
    ///     binding.setErrorHandler([label](const Pellarvine::BindingError &error) {
    ///         label->setText(error.message);
    ///     });
    void setErrorHandler(std::function<void(const BindingError &)> handler);

    /// Leaves it to a group when changes are carried; null, the default, carries each at once. The
    /// group is not owned. If both sides change in between, the later change is carried.
    void setGroup(BindingGroup *group);

    /// Called by the key-value layer. Carries the change's new value to the other side; ignores
    /// objects and key paths that are neither side's. No change at all stops the process.
    void observeValue(const QString &keyPath, QObject *object,
                      const NS::KeyValueChange *change) override;

protected:
    /// Registers, and makes the first pass.
    BindingBase(NS::ObjectReference object, const QString &with, NS::ObjectReference to,
                const QString &toWith, bool twoWayBinding,
                std::unique_ptr<Transformers> transformers);

    void setFirst(NS::ObjectReference object); ///< for `Binding`, which says how
    void setSecond(NS::ObjectReference object); ///< likewise
    const Transformers *transformers() const; ///< null if there are none

private:
    void pathChanged(Registration &path) override;

    BindingPrivate *d; // outlives the binding while a pass runs
};

} // namespace Pellarvine::detail

namespace Pellarvine {

/// What `Binding` and `TransformableBinding` both are, so that one container can hold them:
///
///     std::vector<std::unique_ptr<Pellarvine::AnyBinding>> m_bindings;
using AnyBinding = detail::BindingBase;

using detail::BindingError;

} // namespace Pellarvine
