# SPDX-License-Identifier: MIT
"""A desktop session without a screen: its own bus, folders and processes, and a pointer and a
keyboard in the hands of the test. Each desktop derives from Session in a module of its own."""
import dataclasses
import os
import shutil
import signal
import subprocess
import time

import dbus
import dbus.bus
import dbus.mainloop.glib

import keys

dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
LONGEST_WAIT = 20  # seconds; only a failure takes that long


def wait_until(condition, what, longest=LONGEST_WAIT):
    end = time.monotonic() + longest
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise TimeoutError('no ' + what)
        time.sleep(0.05)


@dataclasses.dataclass
class Window:
    """What the desktop knows of a window: its visible frame, without a shadow."""
    title: str
    application: str
    x: float
    y: float
    width: float
    height: float
    maximized: bool = False
    full_screen: bool = False
    minimized: bool = False

    @property
    def frame(self):
        return (self.x, self.y, self.width, self.height)


class Session:
    NAME = ''
    PROGRAMS = ()  # that have to be installed
    PLATFORM = 'wayland'
    CAN_TILE = True
    CAN_MINIMIZE = True
    CAN_MAXIMIZE = True
    compositor = None  # its process, or the window manager's
    EDGE = -4  # where a drag of an edge begins, inside the visible window: here in its shadow

    @classmethod
    def missing(cls):
        """The first program that is not installed; None if all are."""
        return next((name for name in ('dbus-daemon', *cls.PROGRAMS) if not shutil.which(name)),
                    None)

    def __init__(self, folder, size=(1400, 1000)):
        self.folder, self.size = folder, size
        self._processes = []

    # Start and end

    def __enter__(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        for name in ('runtime', 'home', 'config', 'data', 'cache'):
            os.makedirs(self.path(name), mode=0o700)
        self.environment = {name: os.environ[name]
                            for name in ('PATH', 'LD_LIBRARY_PATH', 'ASAN_OPTIONS')
                            if name in os.environ}
        self.environment.update({
            'LANG': 'C.UTF-8', 'LIBGL_ALWAYS_SOFTWARE': '1', 'HOME': self.path('home'),
            'XDG_RUNTIME_DIR': self.path('runtime'), 'XDG_CONFIG_HOME': self.path('config'),
            'XDG_DATA_HOME': self.path('data'), 'XDG_CACHE_HOME': self.path('cache')})
        try:
            daemon = self._keep(subprocess.Popen(
                ['dbus-daemon', '--session', '--nofork', '--print-address=1'], text=True,
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=self.environment,
                start_new_session=True))
            address = daemon.stdout.readline().strip()
            self.environment['DBUS_SESSION_BUS_ADDRESS'] = address
            self.bus = dbus.bus.BusConnection(address)
            self.bus.set_exit_on_disconnect(False)
            self.start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        while self._processes:
            process = self._processes.pop()
            if process.poll() is not None:
                continue
            os.killpg(process.pid, signal.SIGTERM)
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()

    def start(self):
        """Starts the desktop and sets `self.input`."""
        raise NotImplementedError

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def _keep(self, process):
        self._processes.append(process)
        return process

    def spawn(self, name, command, **environment):
        with open(self.path(name + '.log'), 'wb') as log:
            return self._keep(subprocess.Popen(command, stdout=log, stderr=log,
                                               env={**self.environment, **environment},
                                               start_new_session=True))

    def launch(self, command, **environment):
        """Starts a program on the desktop."""
        return self.spawn('program', command, QT_QPA_PLATFORM=self.PLATFORM,
                          QT_LINUX_ACCESSIBILITY_ALWAYS_ON='1', **environment)

    def output_of(self, *command):
        return subprocess.run(command, capture_output=True, text=True, timeout=LONGEST_WAIT,
                              env=self.environment, check=False).stdout

    def wait_for_wayland(self, socket):
        self.environment['WAYLAND_DISPLAY'] = socket
        path = os.path.join(self.environment['XDG_RUNTIME_DIR'], socket)
        wait_until(lambda: os.path.exists(path), path)
        return path

    def wait_for_service(self, name):
        wait_until(lambda: self.bus.name_has_owner(name), name)

    def pause(self, seconds):
        """Stops the compositor for that long."""
        self.compositor.send_signal(signal.SIGSTOP)
        time.sleep(seconds)
        self.compositor.send_signal(signal.SIGCONT)

    # Windows

    def windows(self):
        raise NotImplementedError

    def picture(self, path):
        raise NotImplementedError

    def window(self, title):
        return next((window for window in self.windows() if window.title == title), None)

    def shown_window(self, title):
        return wait_until(lambda: self.window(title), 'window ' + title)

    def settled_window(self, title):
        """The window once it has stopped changing."""
        former = None
        while former != (former := self.window(title)):
            time.sleep(0.4)
        return former

    # Pointer and keys

    def move(self, x, y):
        self.input.point(min(max(x, 1), self.size[0] - 1), min(max(y, 1), self.size[1] - 1))
        time.sleep(0.02)

    def hold(self, button='left', is_down=True):
        self.input.button(keys.BUTTONS[button], is_down)
        time.sleep(0.02)

    def click(self, x, y, button='left', times=1):
        self.move(x - 1, y)
        self.move(x, y)
        for _ in range(times):
            self.hold(button)
            self.hold(button, False)
        time.sleep(0.2)

    def drag(self, start, by, steps=20):
        self.move(*start)
        self.hold()
        for step in range(1, steps + 1):
            self.move(start[0] + by[0] * step / steps, start[1] + by[1] * step / steps)
        time.sleep(0.1)
        self.hold('left', False)

    def press(self, *shortcuts):
        for shortcut in shortcuts:
            down = keys.codes(shortcut)
            for code in down:
                self.input.key(code, True)
            for code in reversed(down):
                self.input.key(code, False)
            time.sleep(0.1)

    def tile(self):
        """Gives the active window the left half of the screen."""
        self.press('Super+Left')
