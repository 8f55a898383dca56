// SPDX-License-Identifier: MIT
#include "Scenes/NibConnector.h"

#include "Base/MethodLookup.h"
#include "Controls/NSChoices.h"
#include "Controls/NSListBinding.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/NSKeyValueBinding.h"
#include "Scenes/NibOwnerCheck.h"
#include "Scenes/NibTexts.h"

#include <QMetaObject>
#include <QMetaProperty>
#include <QWidget>

#include <stdexcept>
#include <utility>
#include <variant>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

NibFault unknownKeyPath(const QString &keyPath, const NS::KeyValueException &error)
{
    return { NS::NibError::unknownKeyPath, keyPath, QString::fromUtf8(error.what()) };
}

} // namespace

NibConnector::NibConnector(QObject *owner, QHash<QString, QObject *> objects, QString fileName,
                           NibTexts *texts)
    : m_owner(owner)
    , m_objects(std::move(objects))
    , m_fileName(std::move(fileName))
    , m_texts(texts)
{ }

template <typename Step>
void NibConnector::run(const Entry &entry, Step step) const
{
    try {
        step();
    } catch (const NibFault &fault) {
        const XmlPlace &place = entry.text.place;
        throw NS::NibError(fault.reason, m_fileName, place.line, place.column,
                           entry.object ? entry.object->objectName() : QString(), fault.name,
                           fault.message);
    }
}

void NibConnector::add(QObject *object, const QString &property, const NibText &value)
{
    const QList<NibText> texts = nibEntries(value);
    for (const NibText &text : texts) {
        const Entry entry { object, text };
        run(entry, [&] {
            const NibEntry parsed = nibEntry(property, text.text);
            if (m_checksOwnerEntries && beginsAtOwner(parsed))
                checkOwnerEntry(object, parsed, m_ownerClass);
            else
                std::visit([&](const auto &said) { take(entry, said); }, parsed);
        });
    }
}

void NibConnector::checkOwnerEntries(const QMetaObject *ownerClass)
{
    m_checksOwnerEntries = true;
    m_ownerClass = ownerClass;
}

void NibConnector::take(const Entry &entry, const NibOutlet &outlet)
{
    m_outlets.append({ entry, path(entry, outlet.path) });
}

void NibConnector::take(const Entry &entry, const NibBinding &binding)
{
    m_bindings.append({ entry, binding.key, path(entry, binding.path), binding.options });
}

void NibConnector::take(const Entry &entry, const NibAction &action)
{
    const Path way = path(entry, action.receiver);
    QObject *receiver = way.root;
    if (!way.keyPath.isEmpty()) {
        try {
            receiver = object(NS::valueForKeyPath(way.root, way.keyPath)).value_or(nullptr);
        } catch (const NS::KeyValueException &error) {
            throw unknownKeyPath(way.keyPath, error);
        }
        if (!receiver)
            throw NibFault { NS::NibError::unknownKeyPath, way.keyPath,
                             u"there is no object at \"%1.%2\""_s.arg(action.receiver.root,
                                                                      way.keyPath) };
    }
    const auto [signal, slot] = signalAndSlot(entry.object->metaObject(), action.signal,
                                              receiver->metaObject(), action.slot);
    m_actions.append({ entry, signal, receiver, slot });
}

void NibConnector::take(const Entry &entry, const NibConstraint &said)
{
    auto *const first = qobject_cast<QWidget *>(entry.object);
    if (!first)
        throw NibFault { NS::NibError::unknownObject, entry.text.text,
                         u"only a widget can have constraints"_s };
    const auto constraint = NS::LayoutConstraint::make(
            first, said.firstAttribute, said.relation,
            said.secondItem.isEmpty() ? nullptr : item(entry, said.secondItem),
            said.secondAttribute, said.multiplier, said.constant);
    constraint->setPriority(said.priority);
    m_constraints.append({ entry, constraint });
}

QWidget *NibConnector::item(const Entry &entry, const QString &name) const
{
    auto *const self = static_cast<QWidget *>(entry.object.get());
    QObject *const found = name == "superview"_L1 ? self->parentWidget()
                           : name == "self"_L1    ? self
                                                  : m_objects.value(name);
    auto *const widget = qobject_cast<QWidget *>(found);
    if (!widget)
        throw NibFault { NS::NibError::unknownObject, name,
                         u"there is no widget \"%1\" (constraint \"%2\")"_s.arg(name,
                                                                                entry.text.text) };
    return widget;
}

NibConnector::Path NibConnector::path(const Entry &entry, const NibPath &path) const
{
    const QString &root = path.root;
    if (root == "owner"_L1 && !m_owner)
        throw NibFault { NS::NibError::unknownObject, root,
                         u"there is no owner, which \"%1\" needs"_s.arg(entry.text.text) };
    QObject *const object = root == "owner"_L1  ? m_owner
                            : root == "self"_L1 ? entry.object.get()
                                                : m_objects.value(root);
    if (!object)
        throw NibFault { NS::NibError::unknownObject, root,
                         u"there is no object \"%1\", which \"%2\" needs"_s.arg(root,
                                                                                entry.text.text) };
    return { object, path.keyPath };
}

void NibConnector::connect()
{
    try {
        for (const Outlet &outlet : std::as_const(m_outlets)) {
            if (outlet.object && outlet.path.root)
                run(outlet, [&] { setOutlet(outlet); });
        }
        for (const ValueBinding &binding : std::as_const(m_bindings)) {
            if (binding.object && binding.path.root)
                run(binding, [&] { bindValue(binding); });
        }
    } catch (...) {
        undo();
        throw;
    }
    for (const Action &action : std::as_const(m_actions)) {
        if (action.object && action.receiver)
            QObject::connect(action.object, action.signal, action.receiver, action.slot);
    }
    activateConstraints();
}

void NibConnector::activateConstraints() const
{
    QList<std::shared_ptr<NS::LayoutConstraint>> made;
    for (const Constraint &constraint : m_constraints)
        made.append(constraint.made);
    NS::LayoutConstraint::activateConstraints(made);
    for (const Constraint &constraint : m_constraints) {
        if (!m_checksOwnerEntries || constraint.made->isActive())
            continue;
        run(constraint, [&] {
            throw NibFault { NS::NibError::malformed, constraint.text.text,
                             u"the constraint \"%1\" contradicts others, which are required too"_s
                                     .arg(constraint.text.text) };
        });
    }
}

void NibConnector::setOutlet(const Outlet &outlet)
{
    const Path &path = outlet.path;
    try {
        // A null object on the path would ignore the outlet.
        const qsizetype dot = path.keyPath.lastIndexOf(u'.');
        if (dot >= 0 && !NS::valueForKeyPath(path.root, path.keyPath.first(dot)).isValid())
            throw NibFault { NS::NibError::unknownKeyPath, path.keyPath,
                             u"there is no object at \"%1\" (outlet \"%2\")"_s.arg(
                                     path.keyPath.first(dot), outlet.text.text) };
        NS::setValueForKeyPath(path.root, path.keyPath, QVariant::fromValue(outlet.object.get()));
    } catch (const NS::KeyValueException &error) {
        throw unknownKeyPath(path.keyPath, error);
    }
    m_undo.append([root = path.root, keyPath = path.keyPath] {
        if (root)
            NS::setValueForKeyPath(root, keyPath, {});
    });
}

void NibConnector::bindList(const ValueBinding &binding)
{
    auto *const widget = qobject_cast<QWidget *>(binding.object);
    QObject *const model = binding.path.root;
    const QString &keyPath = binding.path.keyPath;
    const NibBindingOptions &options = binding.options;
    try {
        if (binding.key == "choices"_L1)
            NS::bindChoices(widget, model, keyPath, { options.title, options.tag });
        else
            NS::bind(widget, model, keyPath, { { options.title } });
    } catch (const std::invalid_argument &error) {
        throw NibFault { NS::NibError::unknownKeyPath, binding.key,
                         u"%1 (binding \"%2\")"_s.arg(QString::fromUtf8(error.what()),
                                                      binding.text.text) };
    }
}

void NibConnector::bindValue(const ValueBinding &binding)
{
    try {
        if (isListBinding(binding.object, binding.key))
            return bindList(binding);
        NS::bind(binding.object.get(), binding.key, binding.path.root.get(), binding.path.keyPath,
                 bindingOptions(binding.options));
    } catch (const NS::KeyValueException &error) {
        const bool isObserved = error.keyPath() == binding.path.keyPath;
        NibFault fault = unknownKeyPath(isObserved ? binding.path.keyPath : binding.key, error);
        fault.message += u" (binding \"%1\")"_s.arg(binding.text.text);
        throw fault;
    }
    m_undo.append([object = binding.object, key = binding.key] {
        if (object)
            NS::unbind(object, key);
    });
    // Otherwise the value of the file would be set again when the language changes.
    const QMetaObject *const type = binding.object->metaObject();
    const bool isUserProperty = binding.key == "value"_L1 && type->indexOfProperty("value") < 0;
    const QByteArray name =
            isUserProperty ? QByteArray(type->userProperty().name()) : binding.key.toUtf8();
    if (m_texts)
        m_texts->remove(binding.object, name);
    binding.object->setProperty(QByteArray("_q_notr_" + name).constData(), {});
}

void NibConnector::undo()
{
    while (!m_undo.isEmpty())
        m_undo.takeLast()();
}

std::pair<QMetaMethod, QMetaMethod> signalAndSlot(const QMetaObject *sender, const QString &signal,
                                                  const QMetaObject *receiver, const QString &slot)
{
    const QList<QMetaMethod> signalsFound = signalsMatching(sender, signal);
    if (signalsFound.isEmpty())
        throw NibFault { NS::NibError::unknownMethod, signal,
                         u"%1 has no signal \"%2\""_s.arg(QString::fromUtf8(sender->className()),
                                                          signal) };
    const QList<QMetaMethod> slotsFound = methodsMatching(receiver, slot);
    if (slotsFound.isEmpty())
        throw NibFault { NS::NibError::unknownMethod, slot,
                         u"%1 has no slot \"%2\""_s.arg(QString::fromUtf8(receiver->className()),
                                                        slot) };

    std::pair<QMetaMethod, QMetaMethod> best;
    int most = -1;
    bool isAmbiguous = false;
    for (const QMetaMethod &to : slotsFound) {
        for (const QMetaMethod &from : signalsFound) {
            if (!QMetaObject::checkConnectArgs(from, to))
                continue;
            const int arguments = to.parameterCount();
            if (arguments > most) {
                best = { from, to };
                most = arguments;
                isAmbiguous = false;
            } else if (arguments == most) {
                // A signal with fewer arguments is the same one with a default left out.
                isAmbiguous = isAmbiguous || to.parameterTypes() != best.second.parameterTypes()
                              || from.parameterCount() == best.first.parameterCount();
                if (from.parameterCount() > best.first.parameterCount())
                    best = { from, to };
            }
        }
    }
    if (most < 0)
        throw NibFault { NS::NibError::unknownMethod, slot,
                         u"%1's slot \"%2\" takes other arguments than the signal \"%3\" has"_s.arg(
                                 QString::fromUtf8(receiver->className()), slot, signal) };
    if (isAmbiguous)
        throw NibFault { NS::NibError::unknownMethod, slot,
                         u"%1 has several slots \"%2\" for the signal \"%3\": add their "
                         "arguments in parentheses"_s.arg(QString::fromUtf8(receiver->className()),
                                                          slot, signal) };
    return best;
}

} // namespace Pellarvine::detail
