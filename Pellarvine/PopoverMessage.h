// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS {
class TextField;
}

namespace Pellarvine {

/// A short message in a bubble above a view, for a hint or an error in an input:
///
///     PopoverMessage::showMessage(tr("There is a folder of that name."), nameField);
///     PopoverMessage::showMarkupMessage(tr("**Saved** to the desktop"), exportButton);
///
/// The text wraps at 250 device-independent pixels. Screen readers read it out. The next click or
/// key elsewhere closes the message and still takes effect; Esc closes it, too. Each call shows a
/// new message, and closes one that is open at the same view. A message that is taller than the
/// screen scrolls, and takes the keyboard focus for that. The message deletes itself. Nothing is
/// shown if the view is not visible; the view may not be null. Main thread only.
class PELLARVINE_EXPORT PopoverMessage
{
public:
    PopoverMessage() = delete; ///< all functions are static

    /// The text as it is, in the default font and colour.
    static void showMessage(const QString &message, QWidget *view);
    /// In the default fonts of `MarkupParser`. Text without a colour is black, or has the palette's
    /// colour on a dark bubble, also after the palette changes.
    static void showMarkupMessage(const QString &message, QWidget *view);
    /// The same with arguments for `%1` to `%99`, which are shown as plain text.
    static void showMarkupMessage(const QString &format, const QStringList &arguments,
                                  QWidget *view);
    /// Text without a font or a colour has the default one.
    static void showAttributedMessage(const NS::AttributedString &message, QWidget *view);

private:
    static void showPopover(QWidget *view, const std::function<void(NS::TextField *)> &configure);
};

} // namespace Pellarvine
