// SPDX-License-Identifier: MIT
#include "Window/WindowManager.h"

#include "Base/NSBundle.h"
#include "Window/WaylandPlugin.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

namespace Pellarvine::detail::WindowManager {

namespace {

// Replies come from malloc().
struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};
template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, Freed>;

xcb_connection_t *connection()
{
    const auto *const x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

// XCB_ATOM_NONE where nobody has made the atom: then nobody supports it either.
xcb_atom_t atom(const QByteArray &name)
{
    const auto cookie = xcb_intern_atom(connection(), 1, uint16_t(name.size()), name.constData());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

xcb_window_t rootWindow()
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}

bool isSupported(xcb_atom_t feature)
{
    constexpr uint32_t mostFeatures = 4096;
    const auto cookie = xcb_get_property(connection(), 0, rootWindow(), atom("_NET_SUPPORTED"),
                                         XCB_ATOM_ATOM, 0, mostFeatures);
    const ReplyPointer<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(connection(), cookie, nullptr));
    if (!reply || feature == XCB_ATOM_NONE)
        return false;
    const auto *const features =
            static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get()));
    const auto count = size_t(xcb_get_property_value_length(reply.get())) / sizeof(xcb_atom_t);
    return std::find(features, features + count, feature) != features + count;
}

bool isDesktop(const QStringList &names)
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    return std::any_of(desktops.begin(), desktops.end(), [&names](const QString &desktop) {
        return names.contains(desktop, Qt::CaseInsensitive);
    });
}

} // namespace

bool hasCompositor()
{
    if (!connection())
        return true; // Wayland, or Qt's own surfaces
    const xcb_atom_t selection = atom("_NET_WM_CM_S0");
    if (selection == XCB_ATOM_NONE)
        return false;
    const auto cookie = xcb_get_selection_owner(connection(), selection);
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(connection(), cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

bool canPlaceWindows()
{
    return !QGuiApplication::platformName().startsWith("wayland"_L1);
}

void setResizable(QWindow *window, bool isResizable)
{
    if (!canPlaceWindows()) {
        // A Wayland compositor knows of no other way.
        window->setMinimumSize(isResizable ? QSize() : window->size());
        window->setMaximumSize(isResizable ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)
                                           : window->size());
        return;
    }
    if (!connection())
        return;
    // Fixed limits would refuse the program's own changes too: they reach the window manager later.
    constexpr uint32_t length = 5; // flags, functions, decorations, input mode, status
    constexpr uint32_t hasFunctions = 1 << 0;
    constexpr uint32_t move = 1 << 2;
    constexpr uint32_t minimize = 1 << 3;
    constexpr uint32_t close = 1 << 5;
    const xcb_atom_t name = atom("_MOTIF_WM_HINTS");
    const auto id = xcb_window_t(window->winId());
    const auto cookie = xcb_get_property(connection(), 0, id, name, name, 0, length);
    const ReplyPointer<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(connection(), cookie, nullptr));
    std::array<uint32_t, length> hints {};
    if (reply && xcb_get_property_value_length(reply.get()) == int(sizeof(hints)))
        std::memcpy(hints.data(), xcb_get_property_value(reply.get()), sizeof(hints));
    hints[0] = isResizable ? hints[0] & ~hasFunctions : hints[0] | hasFunctions;
    hints[1] = isResizable ? 0 : move | minimize | close;
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, id, name, name, 32, length,
                        hints.data());
}

void setApplicationId()
{
    const QString identifier = NS::Bundle::main().bundleIdentifier();
    if (QGuiApplication::desktopFileName().isEmpty() && !identifier.isEmpty())
        QGuiApplication::setDesktopFileName(identifier);
}

bool showWindowMenu(QWindow *window, QPoint globalPosition)
{
    // Others may ignore the request, which Qt does not tell.
    if (!canPlaceWindows() && isDesktop({ u"KDE"_s, u"GNOME"_s }))
        return WaylandPlugin::showWindowMenu(window, globalPosition);
    if (!connection())
        return false;
    const xcb_atom_t message = atom("_GTK_SHOW_WINDOW_MENU");
    if (!isSupported(message))
        return false;
    // The desktop counts in pixels, from the screen's corner.
    const QScreen *const screen = window->screen();
    const QPoint corner = screen->geometry().topLeft();
    const QPoint pixel = corner + (globalPosition - corner) * screen->devicePixelRatio();
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = xcb_window_t(window->winId());
    event.type = message;
    event.data.data32[1] = uint32_t(pixel.x());
    event.data.data32[2] = uint32_t(pixel.y());
    xcb_ungrab_pointer(connection(), XCB_CURRENT_TIME); // for the window manager to take
    xcb_send_event(connection(), 0, rootWindow(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(connection());
    return true;
}

bool knowsMargins()
{
    if (!canPlaceWindows())
        return !isDesktop({ u"sway"_s, u"Hyprland"_s, u"river"_s, u"niri"_s })
               && WaylandPlugin::knowsMargins();
    return connection() && hasCompositor() && isSupported(atom("_GTK_FRAME_EXTENTS"));
}

void setMargin(QWindow *window, int margin)
{
    if (!canPlaceWindows())
        return WaylandPlugin::setMargin(window, margin);
    if (!connection())
        return;
    std::array<uint32_t, 4> extents {};
    extents.fill(uint32_t(qRound(margin * window->devicePixelRatio())));
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, xcb_window_t(window->winId()),
                        atom("_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, extents.size(),
                        extents.data());
}

bool isTiled(QWindow *window)
{
    return !canPlaceWindows() && WaylandPlugin::isTiled(window);
}

bool isSnapped(const QRect &frame, const QRect &available)
{
    const int touched = int(frame.left() == available.left()) + int(frame.top() == available.top())
                        + int(frame.right() == available.right())
                        + int(frame.bottom() == available.bottom());
    return touched >= 3;
}

} // namespace Pellarvine::detail::WindowManager
