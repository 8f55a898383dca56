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
/// Value bindings. A binding lets a property of a control show and edit a property of a model:
///
///     NS::bind(nameField, NS::NSValueBinding, account, u"owner.name"_s);
///     NS::bind(saveButton, u"enabled"_s, account, u"isEdited"_s);
///     NS::unbind(saveButton, u"enabled"_s);
///
/// The control owns its bindings and ends them when it is destroyed. Interface files can contain
/// bindings, too. Main thread only: if the model lives in another thread than the control, a debug
/// build of the library aborts the process, and a release build does not check.
namespace NS {

/// The name of the binding of a control's value, see bind().
inline const QString NSValueBinding = QStringLiteral("value");

/// The key of the model in infoForBinding().
inline const QString NSObservedObjectKey = QStringLiteral("NSObservedObject");
/// The key of the key path in infoForBinding().
inline const QString NSObservedKeyPathKey = QStringLiteral("NSObservedKeyPath");

/// Binds a property of the control `object` to the property of the model `observed` that `keyPath`
/// leads to. `binding` is the name of the control's property. In a class that has no property
/// "value", that name stands for the USER property, such as the text of a QLineEdit, for
/// `selectedDate` in a QCalendarWidget, and for `checked` in a QAction.
///
/// First the model's value is written to the control. From then on each change of the model is
/// written to the control, and each edit of the user to the model. Edits are not written if the
/// control's property does not report its changes (the text of a QLabel) or the model's property is
/// read-only. Values are converted as by setValueForKeyPath(); a text of a widget shows and reads
/// numbers by its locale(). A side that has an equal value (NS::isEqual) is not written.
/// An edit that the model refuses stays in the control, which is marked
/// (`BindingOptions::onInvalid`). If the model's setter takes another value than it is given, the
/// control shows that value, a text field at the latest when editing finishes.
///
/// Showing a model never changes it: if the control alters the value that it is given, that is no
/// edit. A QLineEdit that cuts a text to its maxLength leaves the model's text whole until its user
/// types. If the type of the control's property cannot hold a value, the property gets the nearest
/// one, and a warning is printed.
///
/// While an object on the key path is null or has been destroyed, the control is empty, or at -1 if
/// the property is an index. A date editor shows its earliest date then, and for an invalid date:
/// give it a specialValueText. A widget whose edits are written to the model is then disabled, even
/// if a binding of its `enabled` says otherwise. See BindingOptions::noSelectionPlaceholder.
///
/// An earlier binding of the same name is replaced. A model that is given by a shared pointer is
/// kept alive. Another model may be destroyed first; the binding then does nothing more. Throws
/// `KeyValueException` if one of the objects lacks its key, if the control's property is read-only,
/// and if the model does not report its changes; nothing is bound then.
PELLARVINE_EXPORT void bind(QObject *object, const QString &binding,
                            const ObjectReference &observed, const QString &keyPath);

/// The same with options. Also throws `std::invalid_argument` for a malformed `format`.
PELLARVINE_EXPORT void bind(QObject *object, const QString &binding,
                            const ObjectReference &observed, const QString &keyPath,
                            const BindingOptions &options);

/// Ends a binding. The control's property keeps its value. Does nothing if there is no such
/// binding.
PELLARVINE_EXPORT void unbind(QObject *object, const QString &binding);

/// Writes all edits of `object` and its descendants that are not in their models yet, and checks
/// the other values with `required` and `validate`. Returns false if a value is refused; its
/// control is marked. Call it before saving, because a Save action does not move the keyboard
/// focus:
///
///     if (NS::commitEditing(this))
///         m_document->save();
PELLARVINE_EXPORT bool commitEditing(QObject *object);

/// The model under `NSObservedObjectKey`, which is a null pointer after the model was destroyed,
/// and the key path under `NSObservedKeyPathKey`. Empty if there is no such binding.
PELLARVINE_EXPORT QVariantMap infoForBinding(const QObject *object, const QString &binding);

} // namespace NS
