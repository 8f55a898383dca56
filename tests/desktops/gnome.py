# SPDX-License-Identifier: MIT
"""GNOME's shell, headless, in its unsafe mode: it runs scripts and takes pictures."""
import json

import dbus

from session import Session, Window, wait_until

_WINDOWS = '''JSON.stringify(global.get_window_actors().map(actor => {
    const window = actor.meta_window, frame = window.get_frame_rect();
    return { title: window.get_title() || '', application: window.get_wm_class() || '',
             x: frame.x, y: frame.y, width: frame.width, height: frame.height,
             maximized: window.get_maximized() == 3, full_screen: window.is_fullscreen(),
             minimized: window.minimized }; }))'''


class GnomeShell(Session):
    NAME = 'GNOME Shell'
    PROGRAMS = ('gnome-shell', 'pipewire')

    def start(self):
        self.environment.update({
            'XDG_CURRENT_DESKTOP': 'GNOME', 'XDG_SESSION_TYPE': 'wayland',
            'GSETTINGS_BACKEND': 'keyfile',
            # A machine without a system bus gets one on which nobody answers.
            'DBUS_SYSTEM_BUS_ADDRESS': self.environment['DBUS_SESSION_BUS_ADDRESS']})
        self.spawn('pipewire', ['pipewire'])
        self.compositor = self.spawn('shell', [
            'gnome-shell', '--headless', '--wayland', '--no-x11', '--unsafe-mode',
            '--virtual-monitor', '%dx%d' % self.size, '--wayland-display', 'wayland-gnome'])
        self.wait_for_wayland('wayland-gnome')
        self.wait_for_service('org.gnome.Shell')
        wait_until(self._has_started, 'GNOME Shell', 60)
        self.evaluate('Main.messageTray.bannerBlocked = true')
        self.evaluate('Main.overview.hide()')  # the session starts in it
        wait_until(lambda: not self.evaluate('Main.overview.visible'), 'desktop')
        self._connect_devices()

    def _has_started(self):
        try:
            return self.evaluate('Main.overview.visible && !Main.layoutManager._startingUp')
        except (dbus.DBusException, RuntimeError):
            return False

    def evaluate(self, script):
        shell = dbus.Interface(self.bus.get_object('org.gnome.Shell', '/org/gnome/Shell'),
                               'org.gnome.Shell')
        is_done, answer = shell.Eval(script)
        if not is_done:
            raise RuntimeError(str(answer))
        return json.loads(answer) if answer else None

    def windows(self):
        return [Window(**fields) for fields in json.loads(self.evaluate(_WINDOWS))]

    def picture(self, path):
        shots = self.bus.get_object('org.gnome.Shell.Screenshot', '/org/gnome/Shell/Screenshot')
        dbus.Interface(shots, 'org.gnome.Shell.Screenshot').Screenshot(False, False, path)

    # Devices. Places would need a screen cast; ways from a corner need none. The upper left corner
    # is a hot one.

    def _connect_devices(self):
        name = 'org.gnome.Mutter.RemoteDesktop'
        self.wait_for_service(name)
        remote = self.bus.get_object(name, '/org/gnome/Mutter/RemoteDesktop')
        session = self.bus.get_object(name, dbus.Interface(remote, name).CreateSession())
        self._devices = dbus.Interface(session, name + '.Session')
        self._devices.Start()
        self._devices.NotifyPointerMotionRelative(1e5, 1e5)
        self._place = (self.size[0] - 1.0, self.size[1] - 1.0)
        self.input = self
        self.press('Shift')  # the first key makes the keyboard and is lost

    def point(self, x, y):
        self._devices.NotifyPointerMotionRelative(float(x - self._place[0]),
                                                  float(y - self._place[1]))
        self._place = (float(x), float(y))

    def button(self, code, is_down):
        self._devices.NotifyPointerButton(dbus.Int32(code), dbus.Boolean(is_down))

    def key(self, code, is_down):
        self._devices.NotifyKeyboardKeycode(dbus.UInt32(code), dbus.Boolean(is_down))
