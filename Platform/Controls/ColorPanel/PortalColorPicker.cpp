// SPDX-License-Identifier: MIT
#include "Controls/ColorPanel/PortalColorPicker.h"

#include "View/DesktopPortal.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail {

namespace {

const QString screenshots = u"org.freedesktop.portal.Screenshot"_s;
const QString requests = u"org.freedesktop.portal.Request"_s;
constexpr uint leastVersion = 2; // of that interface, which picks colours

} // namespace

int PortalColorPicker::s_requests = 0;

PortalColorPicker::PortalColorPicker(QDBusConnection bus, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(bus))
{
    QDBusMessage call = QDBusMessage::createMethodCall(
            portalService, portalPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call.setArguments({ screenshots, u"version"_s });
    auto *const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError() && reply.value().variant().toUInt() >= leastVersion)
            Q_EMIT found();
    });
}

PortalColorPicker::~PortalColorPicker()
{
    s_requests -= int(!m_request.isEmpty());
}

void PortalColorPicker::pick()
{
    if (!m_request.isEmpty()) // which the desktop may have forgotten
        m_bus.send(QDBusMessage::createMethodCall(portalService, m_request, requests, u"Close"_s));
    // The request's path is known before there is one, so that no answer is missed.
    static int count = 0;
    const QString token = u"pellarvine%1"_s.arg(++count);
    const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    const QString request = portalPath + "/request/"_L1 + sender + u'/' + token;
    listenTo(request);
    QDBusMessage call =
            QDBusMessage::createMethodCall(portalService, portalPath, screenshots, u"PickColor"_s);
    call.setArguments({ QString(), QVariantMap { { u"handle_token"_s, token } } });
    auto *const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, request] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        if (m_request != request)
            return; // it is answered already, or given up
        if (reply.isError())
            listenTo({});
        else if (reply.value().path() != m_request)
            listenTo(reply.value().path()); // a portal that chooses the path itself
    });
}

void PortalColorPicker::listenTo(const QString &request)
{
    if (!m_request.isEmpty())
        m_bus.disconnect(portalService, m_request, requests, u"Response"_s, this,
                         SLOT(respond(QDBusMessage)));
    s_requests += int(!request.isEmpty()) - int(!m_request.isEmpty());
    m_request = request;
    if (!m_request.isEmpty())
        m_bus.connect(portalService, m_request, requests, u"Response"_s, this,
                      SLOT(respond(QDBusMessage)));
}

void PortalColorPicker::respond(const QDBusMessage &response)
{
    listenTo({});
    if (response.signature() != "ua{sv}"_L1)
        return;
    const QList<QVariant> arguments = response.arguments();
    const auto results = qdbus_cast<QVariantMap>(arguments[1]);
    const QColor color = portalColor(results.value(u"color"_s));
    if (arguments[0].toUInt() == 0 && color.isValid())
        Q_EMIT picked(color);
}

} // namespace Pellarvine::detail
