"""A scan of the models folder that takes long: whoever works meanwhile, or ends the program."""

import os
import pathlib
import shutil
import socket

import menus
import pytest
from dialogs import Dialog
from orvanel import PROGRAM_FOLDER, Orvanel, page_text, wait_for, write_page, xdotool
from update_server import answers_during

FOLDER = PROGRAM_FOLDER / "crowded"
MODELS = FOLDER / "models"
ENTRIES = 60_000  # of the folder; each is looked at and opened in vain
DETOURS = 8  # links on the way from an entry to where it ends
TURNS = 800  # in each: they take the system its time, so that the scan lasts longer than a test
NEW_OBJECT = "New Object"


@pytest.fixture(scope="module")
def crowd():
    """The program beside two models and many entries with a model's name that cannot be opened."""
    shutil.rmtree(FOLDER, ignore_errors=True)
    MODELS.mkdir(parents=True)
    shutil.copy(PROGRAM_FOLDER / "orvanel.exe", FOLDER)
    shutil.copytree(PROGRAM_FOLDER / "pages", FOLDER / "pages")
    for name in ("server.obj", "page_orvanel.obj"):
        shutil.copy(PROGRAM_FOLDER / "models" / name, MODELS)
    (FOLDER / "t").mkdir()
    for number in range(1, DETOURS):
        os.symlink("t/../" * TURNS + f"way{number - 1}", FOLDER / f"way{number}")
    for number in range(ENTRIES):
        os.symlink("../way", MODELS / f"{number}.obj")
    before = os.getcwd()
    os.chdir(FOLDER)  # the name of a socket is limited in length
    with socket.socket(socket.AF_UNIX) as end:
        end.bind("way0")
        os.chdir(before)
        yield
    shutil.rmtree(FOLDER)


@pytest.fixture
def way(crowd):
    """The last link of the way. Without it the scan is done in no time."""
    link = FOLDER / "way"
    os.symlink("t/../" * TURNS + f"way{DETOURS - 1}", link)
    yield link
    link.unlink(missing_ok=True)


def scan_runs():
    """Whether any process has the models folder open."""
    for link in pathlib.Path("/proc").glob("[0-9]*/fd/*"):
        try:
            if os.readlink(link).endswith(str(MODELS)):
                return True
        except OSError:
            pass  # closed meanwhile
    return False


def start():
    write_page("home.orvl", page_text("", ("0.10", "0.60", "0.10")))
    program = Orvanel(folder=FOLDER).wait_ready()
    wait_for(scan_runs, what="the scan")
    return program


@pytest.mark.parametrize("keys", ["Escape", "alt+F4"])
def test_ending_the_program_during_a_scan_does_not_crash(way, keys):
    with start() as program:
        program.key(keys)
        assert program.exit_code() == 0
    assert not scan_runs()


def test_the_window_answers_while_a_dialog_waits_for_the_scan(way):
    with start() as program:
        program.key("Tab")
        menus.choose(program, 640, 700, menus.EDIT_PAGE, NEW_OBJECT)
        longest, count = answers_during(3, PROGRAM_FOLDER / "tests" / "window_answers.exe")()[
            "orvanel:main_window"
        ]
        assert scan_runs()
        assert count > 10 and longest < 2000.0  # milliseconds; generous, for a busy machine
        assert not xdotool("search", "--onlyvisible", "--name", f"^{NEW_OBJECT}$")
        way.unlink()
        dialog = Dialog(NEW_OBJECT)
        dialog.key("Escape")
        dialog.wait_closed()
        program.key("Tab")
        program.key("Escape")
        assert program.exit_code() == 0
