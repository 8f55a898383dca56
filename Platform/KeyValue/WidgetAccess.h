// SPDX-License-Identifier: MIT
// Not API: what key-value coding needs to know of widgets, whose library it does not link.
#pragma once

#include "Base/Global.h"

#include <QString>
#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace Pellarvine::detail {

/// Functions that the widgets library provides when it is loaded. They take widgets only.
struct WidgetAccess
{
    /// What the program has set `visible` to, also while an ancestor is hidden. Yes for a widget
    /// that will appear with its parent. No value for another that has never been shown or hidden,
    /// since a layout may show it later.
    QVariant (*visible)(const QObject *widget);

    /// What the program has set `enabled` to, also while an ancestor is disabled.
    QVariant (*enabled)(const QObject *widget);

    /// Lets style sheets look at the widget's dynamic properties again.
    void (*restyle)(QObject *widget);
};

/// Shows a message at a widget.
using MessageBubble = void (*)(QObject *widget, const QString &message);

PELLARVINE_PRIVATE_EXPORT void setWidgetAccess(const WidgetAccess *access);

/// Null in a program without the widgets library.
const WidgetAccess *widgetAccess();

/// By a room above that of the functions before.
PELLARVINE_PRIVATE_EXPORT void setMessageBubble(MessageBubble bubble);
MessageBubble messageBubble(); ///< likewise

} // namespace Pellarvine::detail
