"""Orvanel as a user has it: the real program under Wine, driven by mouse and keyboard."""

import math
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

from PIL import Image

ROOT = pathlib.Path(__file__).resolve().parents[2]
VARIANT = os.environ.get("ORVANEL_VARIANT", "win32")
CACHE = pathlib.Path(os.environ.get("ORVANEL_CACHE", "/var/cache/orvanel"))
PROGRAM_FOLDER = ROOT / "build" / VARIANT
WINE = ROOT / "tools" / f"wine{VARIANT.removeprefix('win')}.sh"
if VARIANT == "win64":
    PREFIX = pathlib.Path(os.environ.get("ORVANEL_PREFIX") or CACHE / "prefix64")
else:  # as it is called inside the Debian of 32-bit Wine
    PREFIX = CACHE / "wine32" / (os.environ.get("ORVANEL_PREFIX") or "/root/prefix32").lstrip("/")
USER = PREFIX / "drive_c" / "users" / "root"
DOCUMENTS = USER / "Documents"
PAGES = DOCUMENTS / "Orvanel Pages"
SETTINGS = USER / "AppData" / "Local" / "Orvanel"
TEMP = USER / "Temp"
PICTURES = pathlib.Path(os.environ.get("ORVANEL_REPORTS", ROOT / "build" / "reports")) / "pictures"

SCREEN_HEIGHT = 1080
START_TIMEOUT = 40.0
STEP = 0.1


def wait_for(condition, timeout=15.0, what="condition"):
    """Polls until condition() is true and returns its value."""
    end = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {timeout} s in vain for {what}")
        time.sleep(STEP)


def xdotool(*arguments):
    result = subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True)
    return result.stdout.strip()


def capture(path, window, *options):
    """A window as it is on the screen; the picture stays in the file."""
    path.parent.mkdir(parents=True, exist_ok=True)
    command = ["/usr/bin/import-im6.q16", "-silent", *options, "-window", window, str(path)]
    subprocess.run(command, check=True)
    return Image.open(path).convert("RGB")


def windows_named(title):
    """Those on the screen."""
    return xdotool("search", "--onlyvisible", "--name", f"^{title}$").split()


def geometries(windows):
    """Place and size of each of them, asked for at once; those that close meanwhile are left out."""
    found = {}
    waiting = list(windows)
    while waiting:
        output = xdotool(*[word for window in waiting for word in ("getwindowgeometry", "--shell", window)])
        answers = []
        for block in output.split("WINDOW=")[1:]:
            values = dict(line.split("=") for line in block.splitlines()[1:])
            answers.append(tuple(int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT")))
        found.update(zip(waiting, answers))
        waiting = waiting[len(answers) + 1 :]  # the first that gave none is gone
    return found


def page_text(nodes="", colour=("-1.00", "-1.00", "-1.00"), version="004", position=(0.0, 0.0)):
    """A page as the program writes it."""
    return (
        '<?xml version="1.0" encoding="utf-8" ?>\n<page>\n'
        f"\t<offv>{version}</offv>\n\t<properties>\n"
        f"\t\t<x_position>{position[0]:.2f}</x_position>\n"
        f"\t\t<y_position>{position[1]:.2f}</y_position>\n\t\t<colour>\n"
        f"\t\t\t<red>{colour[0]}</red>\n\t\t\t<green>{colour[1]}</green>\n"
        f"\t\t\t<blue>{colour[2]}</blue>\n\t\t</colour>\n\t</properties>\n{nodes}</page>\n"
    )


def object_text(name, x, y, actions):
    """An object element; actions are (name, command) pairs."""
    lines = "".join(
        "\t\t<action>\n\t\t\t<type>command</type>\n\t\t\t<owner>0</owner>\n"
        f"\t\t\t<name>{title}</name>\n\t\t\t<command>{command}</command>\n"
        "\t\t\t<icon></icon>\n\t\t</action>\n"
        for title, command in actions
    )
    return (
        "\t<node>\n\t\t<type>object</type>\n\t\t<!-- object_id 0 -->\n"
        f"\t\t<name>{name}</name>\n\t\t<description></description>\n"
        f"\t\t<x_position>{x:.2f}</x_position>\n\t\t<y_position>{y:.2f}</y_position>\n"
        f"\t\t<model>server.obj</model>\n{lines}\t</node>\n"
    )


def page_object_text(name, x, y, file_name):
    return (
        "\t<node>\n\t\t<type>page</type>\n\t\t<!-- object_id 0 -->\n"
        f"\t\t<name>{name}</name>\n\t\t<description></description>\n"
        f"\t\t<x_position>{x:.2f}</x_position>\n\t\t<y_position>{y:.2f}</y_position>\n"
        f"\t\t<model>page_orvanel.obj</model>\n\t\t<page_file>{file_name}</page_file>\n\t</node>\n"
    )


def clean_user():
    """A user who never ran Orvanel."""
    shutil.rmtree(PAGES, ignore_errors=True)
    shutil.rmtree(SETTINGS, ignore_errors=True)
    (PROGRAM_FOLDER / "options.xml").unlink(missing_ok=True)
    TEMP.mkdir(exist_ok=True)


def write_page(name, text):
    PAGES.mkdir(parents=True, exist_ok=True)
    (PAGES / name).write_bytes(text.encode("latin-1").replace(b"\n", b"\r\n"))


# In the order in which the program asks for them.
OPTION_KEYS = (
    "show_home_page_title maintain_zoom_level initial_zoom_level page_folder "
    "action_double_click_run action_exit_action_1 action_exit_any action_menu_icons "
    "action_menu_title splash_screen confirm_page_file_delete confirm_object_delete "
    "remember_last_model disable_graphics_card_warning good_graphics_card reflections "
    "object_rotation zoom_transition object_transitions floor_inertia anti_aliasing text_shadows "
    "object_inertia check_for_updates check_for_updates_next"
).split()


def write_options(folder=SETTINGS, **values):
    """An options file holding only these keys, and no splash screen: it would hide what is tested."""
    folder.mkdir(parents=True, exist_ok=True)
    values = {"splash_screen": 0, **values}
    keys = "".join(
        f"\t<{key}>{values[key]}</{key}>\n" for key in sorted(values, key=OPTION_KEYS.index)
    )
    (folder / "options.xml").write_text(
        '<?xml version="1.0" encoding="utf-8" ?>\n<orvanel_options>\n\t<offv>002</offv>\n'
        f"{keys}</orvanel_options>\n"
    )


def run_wine(*arguments):
    """What a program prints. Wine's services may be started along and keep a pipe open: hence a file."""
    with tempfile.TemporaryFile() as output:
        subprocess.run(
            [str(WINE), *map(str, arguments)],
            stdout=output,
            stderr=subprocess.DEVNULL,
            timeout=60,
        )
        output.seek(0)
        return output.read().decode("utf-8", "replace")


def window_texts():
    """The visible windows: lists of class, title and control texts."""
    output = run_wine(PROGRAM_FOLDER / "tests" / "window_texts.exe")
    return [line.split("|") for line in output.splitlines() if "|" in line]


class Orvanel:
    """One running instance."""

    def __init__(self, *arguments, through=(), folder=PROGRAM_FOLDER):
        """through: a command that runs the one behind it. folder: where the program is."""
        self.process = subprocess.Popen(
            [*through, str(WINE), str(folder / "orvanel.exe"), *arguments], cwd=folder
        )
        self.window = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.close_everything()

    def close_everything(self):
        """Ends the program as a user who closes its windows would; by its id if that fails."""
        end = time.monotonic() + 10
        while self.process.poll() is None and time.monotonic() < end:
            for window in windows_named("Orvanel"):
                xdotool("windowfocus", window, "key", "Escape")
            time.sleep(0.3)
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()

    def minimise(self):
        xdotool("windowminimize", "--sync", self.window)
        wait_for(lambda: self.find_window() is None, what="the window to be minimised")

    def is_in_front(self):
        return self.find_window() == self.window == xdotool("getactivewindow")

    def find_window(self):
        for window, geometry in geometries(windows_named("Orvanel")).items():
            if geometry[2] >= 640 and geometry[3] >= 480:
                return window
        return None

    @staticmethod
    def geometry(window):
        return geometries([window]).get(window)

    def wait_ready(self):
        """Waits until the main window shows a drawn page."""
        self.window = wait_for(self.find_window, START_TIMEOUT, "the main window")
        wait_for(lambda: self.picture().getpixel((600, 5)) != (0, 0, 0), 20, "the first frame")
        time.sleep(0.5)
        return self

    def picture(self, name=None):
        """The client area as an image; kept under this name when one is given."""
        return capture(PICTURES / f"{VARIANT}-{name or 'last'}.png", self.window)

    def screen_position(self, x, y, zoom_level=4, position=(0.0, 0.0)):
        """Client pixel of an object standing at floor position x, y."""
        _, _, width, height = self.geometry(self.window)
        divisor = SCREEN_HEIGHT // 30
        half_angle = math.radians(height / divisor) / 2
        pixels = (height / 2) / math.tan(half_angle) / (160 - 10 * zoom_level)
        return (
            round(width / 2 + (x - position[0]) * pixels),
            round(height / 2 - (y - position[1]) * pixels),
        )

    def move_to(self, x, y):
        xdotool("mousemove", "--window", self.window, x, y)
        time.sleep(0.4)  # the hover test runs every 100 ms

    def rest_mouse(self):
        """Moves the pointer where no object is and waits until nothing moves any more."""
        self.move_to(5, 5)
        time.sleep(1.0)

    def double_click(self, x, y):
        self.move_to(x, y)
        xdotool("click", "--repeat", 2, "--delay", 60, 1)

    def key(self, *names):
        xdotool("windowfocus", "--sync", self.window)
        xdotool("key", *names)
        time.sleep(0.4)

    def exit_code(self, timeout=15):
        return self.process.wait(timeout)

    @staticmethod
    def message():
        """Caption and text of the message box on screen, or None."""
        for parts in window_texts():
            if parts[0] == "#32770":
                return parts[1], " ".join(parts[2:])
        return None

    def wait_message(self, timeout=START_TIMEOUT):
        return wait_for(self.message, timeout, "a message box")

    @staticmethod
    def answer(key="Return"):
        """Presses a key in the message box, which closes."""
        for window, geometry in geometries(windows_named("Orvanel")).items():
            if geometry[3] < 480:
                xdotool("windowfocus", "--sync", window, "key", key)
                wait_for(lambda: window not in windows_named("Orvanel"), what="the message to close")
