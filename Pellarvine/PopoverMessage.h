// SPDX-License-Identifier: MIT
#pragma once

#include <pellarvine/Platform/NSAttributedString.h>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace NS {
class TextField;
}

namespace Pellarvine {

/// A short message in a bubble above a view, for a hint or for what is wrong with an input:
///
///     PopoverMessage::showMessage(tr("There is a folder of that name."), nameField);
///     PopoverMessage::showMarkupMessage(tr("**Saved** to the desktop"), exportButton);
///
/// The text wraps at 250 device-independent pixels. Screen readers read it out. The next click or
/// key elsewhere closes the message and still takes effect; Esc closes it, too. Each call shows a
/// new message, and closes one that is open at the same view. A message that is taller than the
/// screen scrolls, and has the keyboard for that. Does nothing if the view is not visible; it may
/// not be null. Main thread only.
class PELLARVINE_EXPORT PopoverMessage
{
public:
    PopoverMessage() = delete; ///< its functions are static

    /// The text as it is, in the default font and colour.
    static void showMessage(const QString &message, QWidget *view);
    /// In the parser's default fonts, and black where the markup names no colour; on a dark bubble
    /// in the bubble's colour for text. Follows the palette while it is open.
    static void showMarkupMessage(const QString &message, QWidget *view);
    /// The same with arguments for `%1` to `%99`, which are shown as they are.
    static void showMarkupMessage(const QString &format, const QStringList &arguments,
                                  QWidget *view);
    /// In the default font and colour where no attribute says otherwise.
    static void showAttributedMessage(const NS::AttributedString &message, QWidget *view);

private:
    static void showPopover(QWidget *view, const std::function<void(NS::TextField *)> &configure);
};

} // namespace Pellarvine
