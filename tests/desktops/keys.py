# SPDX-License-Identifier: MIT
"""The kernel's codes for keys and buttons, which every Wayland compositor understands."""

BUTTONS = {'left': 0x110, 'right': 0x111, 'middle': 0x112}

CODES = {
    'Esc': 1, 'Tab': 15, 'Return': 28, 'Ctrl': 29, 'Shift': 42, 'Alt': 56, 'Space': 57, 'F4': 62,
    'F11': 87, 'Home': 102, 'Up': 103, 'Left': 105, 'Right': 106, 'End': 107, 'Down': 108,
    'Delete': 111, 'Super': 125,
}
for _first, _letters in ((2, '1234567890'), (16, 'qwertyuiop'), (30, 'asdfghjkl'), (44, 'zxcvbnm')):
    CODES.update({letter: _first + place for place, letter in enumerate(_letters)})


def codes(shortcut):
    """The codes of a shortcut such as "Alt+F4", in the order in which its keys go down."""
    return [CODES[name] for name in shortcut.split('+')]
