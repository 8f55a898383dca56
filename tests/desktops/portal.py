# SPDX-License-Identifier: MIT
"""The settings portal, which tells programs what the user has set for the desktop: a process of its
own, since programs ask while the test waits for them. It takes a line for each setting: its group,
its key and a whole number."""
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

_NAME = 'org.freedesktop.portal.Desktop'
_INTERFACE = 'org.freedesktop.portal.Settings'


class _Portal(dbus.service.Object):
    settings = {}

    @dbus.service.method(_INTERFACE, in_signature='as', out_signature='a{sa{sv}}')
    def ReadAll(self, groups):  # pylint: disable=invalid-name
        return {group: dbus.Dictionary(self.settings[group], signature='sv')
                for group in groups if group in self.settings}

    @dbus.service.signal(_INTERFACE, signature='ssv')
    def SettingChanged(self, group, key, value):  # pylint: disable=invalid-name
        self.settings.setdefault(group, {})[key] = value


def main():
    bus = dbus.SessionBus(mainloop=dbus.mainloop.glib.DBusGMainLoop())
    name = dbus.service.BusName(_NAME, bus)
    portal = _Portal(name, '/org/freedesktop/portal/desktop')
    loop = GLib.MainLoop()

    def take(*_):
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return False
        group, key, number = line.split()
        portal.SettingChanged(group, key, dbus.UInt32(number))
        return True
    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, take)
    loop.run()


if __name__ == '__main__':
    main()
