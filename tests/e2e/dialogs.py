"""The program's dialogs as mouse and keyboard find them: controls by what stands on or before them."""

import subprocess
import time

from orvanel import PICTURES, PROGRAM_FOLDER, VARIANT, run_wine, wait_for, xdotool

READER = PROGRAM_FOLDER / "tests" / "window_texts.exe"
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
        time.sleep(0.3)
        self.look()

    def find(self):
        found = xdotool("search", "--onlyvisible", "--name", f"^{self.title}$").split()
        return found[0] if found else None

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

    def focus(self):
        for control in self.controls:
            if control.has_focus():
                return control
        return None

    def photograph(self, name):
        PICTURES.mkdir(parents=True, exist_ok=True)
        path = PICTURES / f"{VARIANT}-dialog-{name}.png"
        frame = ["-frame", "-window", self.window]
        subprocess.run(["/usr/bin/import-im6.q16", "-silent", *frame, str(path)], check=True)

    def wait_closed(self):
        wait_for(lambda: self.find() is None, what=f"the dialog {self.title} to close")

    # ---- with the mouse

    def click(self, caption):
        click_at(*self.control(caption).middle())

    def click_tab(self, index):
        """By its place: the captions of tabs are no controls."""
        tab = [control for control in self.controls if control.kind == "SysTabControl32"][0]
        click_at(tab.left + 20 + 48 * index, tab.top + 10)
        self.look()

    # ---- with the keyboard

    @staticmethod
    def key(*names):
        for name in names:
            xdotool("key", "--clearmodifiers", name)
            time.sleep(0.05)
        time.sleep(0.2)


def click_at(x, y):
    xdotool("mousemove", x, y)
    time.sleep(0.1)
    xdotool("click", 1)
    time.sleep(0.2)


def type_text(text):
    xdotool("type", "--delay", 8, text)
    time.sleep(0.2)


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
