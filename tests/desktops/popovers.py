# SPDX-License-Identifier: MIT
"""Popovers that are larger than their window, which popover_program has."""
import os
import time

import screenreader

TITLE = 'Small'
FOLDER = os.path.dirname(os.path.abspath(os.environ.get('GALLERY', 'build/dev/bin/gallery')))


class LargePopovers:
    """On X11 they are windows that the program places, on Wayland popups. Their least size is 260 x
    280, the window's size 300 x 200."""

    def launch_small(self, *arguments):
        binary = os.path.join(FOLDER, 'popover_program')
        if not os.path.exists(binary):
            self.skipTest('%s is not built' % binary)
        self.process = self.session.launch([binary, *arguments])
        self.addCleanup(self.process.wait, 10)
        self.addCleanup(self.process.terminate)
        self.session.shown_window(TITLE)
        time.sleep(0.7)
        self.program = screenreader.program(self.session, 'popover_program')

    def open_small(self):
        self.launch_small()
        frame = self.session.settled_window(TITLE).frame
        self.session.drag((frame[0] + 150, frame[1] + 10), (250 - frame[0], 450 - frame[1]))
        self.session.settled_window(TITLE)

    def click_in(self, role, name):
        self.session.click(*self.program.find(role, name).center(TITLE))
        time.sleep(0.5)

    def open_popover(self, opener='Open'):
        self.click_in('push button', opener)

    def is_open(self, name='Form'):
        return bool(self.program.find_all('dialog', name))

    @property
    def events(self):
        return self.program.find('label', 'Events:').name

    def text(self, name='Name'):
        return self.program.find('text', name).text

    def test_it_has_its_size_and_the_keyboard(self):
        self.open_small()
        self.open_popover()
        self.picture('large-popover')
        self.assertEqual(self.program.find('dialog', 'Form').extents()[2:], (260, 280))
        self.session.press('a', 'b')
        self.assertEqual(self.text(), 'ab')
        self.click_in('text', 'Name')
        self.session.press('c')
        self.assertEqual(self.text(), 'abc')
        self.session.press('Esc')
        time.sleep(0.4)
        self.assertFalse(self.is_open())
        self.assertEqual(self.events, 'Events: closed')

    def test_a_key_closes_the_list_in_it_alone(self):
        self.open_small()
        self.open_popover()
        for key in ('Esc', 'Return'):
            with self.subTest(key):
                self.click_in('combo box', 'List')
                self.session.press(key)
                time.sleep(0.4)
                self.assertTrue(self.is_open(), 'the popover closed too')
        self.session.press('Shift', 'Esc')
        time.sleep(0.4)
        self.assertFalse(self.is_open())

    def test_a_click_elsewhere_closes_it_and_is_not_lost(self):
        self.open_small()
        self.open_popover()
        self.click_in('push button', 'Open')
        self.assertFalse(self.is_open(), 'its opener opens it again')
        self.assertEqual(self.events, 'Events: closed')
        for opener in ('Open', 'Half open'):
            with self.subTest(opener):
                self.open_popover(opener)
                self.assertTrue(self.is_open())
                before = self.events
                self.click_in('push button', 'Other')
                self.assertFalse(self.is_open())
                self.assertEqual(self.events, before + ' closed other')

    def test_a_popover_in_it_closes_before_it(self):
        self.open_small()
        self.open_popover()
        self.click_in('push button', 'More')
        self.picture('nested-popover')
        self.session.press('z')
        self.assertEqual(self.text('Inner name'), 'z')
        self.click_in('combo box', 'Inner list')
        for key, is_inner_open, is_outer_open in (('Esc', True, True), ('Shift', True, True),
                                                  ('Esc', False, True), ('Shift', False, True),
                                                  ('Esc', False, False)):
            self.session.press(key)
            time.sleep(0.4)
            self.assertEqual(self.is_open('Inner'), is_inner_open)
            self.assertEqual(self.is_open(), is_outer_open)
        self.open_popover()
        self.click_in('push button', 'More')
        self.click_in('text', 'Name')
        self.assertFalse(self.is_open('Inner'))
        self.assertTrue(self.is_open(), 'a click in it closed it')
        self.click_in('push button', 'More')
        self.click_in('label', 'Events')
        self.assertFalse(self.is_open())

    def test_a_dialog_of_it_can_be_used(self):
        self.open_small()
        self.open_popover()
        self.click_in('push button', 'Ask')
        self.session.press('Return')
        time.sleep(0.5)
        self.assertTrue(self.is_open())
        self.assertEqual(self.text(), 'answered')

    def test_it_appears_without_input(self):
        self.open_small()
        self.click_in('push button', 'Open later')
        self.session.press('Shift')  # some input is newer than the click
        time.sleep(1.8)
        self.assertTrue(self.is_open())
        self.session.press('a')
        self.assertEqual(self.text(), 'a')

    def test_one_that_the_program_closes_stays(self):
        self.open_small()
        self.open_popover('Keep open')
        x, y = self.program.find('title bar', '').center(TITLE)
        self.session.click(x - 60, y)
        self.session.press('Shift')
        self.assertTrue(self.is_open())

    def test_screen_readers_find_it_in_windows_of_all_classes(self):
        for window_class in ('NS::Window', 'QWidget', 'QMainWindow', 'QDialog', 'QDockWidget'):
            with self.subTest(window_class):
                try:
                    self.launch_small(window_class)
                    for keys, name in (['Space'], 'Form'), (['Tab', 'Tab', 'Tab', 'Space'], 'Inner'):
                        self.session.press(*keys)
                        form = self.program.find('dialog', name)
                        self.assertEqual(form.parent.children()[form.index], form)
                finally:
                    self.doCleanups()  # one program at a time

    def test_its_window_looks_active(self):
        self.open_small()
        self.open_popover()
        x, y = self.program.find('push button', 'Close').center(TITLE)
        path = self.session.path('window.png')
        self.session.picture(path)
        color = self.session.output_of('convert', path, '-crop', '1x1+%d+%d' % (x, y),
                                       '-format', '%[fx:saturation]', 'info:')
        self.assertGreater(float(color), 0.4, 'the close button is grey')

    def test_it_goes_with_its_window(self):
        self.open_small()
        self.open_popover()
        self.click_in('push button', 'Close')
        self.assertEqual(self.process.wait(10), 0)
