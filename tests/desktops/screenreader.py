# SPDX-License-Identifier: MIT
"""A program's widgets as a screen reader finds them on the accessibility bus. Tests use it to find
their place, which works on every desktop and in every language."""
import dbus
import dbus.bus

from session import wait_until

_INTERFACE = 'org.a11y.atspi.Accessible'
_NOWHERE = '/org/a11y/atspi/null'
_FOCUSABLE, _SHOWING = 11, 25  # bits of a widget's state


class Item:
    def __init__(self, session, bus, name, path):
        self._session, self._bus, self._address = session, bus, (name, path)
        self._object = bus.get_object(name, path, introspect=False)

    def _call(self, interface, method, *arguments, **more):
        return self._object.get_dbus_method(method, interface)(*arguments, **more)

    def _property(self, interface, name):
        try:
            return self._call('org.freedesktop.DBus.Properties', 'Get', interface, name)
        except dbus.DBusException:
            return ''

    def __eq__(self, other):
        return self._address == other._address

    def __str__(self):
        return '%s "%s"' % (self.role, self.name)

    @property
    def name(self):
        return str(self._property(_INTERFACE, 'Name'))

    @property
    def description(self):
        return str(self._property(_INTERFACE, 'Description'))

    @property
    def parent(self):
        return Item(self._session, self._bus, *self._property(_INTERFACE, 'Parent'))

    @property
    def index(self):
        """Its place among the children of its parent, or -1."""
        return int(self._call(_INTERFACE, 'GetIndexInParent'))

    @property
    def text(self):
        """What is written in it."""
        return str(self._call('org.a11y.atspi.Text', 'GetText', dbus.Int32(0), dbus.Int32(-1)))

    @property
    def role(self):
        return str(self._call(_INTERFACE, 'GetRoleName'))

    @property
    def toolkit(self):
        return str(self._property('org.a11y.atspi.Application', 'ToolkitName'))

    def _has(self, bit):
        low, high = self._call(_INTERFACE, 'GetState')
        return bool((int(low) | int(high) << 32) >> bit & 1)

    @property
    def is_focusable(self):
        return self._has(_FOCUSABLE)

    @property
    def is_showing(self):
        return self._has(_SHOWING)

    def children(self):
        try:
            found = self._call(_INTERFACE, 'GetChildren')
        except dbus.DBusException:  # it has just gone
            return []
        return [Item(self._session, self._bus, name, path) for name, path in found
                if path != _NOWHERE]

    def all(self):
        """Itself and everything in it, outermost first."""
        yield self
        for child in self.children():
            yield from child.all()

    def find_all(self, role, name=''):
        return [item for item in self.all()
                if item.role == role and item.name.startswith(name) and item.is_showing]

    def find(self, role, name=''):
        return wait_until(lambda: next(iter(self.find_all(role, name)), None),
                          'accessible %s "%s"' % (role, name), 8)

    def extents(self):
        """x, y, width and height on the screen: on Wayland, where the program believes it is."""
        return tuple(map(int, self._call('org.a11y.atspi.Component', 'GetExtents', dbus.UInt32(0))))

    def center(self, title):
        """Its middle on the desktop, if it lies in the window of that title or in a popup of it."""
        x, y, width, height = self.extents()
        if self._session.PLATFORM != 'xcb':
            item = self
            while item.role != 'application':
                item = item.parent
            window_item = next(child for child in item.children() if child.name == title)
            # Its title bar begins where the visible window does, without the shadow.
            left, top, _, _ = window_item.find('title bar').extents()
            window = self._session.window(title)
            x, y = x - left + window.x, y - top + window.y
        return (x + width / 2, y + height / 2)


def program(session, name):
    """The program of that name, which Session.launch() has started."""
    launcher = session.bus.get_object('org.a11y.Bus', '/org/a11y/bus', introspect=False)
    bus = dbus.bus.BusConnection(launcher.get_dbus_method('GetAddress', 'org.a11y.Bus')())
    desktop = Item(session, bus, 'org.a11y.atspi.Registry', '/org/a11y/atspi/accessible/root')

    # A platform theme for GTK makes a second, empty program of the same name.
    def found():
        return next((child for child in desktop.children()
                     if child.name == name and child.toolkit == 'Qt'), None)
    return wait_until(found, 'program %s on the accessibility bus' % name)
