"""The program's pop-up menus as the mouse finds them: entries below each other, of fixed heights."""

import time

from orvanel import PICTURES, VARIANT, capture, geometries, wait_for, xdotool

ENTRY = 21  # pixels high
SEPARATOR = 5
FRAME = 3  # of the menu's window, at least

LINE = None  # a separator in the lists below

PAGE = ["Edit This Page", "Center Page", LINE, "Options", "About"]
EDIT_PAGE = [
    "Finish Editing",
    "Center Page",
    LINE,
    "New Object",
    "New Label",
    "New Page",
    LINE,
    "Paste",
    LINE,
    "Undo",
    "Redo",
    "Revert to saved",
    LINE,
    "Set Page Center",
    "Page Color",
    LINE,
    "Options",
    "About",
]
PAGE_COLOR = [
    "Default",
    LINE,
    "Blue",
    "Gray",
    "Turquoise",
    "Purple",
    "Orange",
    "Black",
    LINE,
    "Custom...",
]
EDIT_OBJECT = [
    "Properties",
    LINE,
    "Cut",
    "Copy",
    "Delete",
    "Paste Actions",
    LINE,
    "Draw Link",
    "Remove Links",
    LINE,
    "Align With Object",
    "Align With Grid",
]
EDIT_PAGE_OBJECT = [entry for entry in EDIT_OBJECT if entry != "Paste Actions"]
EDIT_LABEL = [
    "Properties",
    LINE,
    "Cut",
    "Copy",
    "Delete",
    LINE,
    "Align With Object",
    "Align With Grid",
]


def windows(program):
    """Window and geometry of each open menu, the outermost first; of message boxes too."""
    visible = xdotool("search", "--onlyvisible", "--class", ".*").split()
    return [
        (window, geometry)
        for window, geometry in geometries(visible).items()
        if window != program.window and 100 < geometry[2] < 640
    ]


def is_open(program, window):
    return window in [found for found, _ in windows(program)]


def open_at(program, x, y):
    """Right click; returns window and geometry of the menu that opens."""
    xdotool("mousemove", "--window", program.window, x, y, "click", 3)
    return wait_for(lambda: windows(program), 20, "the menu")[-1]


def offset(entries, name):
    """Pixels from the top of the menu to the middle of an entry."""
    top = 0
    for entry in entries:
        height = SEPARATOR if entry is LINE else ENTRY
        if entry == name:
            return top + height // 2
        top += height
    raise AssertionError(f"no entry {name}")


def frame(geometry, entries):
    """Width of the frame round the entries; asserts that nothing else is in the menu."""
    height = sum(SEPARATOR if entry is LINE else ENTRY for entry in entries)
    assert 0 <= geometry[3] - height <= 10, f"{geometry[3]} pixels for {height}"
    return (geometry[3] - height) // 2


def move_onto(geometry, entries, name):
    top = geometry[1] + frame(geometry, entries)
    xdotool("mousemove", geometry[0] + 60, top + offset(entries, name))


def click_on(geometry, entries, name):
    move_onto(geometry, entries, name)
    xdotool("click", 1)


def choose(program, x, y, entries, name):
    """Right click at a client position and a click on an entry."""
    window, geometry = open_at(program, x, y)
    click_on(geometry, entries, name)
    wait_for(lambda: not is_open(program, window), what="the menu to close")


def photograph(window, name):
    """Keeps a picture of an open menu at its real size."""
    capture(PICTURES / f"{VARIANT}-menu-{name}.png", window)


def close():
    xdotool("key", "Escape")
    time.sleep(0.3)
