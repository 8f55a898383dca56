// SPDX-License-Identifier: MIT
#include "Shared/BindingBase.h"

#include "Base/Failure.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/KeyValuePath.h"
#include "Shared/PlainPass.h"
#include "Shared/PropertyBindingWatch.h"

#include <QObject>
#include <QPointer>
#include <QScopeGuard>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

using detail::PlainProperty;
using detail::Registration;
using detail::WatchedPath;

namespace {

// Whether values can be compared with `value`: its type has an ==, or it is an object.
bool canBeCompared(const QVariant &value)
{
    return value.metaType().isEqualityComparable() || object(value);
}

Direction opposite(Direction direction)
{
    return direction == Direction::forward ? Direction::reverse : Direction::forward;
}

} // namespace

struct BindingPrivate
{
    // Reasons to look closer before a pass starts.
    enum Obstacle : quint8 {
        none = 0,
        stopped = 1,
        givesToFirst = 2,
        givesToSecond = 4,
        grouped = 8,
    };

    struct Replacements
    {
        std::optional<NS::ObjectReference> objects[2];
        std::unique_ptr<WatchedPath> paths[2]; // from the objects; made when they are first needed
    };

    // Data that few bindings need: programs may have thousands of bindings.
    struct Extras
    {
        std::function<void(const BindingError &)> errorHandler;
        QVariant refused; // the value that is being carried, for the error handler
        bool hasError = false; // the error handler was called with a message
        QPointer<BindingGroup> group;
        std::function<void(Direction)> carry; // called by the group
        // The value that is being written to each side, if it has another type than the side.
        const QVariant *given[2] = {};
    };

    std::unique_ptr<Transformers> transformers;
    Registration *firstPath = nullptr; // its next() is the second side's; the base class owns both
    std::unique_ptr<Replacements> replacements; // after setFirst() and setSecond()
    int isEqualMethod = -1; // of the second object, if both key paths are the same
    qint8 depth = 0; // the number of nested passes
    bool isTwoWay = false;
    bool transformsForward = false;
    bool transformsReverse = false;
    bool hasOneKeyPath = false;
    quint8 obstacles = none;
    bool isDirect = true; // false after the destructor and after an object was replaced
    bool isGone = false; // the binding was destroyed while a pass runs
    bool hasWarned = false;
    std::unique_ptr<Extras> extras;

    Registration *path(int side) const { return side == 0 ? firstPath : firstPath->next(); }

    QObject *object(int side) const
    {
        if (replacements && replacements->objects[side])
            return replacements->objects[side]->get();
        return path(side)->root();
    }

    Extras &extra()
    {
        if (!extras)
            extras = std::make_unique<Extras>();
        return *extras;
    }

    bool hasErrorHandler() const { return extras && extras->errorHandler; }

    const QString &keyPath(int side) const { return path(side)->keyPath(); }

    // The path to write to. Null if its object was destroyed.
    WatchedPath *target(Direction direction)
    {
        const int side = direction == Direction::forward ? 1 : 0;
        return Q_LIKELY(!replacements) ? path(side) : replacedPath(side);
    }

    Q_NEVER_INLINE WatchedPath *replacedPath(int side)
    {
        if (!replacements->objects[side])
            return path(side);
        auto &other = replacements->paths[side];
        if (!other && object(side))
            other = std::make_unique<WatchedPath>(*replacements->objects[side], keyPath(side),
                                                  WatchedPath::targeting);
        return other.get();
    }

    Q_NEVER_INLINE std::optional<Direction> direction(QObject *object, const QString &path) const
    {
        if (!object || path.isNull())
            return std::nullopt;
        if (path == keyPath(0) && NS::isEqual(object, this->object(0)))
            return Direction::forward;
        if (path == keyPath(1) && NS::isEqual(object, this->object(1)))
            return Direction::reverse;
        return std::nullopt;
    }

    // Whether a pass may start now.
    bool mayPass(Direction direction)
    {
        return Q_LIKELY(depth < BindingBase::deepestExchange && obstacles == none)
               || mayPassObstacles(direction);
    }

    Q_NEVER_INLINE bool mayPassObstacles(Direction direction)
    {
        if (depth == BindingBase::deepestExchange)
            stop();
        return !(obstacles & stopped) && !reportsWhatItWasGiven(direction)
               && !isDeferred(direction);
    }

    bool isDeferred(Direction direction)
    {
        return obstacles & grouped && depth == 0 && extras->group
               && extras->group->defer(this,
                                       [carry = extras->carry, direction] { carry(direction); });
    }

    // Whether the source reports only the value that this binding is writing to it, converted to
    // the source's type: null as "", or 5 as "5". If it were carried back, it would replace null
    // and 5.
    bool reportsWhatItWasGiven(Direction direction)
    {
        const int side = direction == Direction::forward ? 0 : 1;
        WatchedPath *const source = extra().given[side] ? target(opposite(direction)) : nullptr;
        if (!source)
            return false;
        const QVariant held = source->value();
        if (!extra().given[side]->isValid())
            return held.isValid();
        QVariant converted = *extra().given[side];
        return !transforms(direction) && converted.convert(held.metaType())
               && NS::isEqual(converted, held);
    }

    // Functions that most changes do not need are not inlined.
    Q_NEVER_INLINE void stop()
    {
        if (obstacles & stopped)
            return;
        obstacles |= stopped;
        printWarning("Warning: " + name() + " does not settle; stopped after "
                     + std::to_string(BindingBase::deepestExchange) + " exchanges");
    }

    std::string name() const
    {
        return "the binding of " + path(0)->name() + " and " + path(1)->name();
    }

    // The exception that is being handled, with the binding's name.
    ObserverFailure failure() const
    {
        return { std::current_exception(), isGone ? "a binding that has ended since" : name() };
    }

    // Calls the error handler; an empty message ends the error. False if there is no handler.
    Q_NEVER_INLINE bool report(Direction direction, const QString &message)
    {
        if (isGone || !extras || !extras->errorHandler)
            return false;
        const int side = direction == Direction::forward ? 1 : 0;
        extras->hasError = !message.isEmpty();
        const auto handler = extras->errorHandler; // it may be replaced in the call
        handler({ object(side), keyPath(side), std::exchange(extras->refused, {}), message });
        return true;
    }

    bool transforms(Direction direction) const
    {
        return direction == Direction::forward ? transformsForward : transformsReverse;
    }

    void replace(int side, NS::ObjectReference object)
    {
        if (!replacements)
            replacements = std::make_unique<Replacements>();
        isDirect = false;
        replacements->objects[side] = std::move(object);
        path(side)->releaseRoot();
        replacements->paths[side].reset();
    }

    // A pass without QVariants. False if it is not possible.
    bool passPlain(const WatchedPath &source, Direction direction)
    {
        const WatchedPath *const to = target(direction);
        if (!to)
            return false;
        const PlainProperty from = source.plain();
        const PlainProperty onto = to->plainTarget();
        if (!from.object || !onto.object)
            return false;
        if (transforms(direction))
            return transformers->pass({ this, direction, from, onto, &isDirect, to->directRoot() });
        if (from.type != onto.type)
            return false;
        if (Q_LIKELY(from.type == QMetaType::fromType<int>()))
            pass<int>(from, onto);
        else
            passOfAnyType(from, onto);
        return true;
    }

    Q_NEVER_INLINE void passBoxed(Direction direction, Registration &source)
    {
        const WatchedPath *const to = target(direction);
        if (to && to->root())
            passBoxed(direction, source.value());
    }

    void passBoxed(Direction direction, QVariant value)
    {
        if (NS::isNullObject(value))
            value = {};
        if (transforms(direction)) {
            if (extras)
                extras->refused = value;
            value = transformers->transformed(direction, value);
        }
        if (!isGone)
            write(direction, std::move(value));
    }

    void write(Direction direction, QVariant value)
    {
        WatchedPath *const path = target(direction);
        if (!path)
            return;
        const auto object = detail::object(value);
        if (object && !*object && !NS::isNullObject(value))
            value = {};
        const QVariant current = path->value();
        if (!current.isValid()) {
            if (!value.isValid())
                return;
        } else if (!canBeCompared(current)) {
            if (!std::exchange(hasWarned, true))
                printWarning("Warning: " + path->name() + " is not written: its type "
                             + current.typeName() + " has no operator ==");
            return;
        } else if (NS::isEqual(current, value)) {
            return;
        }
        if (extras)
            extras->refused = value;
        if (value.metaType() == current.metaType()) {
            path->setValue(value);
            return;
        }
        const int side = direction == Direction::forward ? 1 : 0;
        const auto leave =
                qScopeGuard([this, side, outer = extra().given[side]] { setGiven(side, outer); });
        setGiven(side, &value);
        path->setValue(value);
    }

    void setGiven(int side, const QVariant *value)
    {
        const quint8 obstacle = side == 0 ? givesToFirst : givesToSecond;
        extra().given[side] = value;
        obstacles = value ? obstacles | obstacle : obstacles & ~obstacle;
    }
};

namespace {

// Counts a pass, and keeps the private data until the outermost pass has returned.
class Pass
{
public:
    explicit Pass(BindingPrivate *passing)
        : d(passing)
    {
        ++d->depth;
    }
    Pass(const Pass &) = delete;
    Pass &operator=(const Pass &) = delete;
    ~Pass()
    {
        if (--d->depth > 0)
            return;
        d->obstacles &= ~BindingPrivate::stopped;
        if (d->isGone)
            delete d;
    }

private:
    BindingPrivate *d;
};

// Adds a hint to the exception: the caller probably wants one direction only.
void observeEditedSide(Registration *path)
{
    try {
        path->observe();
    } catch (const NS::KeyValueException &error) {
        if (error.reason() != NS::KeyValueException::notObservable)
            throw;
        throw NS::KeyValueException(error.reason(), error.className(), error.keyPath(), error.key(),
                                    u"to bind one way, pass twoWayBinding = false"_s);
    }
}

} // namespace

QVariant downcast(const QVariant &value, QMetaType type)
{
    if (value.metaType() == type)
        return value;
    QVariant result = value;
    if (isNumber(type) && isNumber(value.metaType()))
        return result.convert(type) && NS::isEqual(value, result) ? result : QVariant();
    const auto object = detail::object(value);
    if (object && type.flags() & QMetaType::PointerToQObject && result.convert(type)
        && detail::object(result) == object)
        return result;
    return {};
}

bool Passage::hasItsTarget() const
{
    if (binding->isGone)
        return false;
    const WatchedPath *const path = binding->target(direction);
    return path && path->stillEndsAt(target);
}

void Passage::write(const QVariant &value) const
{
    if (!binding->isGone)
        binding->write(direction, value);
}

Transformers::~Transformers() = default;

bool Transformers::pass(const Passage &) const
{
    return false;
}

BindingBase::BindingBase(NS::ObjectReference object, const QString &with, NS::ObjectReference to,
                         const QString &toWith, bool twoWayBinding,
                         std::unique_ptr<Transformers> transformers)
{
#ifndef QT_NO_DEBUG
    if (object.get() && to.get() && object.get()->thread() != to.get()->thread())
        fatalError("Error: the objects of the binding of \"" + with.toStdString() + "\" and \""
                   + toWith.toStdString() + "\" live in two threads");
#endif
    auto owned = std::make_unique<BindingPrivate>();
    d = owned.get();
    d->transformers = std::move(transformers);
    if (d->transformers) {
        d->transformsForward = d->transformers->transforms(Direction::forward);
        d->transformsReverse = d->transformers->transforms(Direction::reverse);
    }
    d->isTwoWay = twoWayBinding;
    d->hasOneKeyPath = with == toWith;
    if (d->hasOneKeyPath && to.get())
        d->isEqualMethod = isEqualMethod(to.get());
    Registration *const secondPath = Registration::addTarget(std::move(to), this, toWith);
    d->firstPath = Registration::add(std::move(object), this, with,
                                     NS::KeyValueObservingOptions::newValue);
    try {
        BindingBase::pathChanged(*d->firstPath);
    } catch (const ObserverFailure &failure) {
        std::rethrow_exception(failure.cause);
    }
    if (twoWayBinding)
        observeEditedSide(secondPath);
    static_cast<void>(owned.release());
}

BindingBase::~BindingBase()
{
    if (d->extras && d->extras->group)
        d->extras->group->forget(d);
    d->isGone = true;
    d->isDirect = false;
    if (d->depth == 0)
        delete d;
}

QObject *BindingBase::first() const
{
    return d->object(0);
}

const QString &BindingBase::firstKeyPath() const
{
    return d->keyPath(0);
}

QObject *BindingBase::second() const
{
    return d->object(1);
}

const QString &BindingBase::secondKeyPath() const
{
    return d->keyPath(1);
}

void BindingBase::setErrorHandler(std::function<void(const BindingError &)> handler)
{
    d->extra().errorHandler = std::move(handler);
}

void BindingBase::setGroup(BindingGroup *group)
{
    BindingPrivate::Extras &extra = d->extra();
    if (extra.group == group)
        return;
    if (extra.group)
        extra.group->forget(d);
    extra.group = group;
    extra.carry = [this](Direction direction) {
        const int side = direction == Direction::forward ? 0 : 1;
        if (d->object(side))
            pathChanged(*d->path(side));
    };
    d->obstacles = group ? d->obstacles | BindingPrivate::grouped
                         : d->obstacles & ~BindingPrivate::grouped;
}

bool BindingBase::twoWayBinding() const
{
    return d->isTwoWay;
}

void BindingBase::setFirst(NS::ObjectReference object)
{
    d->replace(0, std::move(object));
}

void BindingBase::setSecond(NS::ObjectReference object)
{
    d->replace(1, std::move(object));
}

const Transformers *BindingBase::transformers() const
{
    return d->transformers.get();
}

void BindingBase::pathChanged(Registration &path)
{
    Direction direction = &path == d->firstPath ? Direction::forward : Direction::reverse;
    if (Q_UNLIKELY(d->replacements)) {
        const auto found = d->direction(path.root(), path.keyPath());
        if (!found)
            return;
        direction = *found;
    } else if (direction == Direction::reverse && d->hasOneKeyPath
               && isEqual(path.root(), d->firstPath->root(), d->isEqualMethod)) {
        direction = Direction::forward;
    }
    if (!d->mayPass(direction))
        return;
    BindingPrivate *const passing = d; // the binding may end in the pass
    const Pass pass(passing);
    try {
#ifndef QT_NO_DEBUG
        const PropertyBindingWatch watch(passing->target(direction));
#endif
        const bool isPlain = !passing->hasErrorHandler() && passing->passPlain(path, direction);
        if (!isPlain)
            passing->passBoxed(direction, path);
        if (Q_UNLIKELY(passing->extras && passing->extras->hasError))
            passing->report(direction, {});
    } catch (const NS::KeyValueException &error) {
        if (!passing->report(direction, QString::fromUtf8(error.what())))
            throw; // its text names the class and the key path
    } catch (const std::exception &error) {
        if (!passing->report(direction, QString::fromUtf8(error.what())))
            throw passing->failure();
    } catch (...) {
        throw passing->failure();
    }
}

void BindingBase::observeValue(const QString &keyPath, QObject *object,
                               const NS::KeyValueChange *change)
{
    const auto direction = d->direction(object, keyPath);
    if (!direction)
        return;
    if (!change)
        fatalError("Error: a binding was notified without a change");
    if (!d->mayPass(*direction))
        return;
    const Pass pass(d);
    d->passBoxed(*direction, change->newValue);
}

} // namespace Pellarvine::detail
