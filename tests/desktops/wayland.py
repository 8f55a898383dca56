# SPDX-License-Identifier: MIT
"""A pointer and a keyboard for Wayland compositors that let a client be one: KWin with
org_kde_kwin_fake_input, wlroots with its virtual devices. It writes the wire protocol itself, which
needs no library of Wayland's and no protocol files."""
import array
import ctypes
import os
import socket
import struct
import time

_DISPLAY = 1  # the object that every connection has


def _packed(value):
    if isinstance(value, str):
        text = value.encode() + b'\0'
        return struct.pack('=I', len(text)) + text.ljust((len(text) + 3) // 4 * 4, b'\0')
    if isinstance(value, float):  # fixed point with 8 binary places
        return struct.pack('=i', round(value * 256))
    return struct.pack('=I', value & 0xFFFFFFFF)


class Client:
    """A connection, its requests, and the compositor's globals."""

    def __init__(self, path):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(path)
        self._unread = b''
        self._ids = _DISPLAY
        self.globals = {}
        self._registry = self.new_id()
        self.request(_DISPLAY, 1, self._registry)  # get_registry
        self.sync()

    def new_id(self):
        self._ids += 1
        return self._ids

    def request(self, target, opcode, *arguments, file=None):
        body = b''.join(_packed(argument) for argument in arguments)
        head = struct.pack('=II', target, (len(body) + 8) << 16 | opcode)
        files = [] if file is None else [(socket.SOL_SOCKET, socket.SCM_RIGHTS,
                                          array.array('i', [file]))]
        self._socket.sendmsg([head + body], files)

    def bind(self, interface, version=1):
        name, newest = self.globals[interface]
        bound = self.new_id()
        self.request(self._registry, 0, name, interface, min(version, newest), bound)
        return bound

    def sync(self):
        """Waits until the compositor has answered all requests."""
        callback = self.new_id()
        self.request(_DISPLAY, 0, callback)
        while callback not in [sender for sender in self._events()]:
            pass

    def _events(self):
        data, _, _, _ = self._socket.recvmsg(1 << 16, socket.CMSG_SPACE(64))
        if not data:
            raise ConnectionError('the compositor closed the connection')
        self._unread += data
        senders = []
        while len(self._unread) >= 8:
            sender, head = struct.unpack_from('=II', self._unread)
            size, opcode = head >> 16, head & 0xFFFF
            if len(self._unread) < size:
                break
            body, self._unread = self._unread[8:size], self._unread[size:]
            if (sender, opcode) == (_DISPLAY, 0):
                raise ConnectionError('the compositor reports an error: %r' % body)
            if (sender, opcode) == (self._registry, 0):
                name, length = struct.unpack_from('=II', body)
                version, = struct.unpack_from('=I', body, 8 + (length + 3) // 4 * 4)
                self.globals[body[8:7 + length].decode()] = (name, version)
            senders.append(sender)
        return senders


class KwinInput:
    """Places are those of the whole desktop."""

    def __init__(self, path):
        self._client = Client(path)
        self._input = self._client.bind('org_kde_kwin_fake_input', 4)
        self._send(0, 'Pellarvine', 'tests of windows')

    def _send(self, opcode, *arguments):
        self._client.request(self._input, opcode, *arguments)
        self._client.sync()

    def point(self, x, y):
        self._send(9, float(x), float(y))

    def button(self, code, is_down):
        self._send(2, code, int(is_down))

    def key(self, code, is_down):
        self._send(10, code, int(is_down))


class WlrootsInput:
    """The devices live as long as this object. Places are shares of `size`, the desktop's."""
    _MODIFIERS = {42: 1, 29: 4, 56: 8, 125: 64}  # of the US keyboard: code and bit

    def __init__(self, path, size):
        self._client = Client(path)
        self._size = size
        self._held = 0
        seat = self._client.bind('wl_seat')
        self._pointer, self._keyboard = (self._device(seat, manager) for manager in (
            'zwlr_virtual_pointer_manager_v1', 'zwp_virtual_keyboard_manager_v1'))
        keymap = us_keymap() + b'\0'
        file = os.memfd_create('keymap')
        os.write(file, keymap)
        self._client.request(self._keyboard, 0, 1, len(keymap), file=file)
        os.close(file)
        self._client.sync()

    def _device(self, seat, manager):
        bound = self._client.bind(manager)
        device = self._client.new_id()
        self._client.request(bound, 0, seat, device)
        return device

    @staticmethod
    def _now():
        return int(time.monotonic() * 1000)

    def _send_pointer(self, opcode, *arguments):
        self._client.request(self._pointer, opcode, self._now(), *arguments)
        self._client.request(self._pointer, 4)  # the end of a frame
        self._client.sync()

    def point(self, x, y):
        self._send_pointer(1, round(x), round(y), *self._size)

    def button(self, code, is_down):
        self._send_pointer(2, code, int(is_down))

    def key(self, code, is_down):
        self._client.request(self._keyboard, 1, self._now(), code, int(is_down))
        bit = self._MODIFIERS.get(code, 0)
        if bit:  # which a virtual keyboard tells itself
            self._held = self._held | bit if is_down else self._held & ~bit
            self._client.request(self._keyboard, 2, self._held, 0, 0, 0)
        self._client.sync()


def us_keymap():
    xkb = ctypes.CDLL('libxkbcommon.so.0')
    xkb.xkb_context_new.restype = xkb.xkb_keymap_new_from_names.restype = ctypes.c_void_p
    xkb.xkb_keymap_get_as_string.restype = ctypes.c_char_p
    rules = (ctypes.c_char_p * 5)(b'evdev', b'pc105', b'us', None, None)
    context = ctypes.c_void_p(xkb.xkb_context_new(0))
    keymap = ctypes.c_void_p(xkb.xkb_keymap_new_from_names(context, rules, 0))
    return xkb.xkb_keymap_get_as_string(keymap, 1)
