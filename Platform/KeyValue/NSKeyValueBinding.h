// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>
#include <pellarvine/Platform/KeyValueException.h>
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
/// Main thread only, as the controls are.
namespace NS {

/// The binding's name that stands for what a control is about.
inline const QString NSValueBinding = QStringLiteral("value");

/// What infoForBinding() tells.
inline const QString NSObservedObjectKey = QStringLiteral("NSObservedObject");
/// Likewise.
inline const QString NSObservedKeyPathKey = QStringLiteral("NSObservedKeyPath");

/// Binds a property of `object` to the property that `keyPath` leads to from `observed`. `binding`
/// is the property's name; "value", in a class without a property of that name, is its USER
/// property: the text of a QLineEdit, whether a QCheckBox is checked.
///
/// The model wins at first: its value is written to `object`. From then on each of its changes is,
/// and each change of the property of `object` is written back, unless that property does not tell
/// of its changes (the text of a QLabel) or the model's cannot be written. Values are converted as
/// by setValueForKeyPath(); nothing is written that is equal already (NS::isEqual). A value that
/// does not fit is printed as a warning then, and stays where it is.
///
/// A binding of that name that was there is replaced. Throws `KeyValueException`, with nothing
/// bound, for a key that one of the objects lacks or that `object` cannot write, for a model that
/// does not tell of its changes, and for a first value that does not fit. `observed` is kept alive
/// if it is given by a shared pointer; else, once it is gone, the binding is silent.
PELLARVINE_EXPORT void bind(QObject *object, const QString &binding,
                            const ObjectReference &observed, const QString &keyPath);

/// Does nothing if there is no such binding. The property keeps its value.
PELLARVINE_EXPORT void unbind(QObject *object, const QString &binding);

/// The model's object under `NSObservedObjectKey`, a null pointer if it is gone, and the key path
/// under `NSObservedKeyPathKey`. Empty if there is no such binding.
PELLARVINE_EXPORT QVariantMap infoForBinding(const QObject *object, const QString &binding);

} // namespace NS
