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

/// The user's settings of the desktop, from the settings portal, which works in sandboxes and
/// reports changes. The requests do not block: values are invalid until the answer comes, and if
/// there is no portal. Main thread only.
class PELLARVINE_INTERNAL_EXPORT DesktopSettings : public QObject
{
    Q_OBJECT

public:
    static DesktopSettings &instance();

    /// Sends a request to the portal on the session bus, if there is one. Further calls do nothing.
    void start();
    /// The same on another bus.
    void start(QDBusConnection bus);

    /// A setting, or an invalid QVariant. A colour is a QColor. `group` is a name such as
    /// "org.gnome.desktop.wm.preferences".
    QVariant value(const QString &group, const QString &key) const;

    /// Whether the user has set reduced motion, or disabled animations.
    bool reducesMotion() const;

Q_SIGNALS:
    void changed(const QString &group, const QString &key, const QVariant &value);

private Q_SLOTS:
    void settingChanged(const QDBusMessage &message);

private:
    DesktopSettings();
    void take(const QString &group, const QString &key, const QVariant &told);

    QHash<QString, QVariant> m_values; // the key is "group key"
    bool m_hasStarted = false;
};

} // namespace Pellarvine::detail
