# SPDX-License-Identifier: MIT
"""KDE's window manager under Wayland and under X11."""
import json
import os
import shutil
import struct
import time
import zlib

import dbus
import dbus.service
from gi.repository import GLib

import wayland
import x11
from session import Session, Window, wait_until

_SCRIPT = '''
callDBus("%s", "/windows", "org.example.Windows", "tell", JSON.stringify(
    workspace.clientList().map(function (c) {
        var area = workspace.clientArea(KWin.MaximizeArea, c), f = c.frameGeometry;
        return { title: c.caption, application: String(c.desktopFileName),
                 x: f.x, y: f.y, width: f.width, height: f.height,
                 full_screen: c.fullScreen, minimized: c.minimized,
                 maximized: f.x == area.x && f.y == area.y && f.width == area.width
                            && f.height == area.height }; })));
'''


class _Receiver(dbus.service.Object):
    """Scripts in KWin call it."""
    text = None

    @dbus.service.method('org.example.Windows', in_signature='s')
    def tell(self, text):
        self.text = str(text)


class _Scripted:
    """What KWin's scripts tell, with Wayland and X11 alike."""

    def listen(self):
        self.wait_for_service('org.kde.KWin')
        self._receiver = _Receiver(self.bus, '/windows')

    def run(self, text):
        with open(self.path('script.js'), 'w', encoding='utf-8') as file:
            file.write(text)
        scripting = dbus.Interface(self.bus.get_object('org.kde.KWin', '/Scripting'),
                                   'org.kde.kwin.Scripting')
        scripting.unloadScript('test')
        script = '/%d' % scripting.loadScript(self.path('script.js'), 'test', signature='ss')
        dbus.Interface(self.bus.get_object('org.kde.KWin', script), 'org.kde.kwin.Script').run()

    def windows(self):
        self._receiver.text = None
        self.run(_SCRIPT % self.bus.get_unique_name())

        def answer():
            GLib.MainContext.default().iteration(False)
            return self._receiver.text
        return [Window(**fields) for fields in json.loads(wait_until(answer, 'answer of KWin'))]


class Kwin(_Scripted, Session):
    NAME = 'KWin on Wayland'
    PROGRAMS = ('kwin_wayland',)

    def start(self):
        self.environment.update({
            'KWIN_COMPOSE': 'O2', 'XDG_CURRENT_DESKTOP': 'KDE', 'KDE_FULL_SESSION': 'true',
            'KDE_SESSION_VERSION': '5', 'KWIN_SCREENSHOT_NO_PERMISSION_CHECKS': '1',
            'KWIN_WAYLAND_NO_PERMISSION_CHECKS': '1'})
        # The installed one has a file capability, which containers refuse. A copy has none.
        program = shutil.copy(shutil.which('kwin_wayland'), self.path('kwin_wayland'))
        self.compositor = self.spawn('kwin', [
            program, '--virtual', '--width', str(self.size[0]), '--height', str(self.size[1]),
            '--no-lockscreen', '--socket', 'wayland-kwin'])
        path = self.wait_for_wayland('wayland-kwin')
        self.listen()
        self.input = wayland.KwinInput(path)

    def picture(self, path):
        shots = dbus.Interface(self.bus.get_object('org.kde.KWin', '/org/kde/KWin/ScreenShot2'),
                               'org.kde.KWin.ScreenShot2')
        reading, writing = os.pipe()
        answer = shots.CaptureWorkspace(dbus.Dictionary({}, signature='sv'),
                                        dbus.types.UnixFd(writing))
        os.close(writing)
        with os.fdopen(reading, 'rb') as pipe:
            pixels = pipe.read()
        write_png(path, int(answer['width']), int(answer['height']), int(answer['stride']), pixels)


class KwinX11(_Scripted, x11.XSession):
    NAME = 'KWin on X11'
    PROGRAMS = (*x11.XSession.PROGRAMS, 'kwin_x11')

    def start_window_manager(self):
        self.environment.update({'KWIN_COMPOSE': 'O2', 'XDG_CURRENT_DESKTOP': 'KDE',
                                 'KDE_FULL_SESSION': 'true', 'KDE_SESSION_VERSION': '5'})
        self.compositor = self.spawn('kwin', ['kwin_x11'])
        self.listen()
        # A window decides when it is made whether it can be translucent.
        properties = dbus.Interface(
            self.bus.get_object('org.kde.KWin', '/Compositor', introspect=False),
            'org.freedesktop.DBus.Properties')
        wait_until(lambda: properties.Get('org.kde.kwin.Compositing', 'active'), 'compositor')
        time.sleep(0.5)

    def tile(self):  # its shortcuts need a service that does not run here
        self.run('workspace.slotWindowQuickTileLeft();')



def write_png(path, width, height, stride, pixels):
    """Of rows of blue, green, red and alpha."""
    rows = bytearray()
    for top in range(0, height * stride, stride):
        row = pixels[top:top + width * 4]
        colors = bytearray(width * 3)
        colors[0::3], colors[1::3], colors[2::3] = row[2::4], row[1::4], row[0::4]
        rows += b'\0' + colors

    def chunk(kind, data):
        return (struct.pack('>I', len(data)) + kind + data
                + struct.pack('>I', zlib.crc32(kind + data)))
    with open(path, 'wb') as file:
        file.write(b'\x89PNG\r\n\x1a\n'
                   + chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, 8, 2, 0, 0, 0))
                   + chunk(b'IDAT', zlib.compress(bytes(rows))) + chunk(b'IEND', b''))
