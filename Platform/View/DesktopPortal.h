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

/// The session bus, if the program has one that it can reach.
std::optional<QDBusConnection> portalBus();

/// The colour in an answer: three numbers from 0 to 1. Others are no colour, which is invalid.
QColor portalColor(const QVariant &value);

} // namespace Pellarvine::detail
