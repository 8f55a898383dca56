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
/// The text wraps at 250 device-independent pixels. The message stays until the user clicks or
/// types anywhere else, which does there what it always does, or presses Esc; a screen reader reads
/// it out. Each call shows its message; one that is still open at the same view closes behind it. A
/// message that is taller than the screen scrolls, and has the keyboard for that until it closes.
/// Nothing is shown at a view that is not visible. The view may not be null. Main thread only.
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
