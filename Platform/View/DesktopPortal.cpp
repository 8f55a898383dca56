// SPDX-License-Identifier: MIT
#include "View/DesktopPortal.h"

#include <QDBusArgument>
#include <QFile>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

std::optional<QDBusConnection> portalBus()
{
    // Without either variable, QDBusConnection would try to start a bus.
    const bool hasBus = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")
                        || QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus"_L1);
    if (!hasBus)
        return std::nullopt;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

QColor portalColor(const QVariant &value)
{
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)"_L1)
        return {};
    double red = -1.0;
    double green = -1.0;
    double blue = -1.0;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    const auto isShare = [](double number) {
        return number >= 0.0 && number <= 1.0;
    };
    if (!isShare(red) || !isShare(green) || !isShare(blue))
        return {};
    return QColor::fromRgbF(float(red), float(green), float(blue));
}

} // namespace Pellarvine::detail
