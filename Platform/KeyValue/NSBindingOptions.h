// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QString>
#include <QVariant>

#include <functional>

namespace NS {

/// How a binding of `NS::bind` carries values. What is not set works as without options:
///
///     NS::bind(portField, u"text"_s, server, u"port"_s,
///              { .commit = NS::BindingOptions::whenEditingFinishes, .required = true });
///     NS::bind(saveButton, u"enabled"_s, server, u"isBusy"_s, { .negate = true });
struct BindingOptions
{
    /// When an edit reaches the model.
    enum Commit {
        onEachChange, ///< at once, with every key
        /// When Return is pressed or the control loses the keyboard focus (its editingFinished()
        /// signal if it has one), and by commitEditing(). An edit that is not finished is discarded
        /// when the control shows another object. Edits that change nothing are not written.
        whenEditingFinishes,
    };

    /// Which way values go, after the first.
    enum Direction {
        /// Both ways if the control's property reports its changes and the model's can be written.
        /// A USER property without a change signal is bound one way with a warning.
        automatic,
        toControl, ///< the control only shows the model
        bothWays, ///< bind() throws if the control's property does not report its changes
    };

    /// Takes a value or no value, and returns either.
    using Transformer = std::function<QVariant(const QVariant &)>;

    Commit commit = onEachChange; ///< Default: onEachChange.
    Direction direction = automatic; ///< Default: automatic.

    /// The control shows the opposite of a Boolean. Default: false.
    bool negate = false;

    /// From the model to the control; after `negate`.
    Transformer transformer = {};

    /// From the control to the model; before `negate`. To refuse a value, it throws an exception
    /// that is derived from std::exception: what() is the message for the user, in UTF-8.
    Transformer reverseTransformer = {};

    /// Is given the value that is about to be written to the model, and returns what is wrong with
    /// it: a message for the user, or an empty text.
    std::function<QString(const QVariant &)> validate = {};

    /// Refuses no value and text without a visible character. Default: false.
    bool required = false;

    /// Is told why an edit was refused, and with an empty text when the control holds a value that
    /// fits again. It may call the control's deleteLater(), but not destroy it: the control may
    /// still be working on the key that was pressed.
    ///
    /// A refused edit stays in the control and the model keeps its value. A widget gets the dynamic
    /// property `invalid`, for style sheets (`QLineEdit[invalid="true"]`), and the message as its
    /// accessible description, for as long as it holds that edit. Without this function and
    /// `popover`, and unless `validate` or `required` refused the value, a warning is printed too.
    std::function<void(const QString &message)> onInvalid = {};

    /// Shows the message of a refused edit in a bubble above the control too, as
    /// `Pellarvine::PopoverMessage` does. It is shown again when the user presses Return, and by
    /// commitEditing(), which shows that of the first control that refuses. Default: false.
    bool popover = false;

    /// How a text shows a value while the control does not have the keyboard focus, as printf()
    /// has it: "%.1f °C". One conversion out of d, i, x, X, o, e, E, f, F, g, G and s, with flags,
    /// width and precision. With the focus, and to edit, the value is shown without it.
    QString format = {};

    /// What an editable control shows, as its placeholder, while an object on the way of the key
    /// path is null; of a control that is only to be read, the text. Default: empty.
    QString noSelectionPlaceholder = {};
};

} // namespace NS
