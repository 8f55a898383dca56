// SPDX-License-Identifier: MIT
#include "KeyValue/ValueBinding.h"

#include "Base/Failure.h"
#include "KeyValue/BindingValue.h"
#include "KeyValue/ChangeSignal.h"
#include "KeyValue/EditingEvent.h"
#include "KeyValue/KeyValueAccess.h"
#include "KeyValue/KeyValueCoding.h"
#include "KeyValue/KeyValueEquality.h"
#include "KeyValue/KeyValuePath.h"
#include "KeyValue/NSKeyValueBinding.h"
#include "KeyValue/NumberText.h"
#include "KeyValue/WidgetAccess.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEvent>
#include <QMetaProperty>
#include <QScopeGuard>

#include <stdexcept>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

QMetaProperty property(const QObject *object, const QString &key)
{
    const QMetaObject *const metaObject = object->metaObject();
    return metaObject->property(metaObject->indexOfProperty(key.toUtf8().constData()));
}

bool hasFocus(const QObject *control)
{
    return control->property("focus").toBool();
}

bool isNoDate(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDate:
        return !value.toDate().isValid();
    case QMetaType::QTime:
        return !value.toTime().isValid();
    case QMetaType::QDateTime:
        return !value.toDateTime().isValid();
    default:
        return !value.isValid();
    }
}

// The name of the control's placeholder property, or null.
const char *placeholderProperty(const QObject *control)
{
    for (const char *const name : { "placeholderText", "placeholderString" }) {
        if (control->metaObject()->indexOfProperty(name) >= 0)
            return name;
    }
    return nullptr;
}

} // namespace

// Reports when the control gets and loses the keyboard focus.
class ValueBinding::FocusFilter : public QObject
{
public:
    explicit FocusFilter(ValueBinding *binding)
        : m_binding(binding)
    {
        binding->m_control->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        try {
            if (event->type() == QEvent::FocusIn)
                m_binding->focusEntered();
            else if (event->type() == QEvent::FocusOut)
                m_binding->finishEditing();
        } catch (const std::exception &error) {
            printWarning(error);
        }
        return false;
    }

private:
    ValueBinding *m_binding;
};

// Counts a pass and keeps the binding alive until it returns.
class ValueBinding::Pass
{
public:
    explicit Pass(ValueBinding *binding)
        : m_binding(binding->shared_from_this())
        , m_isPossible(binding->m_depth < deepestExchange)
    {
        if (m_binding->m_depth++ == deepestExchange)
            printWarning("Warning: the binding of "
                         + std::string(m_binding->m_control->metaObject()->className()) + '.'
                         + m_binding->m_key.toStdString() + " to "
                         + m_binding->m_keyPath.toStdString() + " does not settle");
    }
    Pass(const Pass &) = delete;
    Pass &operator=(const Pass &) = delete;
    ~Pass() { --m_binding->m_depth; }

    bool isPossible() const { return m_isPossible; }

private:
    const std::shared_ptr<ValueBinding> m_binding;
    const bool m_isPossible;
};

ValueBinding::ValueBinding(QObject *control, QString key, NS::ObjectReference model,
                           QString keyPath, NS::BindingOptions options)
    : m_control(control)
    , m_key(std::move(key))
    , m_model(std::move(model))
    , m_keyPath(std::move(keyPath))
    , m_options(std::move(options))
    , m_modelObserver([this](const QVariant &) { show(); })
    , m_controlObserver([this](const QVariant &) { edited(); })
{ }

ValueBinding::~ValueBinding() = default;

void ValueBinding::start()
{
    const Access access = findProperty(m_control, m_key, m_key);
    if (!access.isWritable)
        throw NS::KeyValueException(NS::KeyValueException::readOnly,
                                    m_control->metaObject()->className(), m_key, m_key);
    if (!m_options.format.isEmpty()) {
        m_format = BindingFormat::parsed(m_options.format);
        if (!m_format)
            throw std::invalid_argument("\"" + m_options.format.toStdString()
                                        + "\" is not a format with one conversion");
    }
    QObject *const model = m_model.get();
    requireOneThread(m_control, model, m_keyPath);
    m_path = Registration::add(model, &m_modelObserver, m_keyPath,
                               NS::KeyValueObservingOptions::newValue);
    m_isTwoWay = m_options.direction != NS::BindingOptions::toControl
                 && isWritable(model, m_keyPath) && observesControl();
    m_disables = m_isTwoWay && m_control->isWidgetType() && isUsersValue(access);
    m_showsNumbersAsText = showsNumbersAsText(m_control, m_key);
    if (m_showsNumbersAsText && m_format)
        siblings().watchLocale();
    if (m_isTwoWay)
        observeEditing();
    show();
}

void ValueBinding::end()
{
    m_hasEnded = true;
    sendEditingEvents();
}

void ValueBinding::unmark()
{
    setLacksSelection(false);
    if (m_control)
        setMessage({});
}

// Whether the user changes the property in the widget. Not a property of QWidget itself, such as a
// window's title; of dynamic ones, the selections of NS::bindChoices().
bool ValueBinding::isUsersValue(const Access &access) const
{
    if (access.index < 0)
        return m_key == "selectedObject"_L1 || m_key == "selectedTag"_L1;
    const QMetaProperty bound = m_control->metaObject()->property(access.index);
    return qstrcmp(bound.enclosingMetaObject()->className(), "QWidget") != 0;
}

// False if the control does not report its changes, and the binding does not need them.
bool ValueBinding::observesControl()
{
    try {
        NS::addObserver(m_control, &m_controlObserver, m_key,
                        NS::KeyValueObservingOptions::newValue);
        return true;
    } catch (const NS::KeyValueException &error) {
        if (error.reason() != NS::KeyValueException::notObservable
            || m_options.direction == NS::BindingOptions::bothWays)
            throw;
        // The USER property is what the control edits, so that is probably a mistake.
        if (property(m_control, m_key).isUser())
            printWarning(std::string("Warning: ") + error.what()
                         + ": it is bound one way; see NS::registerChangeSignal");
        return false;
    }
}

void ValueBinding::observeEditing()
{
    const int finished = m_control->metaObject()->indexOfSignal("editingFinished()");
    const bool waits = m_options.commit == NS::BindingOptions::whenEditingFinishes;
    if (finished >= 0)
        m_editingFinished = Subscription::toSignal(m_control, finished, this);
    if (m_format || (waits && finished < 0))
        m_focusFilter = std::make_unique<FocusFilter>(this);
}

QVariantMap ValueBinding::info() const
{
    return { { NS::NSObservedObjectKey, QVariant::fromValue(m_model.get()) },
             { NS::NSObservedKeyPathKey, m_keyPath } };
}

void ValueBinding::siblingShown()
{
    if (isOver() || m_isPending
        || holdsAlready(remembered(NS::valueForKeyPath(m_control, m_key)), m_display))
        return;
    m_isEdited = false;
    show();
}

void ValueBinding::show()
{
    if (isOver())
        return;
    const Pass pass(this);
    if (!pass.isPossible())
        return;
    const auto leave = qScopeGuard([this] { sendEditingEvents(); });
    const int turn = ++m_shows;
    // The program's functions may change the model, which is shown in the call then.
    const auto isOvertaken = [this, turn] {
        return isOver() || turn != m_shows;
    };
    const QVariant value = m_path->value();
    const WatchedPath::Place place = m_path->place();
    if (keepsEdit(value, place.object))
        return;
    m_value = remembered(value);
    m_holder = place.object;
    m_holderKey = place.key;
    m_isEdited = false;
    m_isPending = false;
    setMessage({});
    if (isOvertaken())
        return;
    setLacksSelection(place.isMissing);
    if (isOvertaken())
        return;
    const QVariant display = shown(value);
    if (isOvertaken() || (m_key == "enabled"_L1 && siblings().keepEnabled(display))
        || takesAlready(display))
        return;
    siblings().show(this, [this, &display] { put(display); });
}

// Whether the control keeps the user's text. It does so if the text means `value`, and if the edit
// is not finished and the model's value has not changed.
bool ValueBinding::keepsEdit(const QVariant &value, const QObject *holder)
{
    if (!m_isEdited || holder != m_holder)
        return false;
    if (m_carried && isAs(*m_carried, value)) {
        m_value = remembered(value);
        return true;
    }
    return NS::isEqual(remembered(value), m_value);
}

void ValueBinding::setLacksSelection(bool isLacking)
{
    if (std::exchange(m_lacksSelection, isLacking) == isLacking)
        return;
    const char *const placeholder = placeholderProperty(m_control);
    if (m_isTwoWay && placeholder && !m_options.noSelectionPlaceholder.isEmpty()) {
        if (isLacking)
            m_placeholder = m_control->property(placeholder).toString();
        m_control->setProperty(placeholder,
                               isLacking ? m_options.noSelectionPlaceholder : m_placeholder);
    }
    if (!isOver())
        siblings().selectionChanged();
}

// The model's value as the control shows it.
QVariant ValueBinding::shown(QVariant value)
{
    if (m_lacksSelection && !m_isTwoWay && !m_options.noSelectionPlaceholder.isEmpty())
        return m_options.noSelectionPlaceholder;
    if (m_options.negate && value.isValid())
        value = !value.toBool();
    if (m_options.transformer)
        value = m_options.transformer(value);
    if (isOver())
        return {};
    const bool isNumber = m_showsNumbersAsText && isWrittenAsNumber(value.metaType());
    m_numberType = isNumber ? value.metaType() : QMetaType();
    if (m_format && !hasFocus(m_control))
        return m_format->apply(value, controlLocale(m_control));
    if (!isNumber)
        return value;
    siblings().watchLocale();
    m_locale = controlLocale(m_control);
    return numberText(value, m_locale);
}

void ValueBinding::put(const QVariant &value)
{
    // The index of a list without a selection is -1, not 0.
    QVariant written = !value.isValid() && isSelection(m_key) ? QVariant(-1) : value;
    try {
        NS::setValueForKeyPath(m_control, m_key, written);
    } catch (const NS::KeyValueException &error) {
        if (error.reason() != NS::KeyValueException::notConvertible)
            throw;
        printWarning("Warning: " + std::string(error.what()) + ", shown for \""
                     + m_keyPath.toStdString() + '"');
        written = nearest(written, property(m_control, m_key).metaType());
        NS::setValueForKeyPath(m_control, m_key, written);
    }
    // A combo box ignores a text that it does not have.
    if (!isOver() && !takesAlready(written) && m_key == "currentText"_L1
        && m_control->inherits("QComboBox"))
        m_control->setProperty("currentIndex", -1);
    // A date editor ignores an invalid date: it would go on showing that of another object.
    if (!isOver() && isNoDate(written) && m_control->inherits("QDateTimeEdit")) {
        for (const auto &[key, earliest] :
             { std::pair("date", "minimumDate"), std::pair("time", "minimumTime"),
               std::pair("dateTime", "minimumDateTime") }) {
            if (m_control && m_key == QLatin1String(key))
                m_control->setProperty(key, m_control->property(earliest));
        }
    }
    if (!isOver())
        m_held = remembered(NS::valueForKeyPath(m_control, m_key));
}

// Remembers the value to show. True if the control shows it already.
bool ValueBinding::takesAlready(const QVariant &display)
{
    const QVariant held = NS::valueForKeyPath(m_control, m_key);
    m_display = remembered(display);
    m_held = remembered(held);
    return holdsAlready(held, display);
}

void ValueBinding::edited()
{
    if (isOver() || siblings().isShowing())
        return;
    // A spin box reports an unchanged value when Return is pressed.
    const QVariant held = remembered(NS::valueForKeyPath(m_control, m_key));
    if (NS::isEqual(held, m_held))
        return;
    m_held = m_display = held;
    m_isEdited = true;
    m_isPending = true;
    if (m_options.commit == NS::BindingOptions::onEachChange)
        carry();
    else
        sendEditingEvents();
}

void ValueBinding::focusEntered()
{
    if (m_format)
        showAgain();
}

void ValueBinding::showAgain()
{
    if (isOver() || m_isPending)
        return;
    m_isEdited = false;
    show();
}

void ValueBinding::localeChanged()
{
    const QLocale former = std::exchange(m_locale, m_control ? controlLocale(m_control) : m_locale);
    if (isOver() || !m_isPending) {
        showAgain();
        return;
    }
    // The edit was typed in the former locale: "1,5" may be 15 in the new one.
    const QMetaType type = enteredNumberType();
    if (!type.isValid())
        return;
    const QString text = NS::valueForKeyPath(m_control, m_key).toString();
    const QVariant number = numberFromText(text, type, former);
    if (number.isValid())
        siblings().show(this, [&] { put(numberText(number, m_locale)); });
}

void ValueBinding::finishEditing()
{
    if (isOver())
        return;
    const Pass pass(this);
    const bool isRefused = m_options.commit == NS::BindingOptions::onEachChange;
    if (m_isPending && (isRefused || !carry())) {
        if (!isOver() && hasFocus(m_control)) // Return was pressed
            showMessage();
        return;
    }
    if (isOver())
        return;
    // Shows the model's spelling: "1." becomes "1".
    if (m_isEdited || m_format) {
        m_isEdited = false;
        show();
    }
}

bool ValueBinding::commit()
{
    if (isOver() || !m_isTwoWay || m_lacksSelection)
        return true;
    const Pass pass(this);
    if (m_control->isWidgetType() && widgetAccess())
        widgetAccess()->finishTyping(m_control);
    if (isOver())
        return true;
    if (!m_isPending) {
        const QString message = fault(m_path->value());
        if (message.isEmpty() || refuse(message))
            return true;
    } else if (carry()) {
        finishEditing();
        return true;
    }
    if (!isOver())
        showMessage();
    return false;
}

void ValueBinding::discard()
{
    if (isOver() || !m_isEdited)
        return;
    m_isEdited = false;
    show();
}

// Writes the edit to the model. False if it is refused; the control then keeps it.
bool ValueBinding::carry()
{
    const Pass pass(this);
    const auto end = qScopeGuard([this] { sendEditingEvents(); });
    if (!pass.isPossible() || m_lacksSelection)
        return true;
    QVariant value = NS::valueForKeyPath(m_control, m_key);
    QVariant unread; // the text, if it is not the number that is expected
    if (const QMetaType type = enteredNumberType(); type.isValid()) {
        const QVariant number = numberFromText(value.toString(), type, controlLocale(m_control));
        (number.isValid() ? value : unread) = number.isValid() ? number : value;
    }
    try {
        if (m_options.reverseTransformer)
            value = m_options.reverseTransformer(value);
    } catch (const std::exception &error) {
        return refuse(QString::fromUtf8(error.what()));
    }
    if (m_options.negate && value.isValid())
        value = !value.toBool();
    const QString message = fault(value);
    if (!message.isEmpty())
        return refuse(message);
    if (isOver())
        return true;
    const QVariant current = m_path->value();
    bool isLimited = false;
    const bool isUnread =
            unread.isValid() && value == unread && isWrittenAsNumber(current.metaType());
    if (isUnread || !holdsAlready(current, value)) {
        const QVariant *const outer = std::exchange(m_carried, &value);
        const auto leave = qScopeGuard([this, outer] { m_carried = outer; });
        try {
            if (isUnread) {
                const WatchedPath::Place place = m_path->place();
                throw NS::KeyValueException(
                        NS::KeyValueException::notConvertible,
                        place.object->metaObject()->className(), m_keyPath, place.key,
                        u"\"%1\" is no %2 in the locale %3"_s.arg(
                                unread.toString(), QString::fromLatin1(current.typeName()),
                                controlLocale(m_control).name()));
            }
            m_path->setValue(value);
            isLimited = !isOver() && !isAs(value, m_path->value());
        } catch (const NS::KeyValueException &error) {
            if (error.reason() != NS::KeyValueException::notConvertible)
                throw;
            if (!m_options.onInvalid && !m_options.popover)
                printWarning(error);
            return refuse(conversionMessage(current.metaType()));
        }
    }
    if (isOver())
        return true;
    m_isPending = false;
    m_value = remembered(m_path->value());
    setMessage({});
    // A setter that limits a value to the present one reports no change. A text is left alone while
    // it is typed.
    if (isLimited && !m_showsNumbersAsText && !isOver()) {
        m_isEdited = false;
        show();
    }
    return true;
}

// The type of the number that the control's text is to be, or an invalid one. Without a
// reverseTransformer it is the model's type; with one, the type of the number that was shown.
QMetaType ValueBinding::enteredNumberType() const
{
    if (!m_showsNumbersAsText)
        return {};
    const QMetaType type = m_options.reverseTransformer ? m_numberType : m_path->value().metaType();
    return isWrittenAsNumber(type) ? type : QMetaType();
}

// The message for a value that the model must not get. Empty for a valid value.
QString ValueBinding::fault(const QVariant &value) const
{
    if (m_options.required && isBlank(value))
        return QCoreApplication::translate("NS::Binding", "Enter a value.");
    if (!m_options.validate)
        return {};
    try {
        return m_options.validate(value);
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    }
}

bool ValueBinding::refuse(const QString &message)
{
    if (!isOver())
        setMessage(message);
    return false;
}

// Sends an EditingEvent to the model when a pending edit begins, and when it ends.
void ValueBinding::sendEditingEvents()
{
    QObject *const holder = m_isPending && !m_carried && !m_hasEnded ? m_holder.data() : nullptr;
    if (holder == m_informed)
        return;
    const auto self = shared_from_this();
    const auto tell = [this](QObject *object, bool isEditing) {
        EditingEvent event(m_holderKey, this, isEditing);
        QCoreApplication::sendEvent(object, &event);
    };
    const QPointer<QObject> former = std::exchange(m_informed, holder);
    if (former)
        tell(former, false);
    if (holder && holder == m_informed)
        tell(holder, true);
}

// Sets the message, and marks the control while the message is not empty.
void ValueBinding::setMessage(const QString &message)
{
    if (message == m_message)
        return;
    const bool wasValid = m_message.isEmpty();
    m_message = message;
    const bool isValid = message.isEmpty();
    QObject *const control = m_control;
    const QPointer<QObject> guard(control);
    if (control->isWidgetType()) {
        if (wasValid)
            m_description = control->property("accessibleDescription").toString();
        control->setProperty("accessibleDescription", isValid ? m_description : message);
        if (guard && isValid != wasValid) {
            control->setProperty("invalid", isValid ? QVariant() : QVariant(true));
            if (guard && widgetAccess())
                widgetAccess()->restyle(control);
        }
    }
    if (guard)
        showMessage();
    if (guard && m_options.onInvalid)
        m_options.onInvalid(message);
}

// Several calls in a row with one message show one bubble: see PopoverMessage.cpp.
void ValueBinding::showMessage() const
{
    if (m_options.popover && m_control->isWidgetType() && messageBubble())
        messageBubble()(m_control, m_message);
}

} // namespace Pellarvine::detail
