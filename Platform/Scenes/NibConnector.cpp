// SPDX-License-Identifier: MIT
#include "Scenes/NibConnector.h"

#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/NSKeyValueBinding.h"

#include <QMetaObject>
#include <QRegularExpression>
#include <QStringList>
#include <QWidget>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

const QString outletsProperty = u"outlets"_s;
const QString bindingsProperty = u"bindings"_s;
const QString actionsProperty = u"actions"_s;
const QString constraintsProperty = u"constraints"_s;

QString className(const QObject *object)
{
    return QString::fromUtf8(object->metaObject()->className());
}

// The pattern as it stands, from end to end.
QRegularExpression pattern(const QString &text)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(text));
}

QString message(const NS::KeyValueException &error)
{
    return QString::fromUtf8(error.what());
}

// Methods of that name, or of that name and those arguments.
QList<QMetaMethod> methods(const QMetaObject *metaObject, const QString &text, bool areSignals)
{
    const QByteArray name = text.trimmed().toUtf8();
    const QByteArray signature =
            name.contains('(') ? QMetaObject::normalizedSignature(name.constData()) : QByteArray();
    QList<QMetaMethod> found;
    // The ones of the class itself first, in the order of their declaration.
    for (int i = 0; i < metaObject->methodCount(); ++i) {
        const QMetaMethod method = metaObject->method(i);
        if (areSignals && method.methodType() != QMetaMethod::Signal)
            continue;
        if (method.methodType() == QMetaMethod::Constructor)
            continue;
        if (signature.isEmpty() ? method.name() == name : method.methodSignature() == signature)
            found.append(method);
    }
    return found;
}

const std::pair<QLatin1StringView, NS::LayoutAttribute> attributes[] = {
    { "left"_L1, NS::LayoutAttribute::left },
    { "right"_L1, NS::LayoutAttribute::right },
    { "top"_L1, NS::LayoutAttribute::top },
    { "bottom"_L1, NS::LayoutAttribute::bottom },
    { "leading"_L1, NS::LayoutAttribute::leading },
    { "trailing"_L1, NS::LayoutAttribute::trailing },
    { "width"_L1, NS::LayoutAttribute::width },
    { "height"_L1, NS::LayoutAttribute::height },
    { "centerX"_L1, NS::LayoutAttribute::centerX },
    { "centerY"_L1, NS::LayoutAttribute::centerY },
    { "firstBaseline"_L1, NS::LayoutAttribute::firstBaseline },
    { "lastBaseline"_L1, NS::LayoutAttribute::lastBaseline },
};

enum class Axis {
    x,
    y,
    dimension,
};

Axis axis(NS::LayoutAttribute attribute)
{
    switch (attribute) {
    case NS::LayoutAttribute::width:
    case NS::LayoutAttribute::height:
        return Axis::dimension;
    case NS::LayoutAttribute::left:
    case NS::LayoutAttribute::right:
    case NS::LayoutAttribute::leading:
    case NS::LayoutAttribute::trailing:
    case NS::LayoutAttribute::centerX:
        return Axis::x;
    default:
        return Axis::y;
    }
}

std::optional<NS::LayoutAttribute> attribute(QStringView name)
{
    for (const auto &[text, value] : attributes) {
        if (name == text)
            return value;
    }
    return std::nullopt;
}

} // namespace

NibConnector::NibConnector(QObject *owner, QHash<QString, QObject *> objects, ErrorMaker error)
    : m_owner(owner)
    , m_objects(std::move(objects))
    , m_error(std::move(error))
{ }

bool NibConnector::holdsEntries(const QString &property)
{
    return property == outletsProperty || property == bindingsProperty
           || property == actionsProperty || property == constraintsProperty;
}

void NibConnector::add(QObject *object, const QString &property, const NibText &entries)
{
    const QStringList lines = entries.text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString &line = lines[i];
        const QString text = line.trimmed();
        if (text.isEmpty())
            continue;
        Entry entry { object, { text, 0, 0 } };
        if (entries.line > 0) {
            const auto indent = int(line.indexOf(text));
            entry.place.line = entries.line + int(i);
            entry.place.column = (i == 0 ? entries.column : 1) + indent;
        }
        if (property == outletsProperty)
            addOutlet(entry);
        else if (property == bindingsProperty)
            addBinding(entry);
        else if (property == actionsProperty)
            addAction(entry);
        else if (property == constraintsProperty)
            addConstraint(entry);
    }
}

// owner.nameField
void NibConnector::addOutlet(const Entry &entry)
{
    static const QRegularExpression sentence = pattern(uR"((\w+(?:\.\w+)+))"_s);
    const auto match = sentence.match(entry.place.text);
    if (!match.hasMatch())
        fail(entry, NS::NibError::malformed, entry.place.text,
             u"an outlet has the form \"owner.nameField\", which \"%1\" has not"_s.arg(
                     entry.place.text));
    m_outlets.append({ entry, path(entry, match.captured(1)) });
}

// text = owner.account.name
void NibConnector::addBinding(const Entry &entry)
{
    static const QRegularExpression sentence = pattern(uR"((\w+)\s*=\s*(\w+(?:\.\w+)+))"_s);
    const auto match = sentence.match(entry.place.text);
    if (!match.hasMatch())
        fail(entry, NS::NibError::malformed, entry.place.text,
             u"a binding has the form \"text = owner.name\", which \"%1\" has not"_s.arg(
                     entry.place.text));
    m_bindings.append({ entry, match.captured(1), path(entry, match.captured(2)) });
}

// clicked -> owner.document.save
void NibConnector::addAction(const Entry &entry)
{
    static const QRegularExpression sentence = pattern(
            uR"((\w+(?:\s*\([^()]*\))?)\s*->\s*(\w+(?:\.\w+)*)\.(\w+(?:\s*\([^()]*\))?))"_s);
    const auto match = sentence.match(entry.place.text);
    if (!match.hasMatch())
        fail(entry, NS::NibError::malformed, entry.place.text,
             u"an action has the form \"clicked -> owner.save\", which \"%1\" has not"_s.arg(
                     entry.place.text));
    const QString target = match.captured(2);
    const Path way = path(entry, target);
    QObject *receiver = way.root;
    if (!way.keyPath.isEmpty()) {
        try {
            receiver = object(NS::valueForKeyPath(way.root, way.keyPath)).value_or(nullptr);
        } catch (const NS::KeyValueException &error) {
            fail(entry, NS::NibError::unknownKeyPath, way.keyPath, message(error));
        }
        if (!receiver)
            fail(entry, NS::NibError::unknownKeyPath, way.keyPath,
                 u"there is no object at \"%1\""_s.arg(target));
    }
    try {
        const auto [signal, slot] =
                signalAndSlot(entry.object, match.captured(1), receiver, match.captured(3));
        m_actions.append({ entry, signal, receiver, slot });
    } catch (const MissingMethod &error) {
        fail(entry, NS::NibError::unknownMethod, error.name, error.message);
    }
}

// leading = superview.leading + 8, width <= 0.5 * panel.width @750, height >= 20
void NibConnector::addConstraint(const Entry &entry)
{
    static const QRegularExpression sentence = pattern(
            uR"((\w+)\s*(<=|>=|==?)\s*(?:(?:([\d.]+)\s*\*\s*)?([A-Za-z_]\w*)\.(\w+)\s*(?:([+-])\s*([\d.]+))?|([+-]?[\d.]+))\s*(?:@\s*([\d.]+))?)"_s);
    const auto match = sentence.match(entry.place.text);
    bool isNumber = match.hasMatch();
    const auto number = [&](int group, double otherwise) {
        const QString text = match.captured(group);
        bool isValid = true;
        const double value = text.isEmpty() ? otherwise : text.toDouble(&isValid);
        isNumber = isNumber && isValid;
        return value;
    };
    const double multiplier = number(3, 1.0);
    const double sign = match.captured(6) == "-"_L1 ? -1.0 : 1.0;
    const bool isConstant = match.captured(4).isEmpty();
    const double constant = isConstant ? number(8, 0.0) : sign * number(7, 0.0);
    const double priority = number(9, NS::LayoutPriority::required);
    if (!isNumber)
        fail(entry, NS::NibError::malformed, entry.place.text,
             u"a constraint has the form \"leading = superview.leading + 8\" or \"width >= 120\", "
             "which \"%1\" has not"_s.arg(entry.place.text));
    const auto firstAttribute = attribute(match.captured(1));
    const auto secondAttribute =
            isConstant ? NS::LayoutAttribute::notAnAttribute : attribute(match.captured(5));
    for (const auto &[value, group] :
         { std::pair(firstAttribute, 1), std::pair(secondAttribute, 5) }) {
        if (!value)
            fail(entry, NS::NibError::unknownKeyPath, match.captured(group),
                 u"there is no attribute \"%1\" (constraint \"%2\")"_s.arg(match.captured(group),
                                                                           entry.place.text));
    }
    const bool isDimension = axis(*firstAttribute) == Axis::dimension;
    if (isConstant ? !isDimension : axis(*firstAttribute) != axis(*secondAttribute))
        fail(entry, NS::NibError::malformed, entry.place.text,
             u"\"%1\" compares what cannot be compared"_s.arg(entry.place.text));
    auto *const first = qobject_cast<QWidget *>(entry.object);
    if (!first)
        fail(entry, NS::NibError::unknownObject, entry.place.text,
             u"only a widget can have constraints"_s);
    const QString relation = match.captured(2);
    const auto constraint = NS::LayoutConstraint::make(
            first, *firstAttribute,
            relation == "<="_L1   ? NS::LayoutRelation::lessThanOrEqual
            : relation == ">="_L1 ? NS::LayoutRelation::greaterThanOrEqual
                                  : NS::LayoutRelation::equal,
            isConstant ? nullptr : item(entry, match.captured(4)), *secondAttribute,
            isConstant ? 0.0 : multiplier, constant);
    constraint->setPriority(priority);
    m_constraints.append(constraint);
}

// What "superview", "self" or a name stands for in a constraint.
QWidget *NibConnector::item(const Entry &entry, const QString &name) const
{
    auto *const self = static_cast<QWidget *>(entry.object);
    QObject *const found = name == "superview"_L1 ? self->parentWidget()
                           : name == "self"_L1    ? self
                                                  : m_objects.value(name);
    auto *const widget = qobject_cast<QWidget *>(found);
    if (!widget)
        fail(entry, NS::NibError::unknownObject, name,
             u"there is no widget \"%1\" (constraint \"%2\")"_s.arg(name, entry.place.text));
    return widget;
}

// "owner", "self" or an object's name, and the keys behind it.
NibConnector::Path NibConnector::path(const Entry &entry, const QString &text) const
{
    const QString root = text.section(u'.', 0, 0);
    const QString keyPath = text.section(u'.', 1);
    if (root == "owner"_L1 && !m_owner)
        fail(entry, NS::NibError::unknownObject, root,
             u"there is no owner, which \"%1\" needs"_s.arg(entry.place.text));
    QObject *const object = root == "owner"_L1  ? m_owner
                            : root == "self"_L1 ? entry.object
                                                : m_objects.value(root);
    if (!object)
        fail(entry, NS::NibError::unknownObject, root,
             u"there is no object \"%1\", which \"%2\" needs"_s.arg(root, entry.place.text));
    return { object, keyPath };
}

void NibConnector::connect()
{
    try {
        for (const Outlet &outlet : std::as_const(m_outlets))
            setOutlet(outlet);
        for (const ValueBinding &binding : std::as_const(m_bindings))
            bindValue(binding);
    } catch (...) {
        undo();
        throw;
    }
    for (const Action &action : std::as_const(m_actions)) {
        if (action.receiver)
            QObject::connect(action.object, action.signal, action.receiver, action.slot);
    }
    NS::LayoutConstraint::activateConstraints(m_constraints);
}

void NibConnector::setOutlet(const Outlet &outlet)
{
    const Path &path = outlet.path;
    try {
        // A null on the way would swallow the outlet.
        const qsizetype dot = path.keyPath.lastIndexOf(u'.');
        if (dot >= 0 && !NS::valueForKeyPath(path.root, path.keyPath.first(dot)).isValid())
            fail(outlet, NS::NibError::unknownKeyPath, path.keyPath,
                 u"there is no object at \"%1\" (outlet \"%2\")"_s.arg(path.keyPath.first(dot),
                                                                       outlet.place.text));
        NS::setValueForKeyPath(path.root, path.keyPath, QVariant::fromValue(outlet.object));
    } catch (const NS::KeyValueException &error) {
        fail(outlet, NS::NibError::unknownKeyPath, path.keyPath, message(error));
    }
    m_undo.append([root = QPointer<QObject>(path.root), keyPath = path.keyPath] {
        if (root)
            NS::setValueForKeyPath(root, keyPath, {});
    });
}

void NibConnector::bindValue(const ValueBinding &binding)
{
    try {
        NS::bind(binding.object, binding.key, binding.path.root, binding.path.keyPath);
    } catch (const NS::KeyValueException &error) {
        fail(binding, NS::NibError::unknownKeyPath,
             error.keyPath() == binding.path.keyPath ? binding.path.keyPath : binding.key,
             u"%1 (binding \"%2\")"_s.arg(message(error), binding.place.text));
    }
    m_undo.append([object = QPointer<QObject>(binding.object), key = binding.key] {
        if (object)
            NS::unbind(object, key);
    });
    // What the file has for this property would come back when the language changes.
    binding.object->setProperty(QByteArray("_q_notr_" + binding.key.toUtf8()).constData(), {});
}

void NibConnector::undo()
{
    while (!m_undo.isEmpty())
        m_undo.takeLast()();
}

void NibConnector::fail(const Entry &entry, NS::NibError::Reason reason, const QString &name,
                        const QString &message) const
{
    throw m_error(reason, entry.place, entry.object->objectName(), name, message);
}

std::pair<QMetaMethod, QMetaMethod> signalAndSlot(const QObject *sender, const QString &signal,
                                                  const QObject *receiver, const QString &slot)
{
    const QList<QMetaMethod> signalsFound = methods(sender->metaObject(), signal, true);
    if (signalsFound.isEmpty())
        throw MissingMethod { signal, u"%1 has no signal \"%2\""_s.arg(className(sender), signal) };
    const QList<QMetaMethod> slotsFound = methods(receiver->metaObject(), slot, false);
    if (slotsFound.isEmpty())
        throw MissingMethod { slot, u"%1 has no slot \"%2\""_s.arg(className(receiver), slot) };

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
        throw MissingMethod {
            slot, u"%1's slot \"%2\" takes other arguments than the signal \"%3\" has"_s.arg(
                          className(receiver), slot, signal)
        };
    if (isAmbiguous)
        throw MissingMethod { slot,
                              u"%1 has several slots \"%2\" for the signal \"%3\": add their "
                              "arguments in parentheses"_s.arg(className(receiver), slot, signal) };
    return best;
}

void awaken(QObject *object)
{
    const int index = object->metaObject()->indexOfMethod("awakeFromNib()");
    if (index < 0)
        return;
    void *arguments[] = { nullptr };
    QMetaObject::metacall(object, QMetaObject::InvokeMetaMethod, index, arguments);
}

} // namespace Pellarvine::detail
