"""The program's dialogs as mouse and keyboard find them: controls by what stands on or before them."""

import time

from orvanel import (
    PICTURES,
    PROGRAM_FOLDER,
    VARIANT,
    capture,
    run_wine,
    wait_for,
    windows_named,
    xdotool,
)
from PIL import ImageGrab

READER = PROGRAM_FOLDER / "tests" / "window_texts.exe"
BOX_ENTRY = 13  # pixels high, in an open combo box
KEY_TIME = 20  # milliseconds from key to key
LABELLED = ("Edit", "ComboBox", "msctls_trackbar32", "SysTabControl32")


class Control:
    """One control on the screen."""

    def __init__(self, line):
        parts = line.split("|")
        self.kind, self.text = parts[0], "|".join(parts[2:-5]).replace("&", "")
        self.id = int(parts[1])
        self.left, self.top, self.right, self.bottom = map(int, parts[-5:-1])
        self.state = parts[-1].split(",")

    def middle(self):
        return (self.left + self.right) // 2, (self.top + self.bottom) // 2

    def is_checked(self):
        return "checked" in self.state

    def is_disabled(self):
        return "disabled" in self.state

    def has_focus(self):
        return "focus" in self.state


class Dialog:
    """An open dialog, found by its title."""

    def __init__(self, title, timeout=20):
        self.title = title
        self.window = wait_for(self.find, timeout, f"the dialog {title}")
        wait_for(self.is_active, timeout, f"the dialog {title} to be active")
        self.look()

    def find(self):
        found = windows_named(self.title)
        return found[0] if found else None

    def is_active(self):
        return xdotool("getactivewindow") == self.window

    def look(self):
        """Reads the controls again."""
        output = run_wine(READER, self.title)
        self.controls = [Control(line) for line in output.splitlines() if line.count("|") >= 7]
        return self

    def control(self, caption):
        """By its own text; the control behind it for a caption that stands before one."""
        for i, control in enumerate(self.controls):
            if control.text != caption:
                continue
            if control.kind == "Static" and self.controls[i + 1].kind in LABELLED:
                return self.controls[i + 1]
            return control
        raise AssertionError(f"no control {caption} in {self.title}")

    def by_id(self, number):
        return [control for control in self.controls if control.id == number][0]

    def of_kind(self, kind):
        return [control for control in self.controls if control.kind == kind][0]

    def focus(self):
        for control in self.controls:
            if control.has_focus():
                return control
        return None

    def wait(self, condition, what):
        """Reads the controls until they are as they should be."""
        wait_for(lambda: condition(self.look()), what=what)

    def wait_text(self, caption, text):
        self.wait(lambda _: self.control(caption).text == text, f"{text} in {caption}")

    def wait_focus(self, caption):
        self.wait(lambda _: self.focus() is self.control(caption), f"the focus on {caption}")

    @staticmethod
    def picture_of(control):
        """As it is on the screen at this moment."""
        return ImageGrab.grab((control.left, control.top, control.right, control.bottom))

    def photograph(self, name):
        """For the eye: what was done last may still be painted."""
        time.sleep(0.2)
        capture(PICTURES / f"{VARIANT}-dialog-{name}.png", self.window, "-frame")

    def wait_closed(self):
        wait_for(lambda: self.find() is None, what=f"the dialog {self.title} to close")

    # ---- with the mouse

    def click(self, caption):
        click_at(*self.control(caption).middle())

    def click_tab(self, index):
        """By its place: the captions of tabs are no controls."""
        tab = self.of_kind("SysTabControl32")
        before = [control.id for control in self.controls]
        click_at(tab.left + 20 + 48 * index, tab.top + 10)
        self.wait(lambda _: [control.id for control in self.controls] != before, "the other tab")

    def choose(self, caption, entry):
        """The entry of a combo box in this place of its list."""
        box = self.control(caption)
        place = (box.middle()[0], box.bottom + 1 + entry * BOX_ENTRY + BOX_ENTRY // 2)
        closed = window_under(*place)
        click_at(*box.middle())
        wait_for(lambda: window_under(*place) != closed, what=f"the list of {caption}")
        xdotool("click", 1)

    # ---- with the keyboard

    @staticmethod
    def key(*names):
        xdotool("key", "--clearmodifiers", "--delay", KEY_TIME, *names)


# The program takes in order what mouse and keyboard do: nothing is waited for in between.


def click_at(x, y):
    xdotool("mousemove", x, y, "click", 1)


def type_text(text):
    xdotool("type", "--delay", 8, text)


def window_under(x, y):
    """Moves the mouse there and returns the window that it is over, of those on the screen itself."""
    location = xdotool("mousemove", x, y, "getmouselocation", "--shell")
    return location.split("WINDOW=")[1]


def wait_text(program, text):
    """Waits for the message box that says this."""
    wait_for(lambda: text in (program.message() or ("", ""))[1], what=f"the message {text}")


def answer_with_mouse(program, text, button):
    wait_text(program, text)
    output = run_wine(READER, "Orvanel")
    for line in output.splitlines():
        if line.count("|") >= 7 and Control(line).text == button:
            click_at(*Control(line).middle())
            return
    raise AssertionError(f"no button {button} in the message {text}")
