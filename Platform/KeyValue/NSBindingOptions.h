// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/Global.h>

#include <QString>
#include <QVariant>

#include <functional>

namespace NS {

/// Options of a binding that `NS::bind` makes:
///
///     NS::bind(portField, u"text"_s, server, u"port"_s,
///              { .commit = NS::BindingOptions::whenEditingFinishes, .required = true });
///     NS::bind(saveButton, u"enabled"_s, server, u"isBusy"_s, { .negate = true });
///
/// The binding keeps a copy of the options, functions included, until it ends. The functions are
/// called on the main thread. An exception from `transformer` is passed on by `NS::bind` if it
/// comes from the first call; a later one is caught and printed as a warning.
struct BindingOptions
{
    /// When an edit reaches the model.
    enum Commit {
        onEachChange, ///< at once, with each key that is typed
        /// On the control's signal editingFinished(), which comes when Return is pressed and when
        /// the keyboard focus leaves; in a control without that signal, when the focus leaves.
        /// commitEditing() writes the edit too. If the path leads to another object before that,
        /// the edit is discarded.
        whenEditingFinishes,
    };

    /// In which direction values are carried after the first one.
    enum Direction {
        /// Both ways if the control's property reports its changes and the model's can be written.
        /// A USER property without a change signal is bound one way with a warning.
        automatic,
        toControl, ///< the control shows the model and does not change it
        bothWays, ///< bind() throws if the control's property does not report its changes
    };

    /// Takes a value or no value, and returns either.
    using Transformer = std::function<QVariant(const QVariant &)>;

    Commit commit = onEachChange; ///< Default: onEachChange.
    Direction direction = automatic; ///< Default: automatic.

    /// The control shows the opposite of a Boolean. Default: false.
    bool negate = false;

    /// Converts the model's value for the control. Applied after `negate`. Default: none.
    Transformer transformer = {};

    /// Converts the control's value for the model. Applied before `negate`. If the control shows a
    /// number as text, it gets that number, or the text if that is no number. To refuse a value, it
    /// throws an exception derived from std::exception; what() is the message for the user, in
    /// UTF-8. Default: none.
    Transformer reverseTransformer = {};

    /// Checks a value before it is written to the model. Returns a message for the user if it
    /// refuses the value, otherwise an empty text. An exception refuses it too, as in
    /// `reverseTransformer`. Default: none.
    std::function<QString(const QVariant &)> validate = {};

    /// Refuses an empty value: an invalid QVariant, null, and a text of white space only. Default:
    /// false.
    bool required = false;

    /// Called with a message when an edit is refused, and with an empty text when the control holds
    /// a valid value again, or the binding ends before the control. It must not delete the control,
    /// which may still be handling the key that was pressed; it may call deleteLater().
    ///
    /// A refused edit stays in the control, and the model keeps its value. As long as the control
    /// holds that edit, a widget has the dynamic property `invalid`, for style sheets
    /// (`QLineEdit[invalid="true"]`), and the message as its accessible description. A value that
    /// cannot be converted to the model's type is also printed as a warning, unless there is this
    /// function or `popover`.
    std::function<void(const QString &message)> onInvalid = {};

    /// Shows the message of a refused edit in a bubble above the control, as
    /// `Pellarvine::PopoverMessage` does. Return shows it again. commitEditing() shows the message
    /// of the first control that refuses. Default: false.
    bool popover = false;

    /// A printf() format for a control that shows text: "%.1f °C". It has exactly one conversion,
    /// which is d, i, x, X, o, e, E, f, F, g, G or s, with flags, width and precision. Numbers are
    /// written by the widget's locale(); the flag ' groups their digits. While the control has the
    /// keyboard focus, it shows the value without the format. Default: empty, no format.
    QString format = {};

    /// Shown while an object on the key path is null: as the placeholder of a control that edits
    /// the value, as the value of a control that only shows it. Default: empty.
    QString noSelectionPlaceholder = {};
};

} // namespace NS
