// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/KeyValueException.h>
#include <pellarvine/Platform/NSBindingOptions.h>
#include <pellarvine/Platform/ObjectReference.h>

#include <QString>
#include <QVariantMap>

QT_FORWARD_DECLARE_CLASS(QObject)

/// @file
/// Value bindings: a control's property that shows, and edits, a property of a model. They belong
/// to the control and end with it; interface files make them too.
///
///     NS::bind(nameField, NS::NSValueBinding, account, u"owner.name"_s);
///     NS::bind(saveButton, u"enabled"_s, account, u"isEdited"_s);
///     NS::unbind(saveButton, u"enabled"_s);
///
/// Main thread only, as the controls are: a model that lives in another thread is a fatal error in
/// debug builds.
namespace NS {

/// The binding's name that stands for what a control is about.
inline const QString NSValueBinding = QStringLiteral("value");

/// What infoForBinding() tells.
inline const QString NSObservedObjectKey = QStringLiteral("NSObservedObject");
/// Likewise.
inline const QString NSObservedKeyPathKey = QStringLiteral("NSObservedKeyPath");

/// Binds a property of `object` to the property that `keyPath` leads to from `observed`. `binding`
/// is the property's name; "value", in a class without a property of that name, is its USER
/// property: the text of a QLineEdit, whether a QCheckBox is checked. Where Qt
/// declares none, it is the `selectedDate` of a QCalendarWidget and the `checked` of a QAction.
///
/// The model wins at first: its value is written to `object`. From then on each of its changes is,
/// and each edit of the property of `object` is written back, unless that property does not report
/// its changes (the text of a QLabel) or the model's cannot be written. Values are converted as by
/// setValueForKeyPath(); nothing is written that is equal already (NS::isEqual). An edit that does
/// not fit stays in the control, which is marked as `BindingOptions::onInvalid` says, and a warning
/// is printed.
///
/// Showing a model never changes it. What the control reports while a value is written to it, by
/// this or another binding of the control, is no edit: a QLineEdit that cuts the text to its
/// maxLength leaves the model's text whole until its user types. A value that does not fit is shown
/// as well as the control can, with a warning.
///
/// While an object on the way of the key path is null, or has been destroyed, there is nothing to
/// edit: the control is empty (at -1 if the property is an index), and a widget whose property goes
/// both ways is disabled, whatever a binding of its `enabled` says. See
/// BindingOptions::noSelectionPlaceholder.
///
/// A binding of that name that was there is replaced. Throws `KeyValueException`, with nothing
/// bound, for a key that one of the objects lacks or that `object` cannot write, and for a model
/// that does not report its changes. `observed` is kept alive if it is given by a shared pointer;
/// else, once it is gone, the binding is silent.
PELLARVINE_EXPORT void bind(QObject *object, const QString &binding,
                            const ObjectReference &observed, const QString &keyPath);

/// The same with options. Also throws `std::invalid_argument` for a format that is none.
PELLARVINE_EXPORT void bind(QObject *object, const QString &binding,
                            const ObjectReference &observed, const QString &keyPath,
                            const BindingOptions &options);

/// Does nothing if there is no such binding. The property keeps its value.
PELLARVINE_EXPORT void unbind(QObject *object, const QString &binding);

/// Writes the edits of `object` and its descendants that are not in their models yet. False if one
/// was refused, or if a value that has not been edited fails `required` or `validate`: its control
/// is marked. For a Save button, whose shortcut leaves the focus where it is:
///
///     if (NS::commitEditing(this))
///         m_document->save();
PELLARVINE_EXPORT bool commitEditing(QObject *object);

/// The model's object under `NSObservedObjectKey`, a null pointer if it is gone, and the key path
/// under `NSObservedKeyPathKey`. Empty if there is no such binding.
PELLARVINE_EXPORT QVariantMap infoForBinding(const QObject *object, const QString &binding);

} // namespace NS
