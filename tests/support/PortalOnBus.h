// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <gtest/gtest.h>

/// A colour in the form of portals.
struct PortalColor
{
    double red;
    double green;
    double blue;
};

[[maybe_unused]] inline QDBusArgument &operator<<(QDBusArgument &argument, const PortalColor &color)
{
    argument.beginStructure();
    argument << color.red << color.green << color.blue;
    argument.endStructure();
    return argument;
}

[[maybe_unused]] inline const QDBusArgument &operator>>(const QDBusArgument &argument,
                                                        PortalColor &color)
{
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    return argument;
}

/// A private session bus, with one connection for a portal and one for the program.
class PortalOnBus
{
public:
    static bool isPossible()
    {
        return !QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty();
    }

    /// Starts the bus. `portal` answers the calls of the portal.
    void start(QObject *portal)
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       { QStringLiteral("--session"), QStringLiteral("--nofork"),
                         QStringLiteral("--print-address=1") });
        QByteArray address;
        ASSERT_TRUE(QTest::qWaitFor(
                [&] {
                    address += m_daemon.readAllStandardOutput();
                    return address.endsWith('\n');
                },
                30'000));
        m_address = QString::fromLatin1(address.trimmed());
        qDBusRegisterMetaType<PortalColor>();
        QDBusConnection desktop =
                QDBusConnection::connectToBus(m_address, QStringLiteral("portal"));
        ASSERT_TRUE(desktop.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
        ASSERT_TRUE(desktop.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"),
                                           portal, QDBusConnection::ExportAllContents));
    }
    QDBusConnection program() const
    {
        return QDBusConnection::connectToBus(m_address, QStringLiteral("program"));
    }
    ~PortalOnBus()
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

private:
    QProcess m_daemon;
    QString m_address;
};
