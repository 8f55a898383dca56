// SPDX-License-Identifier: MIT
// Not API: a part of the colour panel.
#pragma once

#include "Base/Global.h"

#include <QColor>
#include <QDBusConnection>
#include <QObject>

QT_FORWARD_DECLARE_CLASS(QDBusMessage)

namespace Pellarvine::detail {

/// Lets the desktop pick a colour from the screen, which a program cannot see under Wayland and in
/// a sandbox. Nothing waits for the desktop's answers.
class PELLARVINE_INTERNAL_EXPORT PortalColorPicker : public QObject
{
    Q_OBJECT

public:
    /// Asks the portal on that bus whether it can.
    explicit PortalColorPicker(QDBusConnection bus, QObject *parent = nullptr);
    ~PortalColorPicker() override;

    /// Whether the desktop lets the user pick a colour now, for any of them.
    static bool isPicking() { return s_requests > 0; }

public Q_SLOTS:
    /// Starts picking, in the place of what is still going on.
    void pick();

Q_SIGNALS:
    /// It can.
    void found();
    /// Not if the user picks nothing.
    void picked(const QColor &color);

private Q_SLOTS:
    void respond(const QDBusMessage &response);

private:
    void listenTo(const QString &request);

    QDBusConnection m_bus;
    QString m_request; // the path of the one that is not answered yet
    static int s_requests; // of all, that are not answered yet
};

} // namespace Pellarvine::detail
