// SPDX-License-Identifier: MIT
#include "View/DesktopSettings.h"

#include "View/DesktopPortal.h"

#include <QColor>
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QMap>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

using Groups = QMap<QString, QVariantMap>;

namespace Pellarvine::detail {

namespace {

const QString settings = u"org.freedesktop.portal.Settings"_s;

const QString appearance = u"org.freedesktop.appearance"_s;
const QString gnomeInterface = u"org.gnome.desktop.interface"_s;
const QString kdeGlobals = u"org.kde.kdeglobals.KDE"_s;

const QStringList groups { appearance, u"org.gnome.desktop.wm.preferences"_s, gnomeInterface,
                           kdeGlobals };

QVariant plainValue(const QVariant &value)
{
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return value;
    const QColor color = portalColor(value);
    return color.isValid() ? color : QVariant();
}

} // namespace

DesktopSettings::DesktopSettings()
    : QObject(qApp)
{ }

DesktopSettings &DesktopSettings::instance()
{
    // Destroyed with the application object. A program may make another one after it.
    static QPointer<DesktopSettings> settings;
    if (!settings)
        settings = new DesktopSettings;
    return *settings;
}

void DesktopSettings::start()
{
    if (m_hasStarted)
        return;
    if (const std::optional<QDBusConnection> bus = portalBus())
        start(*bus);
}

void DesktopSettings::start(QDBusConnection bus)
{
    if (!bus.isConnected() || std::exchange(m_hasStarted, true))
        return;
    qDBusRegisterMetaType<Groups>();
    // The slot takes a QDBusMessage: with separate parameters, Qt 6.4 drops the signals until the
    // program itself has sent a D-Bus variant.
    bus.connect(portalService, portalPath, settings, u"SettingChanged"_s, this,
                SLOT(settingChanged(QDBusMessage)));
    QDBusMessage call =
            QDBusMessage::createMethodCall(portalService, portalPath, settings, u"ReadAll"_s);
    call.setArguments({ groups });
    auto *const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<Groups> reply = *watcher;
        if (reply.isError())
            return; // a desktop without a portal
        const Groups answer = reply.value();
        for (auto group = answer.begin(); group != answer.end(); ++group) {
            for (auto entry = group->begin(); entry != group->end(); ++entry)
                take(group.key(), entry.key(), entry.value());
        }
    });
}

QVariant DesktopSettings::value(const QString &group, const QString &key) const
{
    return m_values.value(group + u' ' + key);
}

bool DesktopSettings::reducesMotion() const
{
    const QVariant animates = value(gnomeInterface, u"enable-animations"_s);
    const QVariant duration = value(kdeGlobals, u"AnimationDurationFactor"_s);
    return value(appearance, u"reduced-motion"_s).toUInt() == 1
           || (animates.isValid() && !animates.toBool())
           || (duration.isValid() && duration.toDouble() == 0.0);
}

void DesktopSettings::settingChanged(const QDBusMessage &message)
{
    if (message.signature() != "ssv"_L1)
        return;
    const QList<QVariant> arguments = message.arguments();
    const QString group = arguments[0].toString();
    if (groups.contains(group))
        take(group, arguments[1].toString(), arguments[2].value<QDBusVariant>().variant());
}

void DesktopSettings::take(const QString &group, const QString &key, const QVariant &told)
{
    const QVariant value = plainValue(told);
    QVariant &known = m_values[group + u' ' + key];
    if (known == value)
        return;
    known = value;
    Q_EMIT changed(group, key, value);
}

} // namespace Pellarvine::detail
