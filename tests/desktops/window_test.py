# SPDX-License-Identifier: MIT
"""The gallery's window on real desktops, operated with pointer and keys. script/test-desktops runs
this; with PICTURES set to a folder, it leaves pictures there."""
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

try:
    import gi  # noqa: F401, pylint: disable=unused-import
    import dbus  # noqa: F401, pylint: disable=unused-import
except ImportError as error:
    sys.exit('script/test-desktops needs python3-dbus and python3-gi: %s' % error)

import gnome
import kwin
import popovers
import screenreader
import sway
import x11

GALLERY = os.path.abspath(os.environ.get('GALLERY', 'build/dev/bin/gallery'))
HERE = os.path.dirname(os.path.abspath(__file__))
PICTURE = os.path.join(HERE, '../../docs/images/notes.png')  # to drop and to paste
PICTURES = os.environ.get('PICTURES')
TITLE = 'Pellarvine Gallery'
QUESTION = 'To Charles — ' + TITLE  # of the gallery; Qt appends the program's name
EMPTY_PLACE = (450, 14)  # of the title bar
PAGES = ('container', 'bindings', 'colours', 'fonts', 'markup', 'drawing', 'layout', 'borders',
         'inspector', 'segments', 'labels', 'popovers', 'images', 'colour-picker', 'titlebar',
         'navigation', 'about', 'tickets')


def near(one, other, distance=14):
    return all(abs(a - b) <= distance for a, b in zip(one, other))


class WindowOnDesktop:
    """A session of a desktop for each class of cases, and the gallery on it."""
    desktop = None
    program_name = 'gallery'
    title = TITLE

    @classmethod
    def setUpClass(cls):
        missing = cls.desktop.missing()
        if missing:
            raise unittest.SkipTest('%s: %s is not installed' % (cls.desktop.NAME, missing))
        cls.folder = tempfile.mkdtemp(prefix='desktop-')
        cls.session = cls.desktop(os.path.join(cls.folder, 'session'))
        try:
            cls.session.__enter__()
        except BaseException:
            shutil.rmtree(cls.folder, ignore_errors=True)
            raise

    @classmethod
    def tearDownClass(cls):
        cls.session.__exit__()
        shutil.rmtree(cls.folder, ignore_errors=True)

    def setUp(self):
        self.session.move(self.session.size[0] - 20, self.session.size[1] - 20)

    def open(self, *arguments):
        path = os.path.join(os.path.dirname(GALLERY), self.program_name)
        if not os.path.exists(path):
            self.skipTest('%s is not built' % path)
        process = self.session.launch([path, *arguments])

        def end():
            process.terminate()
            process.wait(10)
        self.addCleanup(end)
        self.session.shown_window(self.title)
        time.sleep(1)
        self.program = screenreader.program(self.session, self.program_name)
        return self.settled()

    def settled(self):
        return self.session.settled_window(self.title)

    def at(self, x, y):
        """A place in the window; negative numbers count from the right and the lower edge."""
        left, top, width, height = self.session.window(self.title).frame
        return (left + x + (width if x < 0 else 0), top + y + (height if y < 0 else 0))

    def edge(self, x, y):
        """Where a drag of an edge or a corner begins: -1 is the left or upper one, 0 the middle."""
        left, top, width, height = self.session.window(self.title).frame
        inset = self.desktop.EDGE
        return (left + {-1: inset, 0: width / 2, 1: width - inset}[x],
                top + {-1: inset, 0: height / 2, 1: height - inset}[y])

    def click_on(self, role, name):
        self.session.click(*self.program.find(role, name).center(self.title))

    def picture(self, name):
        if PICTURES:
            self.session.picture(os.path.join(PICTURES, '%s-%s.png'
                                              % (self.desktop.__name__.lower(), name)))

    def brightness(self, x, y):
        """Of one pixel of the screen, from 0 to 1."""
        path = self.session.path('screen.png')
        self.session.picture(path)
        return float(self.session.output_of('convert', path, '-crop', '1x1+%d+%d' % (x, y),
                                            '-format', '%[fx:mean]', 'info:'))

    def expect_frame(self, wanted, what):
        frame = self.settled().frame
        self.assertTrue(near(frame, wanted), '%s: %s instead of %s' % (what, frame, wanted))

    def expect_accessible_size(self, item, size):
        """A screen reader is told of the visible window, without its shadow."""
        self.assertEqual(item.extents()[2:], size)


class WindowManners:
    """What every window does on every desktop."""

    def test_moves_by_its_title_bar(self):
        x, y, width, height = self.open().frame
        self.picture('window')
        self.expect_accessible_size(self.program.children()[0], (width, height))
        self.session.drag(self.at(*EMPTY_PLACE), (60, 40))
        self.expect_frame((x + 60, y + 40, width, height), 'moved')

    def test_resizes_by_eight_edges(self):
        self.open()
        for name, side, by, change in (
                ('right', (1, 0), (50, 0), (0, 0, 50, 0)),
                ('left', (-1, 0), (30, 0), (30, 0, -30, 0)),
                ('top', (0, -1), (0, 30), (0, 30, 0, -30)),
                ('bottom', (0, 1), (0, -40), (0, 0, 0, -40)),
                ('top left', (-1, -1), (-20, -20), (-20, -20, 20, 20)),
                ('top right', (1, -1), (-30, 20), (0, 20, -30, -20)),
                ('bottom left', (-1, 1), (-20, 20), (-20, 0, 20, 20)),
                ('bottom right', (1, 1), (30, 20), (0, 0, 30, 20))):
            with self.subTest(name):
                before = self.settled().frame
                self.session.drag(self.edge(*side), by)
                self.expect_frame([a + b for a, b in zip(before, change)], name)

    def test_maximises_by_a_double_click_and_comes_back(self):
        self.skip_unless_it_maximises()
        before = self.open().frame
        self.session.click(*self.at(*EMPTY_PLACE), times=2)
        window = self.settled()
        self.picture('maximised')
        self.assertTrue(self.is_filling(window))
        self.session.click(*self.at(*EMPTY_PLACE), times=2)
        self.expect_frame(before, 'restored')

    def test_a_drag_of_the_maximised_window_keeps_its_normal_size(self):
        self.skip_unless_it_maximises()
        before = self.open().frame
        self.session.click(*self.at(*EMPTY_PLACE), times=2)
        self.assertTrue(self.is_filling(self.settled()))
        self.session.drag(self.at(700, 14), (40, 200))
        if self.is_filling(self.settled()):  # the desktop does not move it
            self.session.click(*self.at(*EMPTY_PLACE), times=2)
        frame = self.settled().frame
        self.assertTrue(near(frame[2:], before[2:]), '%s instead of %s' % (frame, before))

    def skip_unless_it_maximises(self):
        if not self.desktop.CAN_MAXIMIZE:
            self.skipTest('this desktop does not maximise floating windows')

    def is_filling(self, window):
        return window.maximized or window.width > 0.95 * self.session.size[0]

    def test_fills_the_screen_and_comes_back(self):
        before = self.open().frame
        self.session.press('F11')
        window = self.settled()
        self.assertTrue(window.full_screen)
        self.assertEqual((window.width, window.height), self.session.size)
        self.picture('full-screen')
        self.session.press('F11')
        self.expect_frame(before, 'restored')
        self.assertFalse(self.settled().full_screen)

    def test_is_tiled_and_a_drag_off_brings_its_size_back(self):
        if not self.desktop.CAN_TILE:
            self.skipTest('this desktop does not tile floating windows')
        before = self.open().frame
        self.session.tile()
        window = self.settled()
        self.picture('tiled')
        self.assertAlmostEqual(window.width, self.session.size[0] / 2, delta=3)
        self.expect_accessible_size(self.program.children()[0], (window.width, window.height))
        if shutil.which('convert'):
            left, top, width, height = window.frame
            bottom = top + height - 1
            self.assertGreater(self.brightness(left, bottom), 0.5, 'a round corner')
            beside, far = (self.brightness(left + width + distance, top + height / 2)
                           for distance in (4, 100))
            self.assertAlmostEqual(beside, far, delta=0.005, msg='a shadow')
        self.session.drag(self.at(300, 14), (200, 150))
        self.assertTrue(near(self.settled().frame[2:], before[2:]))

    def test_is_minimised_by_its_button(self):
        if not self.desktop.CAN_MINIMIZE:
            self.skipTest('this desktop does not minimise')
        self.open()
        self.click_on('push button', 'Minimise')
        time.sleep(0.5)
        self.assertTrue(self.settled().minimized)

    def test_shows_a_window_menu_that_esc_closes(self):
        before = self.open().frame
        for opening in (lambda: self.session.click(*self.at(*EMPTY_PLACE), button='right'),
                        lambda: self.session.press('Alt+Space')):
            opening()
            time.sleep(0.4)
            self.picture('menu')
            self.session.press('Esc')
            self.expect_frame(before, 'after the menu')
        x, y, width, height = before
        self.session.drag(self.at(*EMPTY_PLACE), (60, 40))
        self.expect_frame((x + 60, y + 40, width, height), 'moved after the menus')

    def test_closes_by_its_button(self):
        self.open()
        self.click_on('push button', 'Close')
        time.sleep(1)
        self.assertIsNone(self.session.window(self.title))

    def test_one_key_closes_one_thing(self):
        self.open('--page', 'popovers')
        self.click_on('push button', 'Filter')
        time.sleep(0.4)
        self.picture('popover')
        for key in ('Esc', 'Return'):
            with self.subTest(key):
                self.click_on('combo box', 'Everything')
                time.sleep(0.6)
                self.session.press(key)
                time.sleep(0.4)
                self.assertTrue(self.program.find_all('dialog'), 'the popover closed too')
        # Where the list's end takes the keyboard away, the next key brings it back.
        self.session.press('Shift', 'Esc')
        time.sleep(0.4)
        self.assertFalse(self.program.find_all('dialog'))


class InstalledTitleBar(WindowManners):
    """A QMainWindow that has got its title bar, and a message box."""
    program_name = 'installed_program'
    title = 'Installed'
    test_one_key_closes_one_thing = None  # is about the gallery's popovers

    def test_keeps_its_frame_when_the_compositor_is_slow(self):
        def double_click():
            self.session.move(*self.at(*EMPTY_PLACE))
            self.session.hold()
            self.session.hold('left', False)
            self.session.hold()
            self.session.pause(0.4)
            self.session.hold('left', False)

        def press():
            self.session.press('F11')
            self.session.pause(0.4)

        before = self.open().frame
        for fill in (press, double_click) * 3 if self.desktop.CAN_MAXIMIZE else (press,) * 3:
            for is_filling in (True, False):
                fill()
                self.assertEqual(self.is_filling(self.settled()), is_filling)
            self.expect_frame(before, 'restored')


class MessageBox:
    """A dialog of Qt's that has got its title bar."""

    def test_moves_by_its_title_bar_and_closes_by_its_button(self):
        self.open('--page', 'titlebar')
        self.click_on('push button', 'Open a message box')
        self.session.shown_window(QUESTION)
        x, y, width, height = self.session.settled_window(QUESTION).frame
        self.picture('message-box')
        self.expect_accessible_size(self.program.find('alert message', 'To Charles'),
                                    (width, height))
        self.session.drag((x + width / 2, y + 11), (50, -40))  # GNOME may put it at the bottom
        frame = self.session.settled_window(QUESTION).frame
        self.assertTrue(near(frame, (x + 50, y - 40, width, height)), frame)
        self.session.press('Esc')
        time.sleep(1)
        self.assertIsNone(self.session.window(QUESTION))
        self.click_on('push button', 'Open a message box')
        x, y, _, _ = self.session.settled_window(QUESTION).frame
        self.session.click(x + 14, y + 11)
        time.sleep(1)
        self.assertIsNone(self.session.window(QUESTION))
        self.assertIsNotNone(self.session.window(self.title))


class WindowWithShadow:
    """The margin in which a window draws its shadow, which its frame does not count."""

    def test_frames_are_those_of_what_is_seen(self):
        program = os.path.join(os.path.dirname(GALLERY), 'sizes_program')
        if not os.path.exists(program):
            self.skipTest('%s is not built' % program)
        self.session.launch([program]).wait(60)
        with open(self.session.path('program.log'), encoding='utf-8') as log:
            told = [line.strip() for line in log if ': ' in line]
        self.assertEqual(told, [
            'shown: 500 x 400, shadow', 'restored: 500 x 400, shadow',
            'shown again: 500 x 400, shadow', 'framed: 600 x 450, shadow',
            'from a state: 600 x 450, shadow', 'back to the state: 600 x 450, shadow',
            'from maximised to the state: 600 x 450, shadow',
            'native: margin 0', 'with its own decorations: 600 x 450, shadow',
            'fixed: 400 x 300, shadow', 'laid out: 300 x 222, shadow',
            'laid out anew: 300 x 282, shadow', 'maximised first: 450 x 350, shadow',
            'dialog: 400 x 322, shadow', 'dialog again: 400 x 322, shadow'])


class OtherPrograms:
    """Pictures that come from other programs, and what the user sets for all programs."""

    def open_neighbour(self):
        """A second program with a small window."""
        program = os.path.join(os.path.dirname(GALLERY), 'neighbour_program')
        if not os.path.exists(program):
            self.skipTest('%s is not built' % program)
        self.start('neighbour', program, PICTURE)
        self.session.shown_window('Neighbour')
        return self.session.settled_window('Neighbour').frame

    def start(self, name, *command, **more):
        process = self.session.spawn(name, command, QT_QPA_PLATFORM=self.session.PLATFORM, **more)
        self.addCleanup(process.wait)
        self.addCleanup(process.terminate)

    def test_an_image_well_takes_a_dropped_file_and_a_pasted_picture(self):
        self.open('--page', 'images')
        well = self.program.find('graphic', 'Cover')
        self.assertIn('Drop a picture', well.description)
        x, y, width, height = self.open_neighbour()
        start = (x + width / 2, y + height - 30)
        middle = well.center(self.title)
        half = [length / 2 - 12 for length in well.extents()[2:]]
        # A corner of the well beside the neighbour, wherever the desktop has put that.
        end = next((px, py) for px in (middle[0] - half[0], middle[0] + half[0])
                   for py in (middle[1] - half[1], middle[1] + half[1])
                   if not (x - 24 < px < x + width + 24 and y - 24 < py < y + height + 24))
        self.session.drag(start, (end[0] - start[0], end[1] - start[1]))
        time.sleep(1)
        self.picture('dropped')
        self.assertEqual(well.description, '', 'the well is empty after the drop')

        self.session.click(*end)
        self.session.press('Delete')
        time.sleep(0.5)
        self.assertIn('Drop a picture', well.description)
        copying = (['wl-copy', '--foreground', '--type', 'image/png']
                   if self.session.PLATFORM == 'wayland'
                   else ['xclip', '-quiet', '-selection', 'clipboard', '-t', 'image/png', '-i'])
        if not shutil.which(copying[0]):
            self.skipTest('%s is not installed' % copying[0])
        self.start('copying', 'sh', '-c', 'exec "$@" < "$0"', PICTURE, *copying)
        time.sleep(1)
        self.session.click(*end)
        self.session.press('Ctrl+v')
        time.sleep(1)
        self.assertEqual(well.description, '', 'nothing was pasted')

    def test_a_window_turns_dark_and_light_with_the_desktop(self):
        if not shutil.which('convert'):
            self.skipTest('ImageMagick is not installed')
        portal = subprocess.Popen([sys.executable, os.path.join(HERE, 'portal.py')], text=True,
                                  stdin=subprocess.PIPE, env=self.session.environment)
        self.addCleanup(portal.wait)
        self.addCleanup(portal.stdin.close)
        self.session.wait_for_service('org.freedesktop.portal.Desktop')
        frame = self.open_neighbour()
        for scheme, is_dark in (('1', True), ('2', False), ('1', True)):
            print('org.freedesktop.appearance color-scheme', scheme, file=portal.stdin, flush=True)
            time.sleep(1)
            x, y, width, height = frame
            self.assertEqual(self.brightness(x + width / 2, y + height / 2) < 0.5, is_dark)


class TiledWindow:
    """A window that the desktop has tiled, where the program has no say in its size."""

    def test_an_edge_does_not_resize_it_by_hand(self):
        before = self.open().frame
        self.assertEqual(before[2:], self.session.size)
        self.session.drag(self.edge(1, 0), (-120, 0))
        self.assertEqual(self.settled().frame, before)
        x, y, width, _ = self.program.children()[0].extents()
        self.assertEqual(width, before[2], 'the program resized its window')


class NamedWidgets:
    """What screen readers find, which is the same on every desktop."""

    def test_the_window_its_buttons_and_all_that_takes_the_focus_have_names_on_every_page(self):
        for page in PAGES:
            with self.subTest(page):
                try:
                    self.open('--page', page)
                    nameless = ['%s at %s' % (item, item.extents()) for item in self.program.all()
                                if (item.is_focusable or item.role == 'push button')
                                and item.is_showing and not item.name]
                    self.assertEqual(nameless, [])
                    window = self.program.children()[0]
                    self.assertIn(window.role, ('window', 'frame'))
                    self.assertEqual(window.name, TITLE)
                finally:
                    self.doCleanups()  # one program at a time


def _case(desktop, cases):
    bases = (cases, WindowOnDesktop, unittest.TestCase)
    return type(desktop.__name__ + cases.__name__, bases, {'desktop': desktop})


CASES = [_case(desktop, cases)
         for cases in (WindowManners, InstalledTitleBar, MessageBox, popovers.LargePopovers,
                       OtherPrograms)
         for desktop in (kwin.Kwin, kwin.KwinX11, gnome.GnomeShell, sway.Sway, x11.Openbox)]
CASES += [_case(desktop, WindowWithShadow)
          for desktop in (kwin.Kwin, kwin.KwinX11, gnome.GnomeShell)]
CASES += [_case(sway.TilingSway, TiledWindow), _case(x11.Openbox, NamedWidgets)]
globals().update({case.__name__: case for case in CASES})

if __name__ == '__main__':
    unittest.main(warnings='ignore')
