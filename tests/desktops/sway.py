# SPDX-License-Identifier: MIT
"""Sway, with floating windows or with tiled ones."""
import json
import os

import wayland
from session import Session, Window, wait_until

_CONFIGURATION = '''
output * mode %dx%d
output * background #ffffff solid_color
focus_follows_mouse no
%s
'''


class Sway(Session):
    NAME = 'Sway'
    PROGRAMS = ('sway', 'swaymsg', 'grim', 'setpriv')
    RULES = 'for_window [title=".*"] floating enable, border none'
    CAN_TILE = False  # by the keys of the other desktops
    CAN_MINIMIZE = False
    CAN_MAXIMIZE = False  # floating windows
    EDGE = 2  # no shadow

    def start(self):
        with open(self.path('config', 'sway'), 'w', encoding='utf-8') as file:
            file.write(_CONFIGURATION % (*self.size, self.RULES))
        for folder in (os.path.dirname(self.folder), self.folder, self.path('config')):
            os.chmod(folder, 0o755)  # for the user below
        runtime = self.path('sway')
        os.makedirs(runtime, mode=0o700)
        command = ['sway', '-c', self.path('config', 'sway')]
        if os.getuid() == 0:  # as which it does not run
            nobody = 65534
            os.chown(runtime, nobody, nobody)
            command = ['setpriv', '--reuid=%d' % nobody, '--regid=%d' % nobody, '--clear-groups',
                       *command]
        socket = os.path.join(runtime, 'sway.sock')
        self.environment.update({'XDG_CURRENT_DESKTOP': 'sway', 'SWAYSOCK': socket,
                                 'WAYLAND_DISPLAY': os.path.join(runtime, 'wayland-1')})
        self.compositor = self.spawn(
            'sway', command, WLR_BACKENDS='headless', WLR_RENDERER='pixman',
            WLR_LIBINPUT_NO_DEVICES='1', XDG_RUNTIME_DIR=runtime, HOME=runtime)
        display = self.environment['WAYLAND_DISPLAY']
        wait_until(lambda: os.path.exists(socket) and os.path.exists(display), socket)
        self.input = wayland.WlrootsInput(display, self.size)

    def windows(self):
        found = []

        def visit(node):
            if node.get('pid'):
                outer, inner = node['rect'], node['window_rect']
                found.append(Window(node['name'] or '', node['app_id'] or '',
                                    outer['x'] + inner['x'], outer['y'] + inner['y'],
                                    inner['width'], inner['height'],
                                    full_screen=bool(node['fullscreen_mode'])))
            for child in node['nodes'] + node['floating_nodes']:
                visit(child)
        visit(json.loads(self.output_of('swaymsg', '-t', 'get_tree', '-r')))
        return found

    def picture(self, path):
        self.output_of('grim', path)


class TilingSway(Sway):
    NAME = 'Sway, tiled'
    RULES = 'default_border none'
