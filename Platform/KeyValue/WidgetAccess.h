// SPDX-License-Identifier: MIT
// Not API: what key-value coding needs to know of widgets, whose library it does not link.
#pragma once

#include "Base/Global.h"

#include <QString>
#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// Functions of the widgets library, which sets them when it is loaded. They take widgets only.
struct WidgetAccess
{
    /// The `visible` that the program has set, also while an ancestor is hidden. True for a widget
    /// that will appear with its parent. Invalid for any other widget that was never shown or
    /// hidden: a layout may show it later.
    QVariant (*visible)(const QObject *widget);

    /// The `enabled` that the program has set, also while an ancestor is disabled.
    QVariant (*enabled)(const QObject *widget);

    /// Applies style sheets again, after a dynamic property of the widget has changed.
    void (*restyle)(QObject *widget);

    /// Makes a spin box take the text that is being typed.
    void (*finishTyping)(QObject *widget);
};

/// Shows a message in a bubble above a widget. An empty one closes the bubble of the last.
using MessageBubble = void (*)(QObject *widget, const QString &message);

/// `access` is not owned.
PELLARVINE_PRIVATE_EXPORT void setWidgetAccess(const WidgetAccess *access);

/// Null in a program without the widgets library.
const WidgetAccess *widgetAccess();

/// Set by the room Pellarvine when it is loaded.
PELLARVINE_PRIVATE_EXPORT void setMessageBubble(MessageBubble bubble);
/// Null in a program without the widgets library.
MessageBubble messageBubble();

} // namespace Pellarvine::detail
