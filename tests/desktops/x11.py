# SPDX-License-Identifier: MIT
"""X11 with a window manager: here openbox; kwin.py has another."""
import subprocess
import time

import keys
from session import Session, Window, wait_until


class XSession(Session):
    PLATFORM = 'xcb'
    PROGRAMS = ('Xvfb', 'xdotool', 'xprop', 'import')
    _BUTTONS = {'left': '1', 'middle': '2', 'right': '3'}
    _KEYS = {'Ctrl': 'ctrl', 'Alt': 'alt', 'Shift': 'shift', 'Super': 'super', 'Esc': 'Escape',
             'Space': 'space'}

    def start(self):
        # With -noreset the server does not start afresh whenever its last client leaves.
        server = self._keep(subprocess.Popen(
            ['Xvfb', '-displayfd', '1', '-noreset', '-nolisten', 'tcp', '-screen', '0',
             '%dx%dx24' % self.size], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
            start_new_session=True))
        self.environment['DISPLAY'] = ':' + server.stdout.readline().strip()
        self.input = self
        self.start_window_manager()
        wait_until(lambda: '0x' in self.output_of('xprop', '-root', '_NET_SUPPORTING_WM_CHECK'),
                   'window manager')

    def start_window_manager(self):
        raise NotImplementedError

    def point(self, x, y):
        self.output_of('xdotool', 'mousemove', '--', str(round(x)), str(round(y)))

    def button(self, code, is_down):
        name = next(name for name, value in keys.BUTTONS.items() if value == code)
        self.output_of('xdotool', 'mousedown' if is_down else 'mouseup', self._BUTTONS[name])

    def press(self, *shortcuts):
        for shortcut in shortcuts:
            names = [self._KEYS.get(name, name) for name in shortcut.split('+')]
            self.output_of('xdotool', 'key', '+'.join(names))
            time.sleep(0.1)

    def picture(self, path):
        self.output_of('import', '-window', 'root', path)


class Openbox(XSession):
    NAME = 'openbox'
    EDGE = 2  # no shadow
    PROGRAMS = (*XSession.PROGRAMS, 'openbox')
    CAN_TILE = False

    def start_window_manager(self):
        self.compositor = self.spawn('openbox', ['openbox'])

    def windows(self):
        found = []
        for number in self.output_of('xdotool', 'search', '--name', '.').split():
            state = self.output_of('xprop', '-id', number, '_NET_WM_STATE', 'WM_STATE', 'WM_CLASS')
            if 'window state' not in state:
                continue  # the window manager has none of its own windows
            title = self.output_of('xdotool', 'getwindowname', number).strip()
            lines = self.output_of('xdotool', 'getwindowgeometry', '--shell', number).split()
            place = dict(line.split('=') for line in lines)
            found.append(Window(title, '', *(int(place[name])
                                             for name in ('X', 'Y', 'WIDTH', 'HEIGHT')),
                                maximized='MAXIMIZED_VERT' in state and 'MAXIMIZED_HORZ' in state,
                                full_screen='FULLSCREEN' in state, minimized='Iconic' in state))
        return found
