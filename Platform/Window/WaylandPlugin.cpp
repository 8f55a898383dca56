// SPDX-License-Identifier: MIT
#include "Window/WaylandPlugin.h"

#include <QGuiApplication>
#include <QLibrary>
#include <QLibraryInfo>
#include <QMargins>
#include <QVersionNumber>
#include <QWindow>

#include <cstdint>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail::WaylandPlugin {

namespace {

template <typename Function>
Function lookedUp(const char *name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(u"Qt6WaylandClient"_s, 6, name));
}

// static void QWaylandNativeInterface::setWindowMargins(QWindow *, const QMargins &)
auto marginSetter()
{
    static const auto function = lookedUp<void (*)(QWindow *, const QMargins &)>(
            "_ZN15QtWaylandClient23QWaylandNativeInterface16setWindowMarginsEP7QWindowRK8QMargins");
    return function;
}

// void *QWaylandNativeInterface::nativeResourceForIntegration(const QByteArray &)
void *resource(const QByteArray &name)
{
    static const auto function = lookedUp<void *(*)(void *, const QByteArray &)>(
            "_ZN15QtWaylandClient23QWaylandNativeInterface28nativeResourceForIntegrationERK10QByte"
            "Array");
    return function ? function(QGuiApplication::platformNativeInterface(), name) : nullptr;
}

// void *QWaylandNativeInterface::nativeResourceForWindow(const QByteArray &, QWindow *)
void *resource(const QByteArray &name, QWindow *window)
{
    static const auto function = lookedUp<void *(*)(void *, const QByteArray &, QWindow *)>(
            "_ZN15QtWaylandClient23QWaylandNativeInterface23nativeResourceForWindowERK10QByteArrayP"
            "7"
            "QWindow");
    return function ? function(QGuiApplication::platformNativeInterface(), name, window) : nullptr;
}

// Between Qt's units and those of a Wayland surface.
double scale()
{
    const double factor = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
    return factor > 0.0 ? factor : 1.0;
}

} // namespace

bool knowsMargins()
{
    return marginSetter() != nullptr;
}

void setMargin(QWindow *window, int margin)
{
    const int units = qRound(margin * scale());
    if (marginSetter() && window->handle())
        marginSetter()(window, QMargins(units, units, units, units));
}

bool isTiled(QWindow *window)
{
    // static QWaylandWindow *QWaylandWindow::fromWlSurface(wl_surface *)
    static const auto fromSurface = lookedUp<const void *(*)(void *)>(
            "_ZN15QtWaylandClient14QWaylandWindow13fromWlSurfaceEP10wl_surface");
    // QFlags<ToplevelWindowTilingState> QWaylandWindow::toplevelWindowTilingStates() const
    static const auto tilingStates = lookedUp<int (*)(const void *)>(
            "_ZNK15QtWaylandClient14QWaylandWindow26toplevelWindowTilingStatesEv");
    if (!fromSurface || !tilingStates || !window->handle())
        return false;
    void *const surface = resource("surface", window);
    const void *const waylandWindow = surface ? fromSurface(surface) : nullptr;
    return waylandWindow && tilingStates(waylandWindow) != 0;
}

bool showWindowMenu(QWindow *window, QPoint globalPosition)
{
    constexpr uint32_t showWindowMenuRequest = 4; // of xdg_toplevel
    static const auto send = reinterpret_cast<void (*)(void *, uint32_t, ...)>(
            QLibrary::resolve(u"wayland-client"_s, 0, "wl_proxy_marshal"));
    void *const toplevel = resource("xdg_toplevel", window);
    void *const seat = resource("wl_seat");
    const auto serial = uint32_t(reinterpret_cast<quintptr>(resource("serial")));
    if (!send || !toplevel || !seat || serial == 0)
        return false;
    const QPointF place = QPointF(window->mapFromGlobal(globalPosition)) * scale();
    send(toplevel, showWindowMenuRequest, seat, serial, int32_t(place.x()), int32_t(place.y()));
    return true;
}

bool hasSeenInput()
{
    return resource("serial") != nullptr;
}

bool tellsPopupPlaces()
{
    return QLibraryInfo::version() >= QVersionNumber(6, 8);
}

void setPopupAnchor(QWindow *popup, const QRect &anchor, Qt::Edge edge)
{
    constexpr uint slide = 1 | 2; // along x and y, values of xdg_positioner
    constexpr uint flipX = 4;
    constexpr uint flipY = 8;
    const bool isAboveOrBelow = edge == Qt::TopEdge || edge == Qt::BottomEdge;
    const QRectF scaled(QPointF(anchor.topLeft()) * scale(), QSizeF(anchor.size()) * scale());
    popup->setProperty("_q_waylandPopupAnchorRect", scaled.toRect());
    popup->setProperty("_q_waylandPopupAnchor", QVariant::fromValue(Qt::Edges(edge)));
    popup->setProperty("_q_waylandPopupGravity", QVariant::fromValue(Qt::Edges(edge)));
    popup->setProperty("_q_waylandPopupConstraintAdjustment",
                       slide | (isAboveOrBelow ? flipY : flipX));
}

} // namespace Pellarvine::detail::WaylandPlugin
