// SPDX-License-Identifier: MIT
// Not API.
#pragma once

#include "Base/Global.h"

#include <QHash>
#include <QObject>
#include <QVariant>

QT_FORWARD_DECLARE_CLASS(QDBusConnection)
QT_FORWARD_DECLARE_CLASS(QDBusMessage)

namespace Pellarvine::detail {

/// What the user has set for the desktop, as the settings portal tells it: it works in sandboxes
/// too, and tells of changes. Nothing waits for its answer; until that is there, and where there is
/// no portal, no value is known.
class PELLARVINE_INTERNAL_EXPORT DesktopSettings : public QObject
{
    Q_OBJECT

public:
    static DesktopSettings &instance();

    /// Asks the portal on the session bus, if the program has one. Further calls do nothing.
    void start();
    /// The same on another bus.
    void start(QDBusConnection bus);

    /// Invalid if none is known; colours are QColors. Groups are names such as
    /// "org.gnome.desktop.wm.preferences".
    QVariant value(const QString &group, const QString &key) const;

    /// Whether the user has asked for less motion, or for no animations.
    bool reducesMotion() const;

Q_SIGNALS:
    void changed(const QString &group, const QString &key, const QVariant &value);

private Q_SLOTS:
    void settingChanged(const QDBusMessage &message);

private:
    DesktopSettings();
    void take(const QString &group, const QString &key, const QVariant &told);

    QHash<QString, QVariant> m_values; // by group and key with a space between
    bool m_hasStarted = false;
};

} // namespace Pellarvine::detail
