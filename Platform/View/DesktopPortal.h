// SPDX-License-Identifier: MIT
// Not API: what all talks with the desktop's portal have in common.
#pragma once

#include "Base/Global.h"

#include <QColor>
#include <QDBusConnection>
#include <QString>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QVariant)

namespace Pellarvine::detail {

inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

/// The session bus. Nothing if the program cannot connect to one.
std::optional<QDBusConnection> portalBus();

/// The colour in an answer of the portal, which has three numbers from 0 to 1. Otherwise invalid.
QColor portalColor(const QVariant &value);

} // namespace Pellarvine::detail
