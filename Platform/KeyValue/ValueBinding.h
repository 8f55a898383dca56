// SPDX-License-Identifier: MIT
// Not API: a control's property that shows, and edits, a property of a model.
#pragma once

#include "KeyValue/BindingFormat.h"
#include "KeyValue/ChangeObserver.h"
#include "KeyValue/ControlBindings.h"
#include "KeyValue/KeyValueObserving.h"
#include "KeyValue/KeyValueSubscription.h"
#include "KeyValue/NSBindingOptions.h"
#include "KeyValue/ObjectReference.h"

#include <QLocale>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace Pellarvine::detail {

class Registration;

/// A binding that NS::bind() makes. Changes that the control reports while the model's value is
/// written to it are not written back: showing a model never changes it. All other changes that the
/// control reports are edits of the user.
class ValueBinding final : public ControlBinding,
                           public std::enable_shared_from_this<ValueBinding>,
                           private Listener
{
public:
    ValueBinding(QObject *control, QString key, NS::ObjectReference model, QString keyPath,
                 NS::BindingOptions options);
    ~ValueBinding() override;

    void start() override;
    void end() override;
    void unmark() override;
    QVariantMap info() const override;
    void siblingShown() override;
    void localeChanged() override;
    bool lacksSelection() const override { return m_lacksSelection && m_disables; }
    bool commit() override;
    void discard() override;

private:
    class FocusFilter;
    class Pass;

    bool isUsersValue(const Access &access) const;
    bool observesControl();
    void observeEditing();
    bool isOver() const { return m_hasEnded || !m_control || !m_model.get(); }
    ControlBindings &siblings() const { return ControlBindings::made(m_control); }

    // From the model to the control.
    void show();
    bool keepsEdit(const QVariant &value, const QObject *holder);
    void setLacksSelection(bool isLacking);
    QVariant shown(QVariant value);
    void put(const QVariant &value);
    bool takesAlready(const QVariant &display);

    // From the control to the model.
    void edited();
    void fired(const Slot *) override { finishEditing(); }
    void focusEntered();
    void showAgain();
    void finishEditing();
    bool carry();
    QMetaType enteredNumberType() const;
    QString fault(const QVariant &value) const;
    bool refuse(const QString &message);
    void sendEditingEvents();
    void setMessage(const QString &message);
    void showMessage() const;

    QPointer<QObject> m_control;
    QString m_key;
    NS::ObjectReference m_model;
    QString m_keyPath;
    NS::BindingOptions m_options;
    std::optional<BindingFormat> m_format;

    bool m_hasEnded = false;
    bool m_isTwoWay = false;
    bool m_disables = false; // the control, while it lacks a selection
    bool m_showsNumbersAsText = false;
    int m_depth = 0; // the number of nested passes
    int m_shows = 0; // counted to notice a later call of show()

    Registration *m_path = nullptr; // to the model's value; m_modelObserver owns it
    QPointer<QObject> m_holder; // the last object on the path, when its value was shown
    QString m_holderKey;
    QPointer<QObject> m_informed; // the holder that got an EditingEvent which is not over
    QVariant m_value; // the model's value, as it was shown or written last
    const QVariant *m_carried = nullptr; // the value that is being written to the model
    bool m_isEdited = false; // the control holds the user's edit, perhaps only its spelling: "1."
    bool m_isPending = false; // that edit is not in the model
    QMetaType m_numberType; // of the number that the control shows as text; invalid if it does not
    QLocale m_locale; // of that text
    QVariant m_display; // the value that was written to the control last
    QVariant m_held; // the control's value after that
    bool m_lacksSelection = false;
    QString m_placeholder; // the control's own, while noSelectionPlaceholder takes its place
    QString m_message; // the fault of the edit; empty for a valid one
    QString m_description; // the control's own accessible description, while it is the message

    ChangeObserver m_modelObserver;
    ChangeObserver m_controlObserver;
    Subscription m_editingFinished;
    std::unique_ptr<FocusFilter> m_focusFilter;
};

} // namespace Pellarvine::detail
