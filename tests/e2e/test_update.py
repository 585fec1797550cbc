"""The update service of the program as it is shipped: the vendor's server is behind the system's proxy."""

import re
import subprocess
import time

import pytest
from PIL import Image

from orvanel import (
    PAGES,
    PICTURES,
    PROGRAM_FOLDER,
    SETTINGS,
    TEMP,
    VARIANT,
    Orvanel,
    object_text,
    page_text,
    wait_for,
    window_texts,
    write_options,
    write_page,
    xdotool,
)
from packets import ALONE, network_alone, packets_sent
from update_server import BROWSER_KEY, SETTINGS_KEY, RegistryValue, UpdateServer, answers_during

TOOLS = PROGRAM_FOLDER / "tests"
TITLE = "New version available"
SITE = "www.orvanel.example"
DAY = 86400
INSTALLER = TEMP / "orvanel_setup.exe"
INSTALLER_TRACE = TEMP / "orvanel_setup.trace"
BROWSER_TRACE = TEMP / "leave_trace.trace"
TIME_OF_CHECK = 2.0  # seconds from the start until the program asks
ANSWER_LIMIT = 250.0  # milliseconds


def wine_path(path):
    return "Z:" + str(path).replace("/", "\\")


@pytest.fixture(scope="module")
def vendor():
    """The server, the system's proxy as a user would set it, and a browser that leaves a trace."""
    server = UpdateServer((TOOLS / "leave_trace.exe").read_bytes())
    browser = f'"{wine_path(TOOLS / "leave_trace.exe")}" "%1"'
    changed = []
    try:
        for value in (
            (SETTINGS_KEY, "ProxyServer", "REG_SZ", f"127.0.0.1:{server.port}"),
            (SETTINGS_KEY, "ProxyEnable", "REG_DWORD", "1"),
            (BROWSER_KEY, None, "REG_SZ", browser),
        ):
            changed.append(RegistryValue(*value))
        yield server
    finally:
        for value in changed:
            value.restore()
        server.close()


@pytest.fixture(autouse=True)
def fresh(vendor):
    vendor.reset()
    remove_files()
    write_options(check_for_updates=1)
    yield
    vendor.speak()
    remove_files()


def remove_files():
    for path in (INSTALLER, INSTALLER_TRACE, BROWSER_TRACE):
        path.unlink(missing_ok=True)


def dialog_window():
    windows = xdotool("search", "--onlyvisible", "--name", f"^{TITLE}$").split()
    return windows[0] if windows else None


def dialog_text():
    """The text that the dialog shows, None when there is no dialog."""
    for parts in window_texts():
        if parts[:2] == ["#32770", TITLE]:
            return next((part for part in parts[2:] if part.endswith((".", "?"))), "")
    return None


def wait_offer():
    return wait_for(dialog_window, 30, "the offer of the new version")


def press(window, key):
    xdotool("windowfocus", "--sync", window)
    xdotool("key", key)


def picture(window, name):
    PICTURES.mkdir(parents=True, exist_ok=True)
    path = PICTURES / f"{VARIANT}-update-{name}.png"
    command = ["/usr/bin/import-im6.q16", "-silent", "-window", window, str(path)]
    if subprocess.run(command, check=False).returncode != 0:
        return None
    return Image.open(path).convert("RGB")


def bar_length(image):
    """Pixels of the longest row of one strong colour: what the progress bar is filled with."""

    def is_filled(pixel):
        return max(pixel) - min(pixel) > 100 and pixel[2] == max(pixel)

    # Right of the picture, below the caption.
    return max(
        sum(is_filled(image.getpixel((x, y))) for x in range(50, image.width))
        for y in range(30, image.height)
    )


def next_offer():
    """The option as the file has it."""
    text = (SETTINGS / "options.xml").read_text()
    found = re.search(r"<check_for_updates_next>(\d+)<", text)
    return int(found[1]) if found else 0  # not written yet


def expect_answers(answers, *names):
    for name in names:
        longest, count = answers[name]
        assert count > 50 and longest < ANSWER_LIMIT, answers


def quit_program(program):
    """Waits half as long for the end as a request would have waited for a silent server."""
    program.key("Escape")
    return program.exit_code()


def test_a_new_version_is_found_offered_downloaded_with_progress_and_started(vendor):
    with Orvanel().wait_ready() as program:
        window = wait_offer()
        assert dialog_text() == (
            "A new version of Orvanel (1.5) is available.  Would you like to download it now?"
        )
        picture(window, "offer")
        (request,) = vendor.requests
        assert request.startswith(f"GET http://{SITE}/current_version.xml HTTP/1.1\r\nHost: {SITE}\r\n")
        assert "\r\nUser-Agent: Orvanel/1.4.1" in request

        vendor.may_send_installer.clear()
        press(window, "Return")
        wait_for(lambda: dialog_text() == f"Connecting to {SITE}...", what="the connection")
        picture(window, "connecting")
        vendor.may_send_installer.set()
        downloading = f"Downloading the latest version from {SITE}..."
        wait_for(lambda: dialog_text() == downloading, what="the download")
        lengths = []
        while not INSTALLER_TRACE.exists() and program.process.poll() is None:
            image = picture(window, f"downloading{len(lengths) % 8}")
            if image:
                lengths.append(bar_length(image))
            time.sleep(0.2)
        picture(window, "completed")
        assert program.exit_code() == 0
        wait_for(INSTALLER_TRACE.exists, what="the file that the installer leaves")
        assert INSTALLER_TRACE.read_text().strip().strip('"').lower().endswith("\\orvanel_setup.exe")
        assert INSTALLER.read_bytes() == vendor.installer
        assert lengths == sorted(lengths) and len(set(lengths)) >= 4, lengths
        assert not BROWSER_TRACE.exists()


def test_the_edited_page_is_saved_before_the_update_and_the_windows_answer_all_the_while(vendor):
    write_page("home.orvl", page_text(object_text("Moved", 0.0, 0.0, [])))
    vendor.may_tell_version.clear()
    vendor.chunk_pause = 0.1
    with Orvanel().wait_ready() as program:
        program.key("Tab")
        x, y = program.screen_position(0, 0)
        program.move_to(x, y)
        xdotool("mousedown", 1)
        for step in range(1, 11):
            xdotool("mousemove", "--window", program.window, x + 15 * step, y)
            time.sleep(0.03)
        time.sleep(0.3)  # so that it does not glide on
        xdotool("mouseup", 1)
        vendor.may_tell_version.set()
        window = wait_offer()
        measured = answers_during(60, TOOLS / "window_answers.exe")
        press(window, "Return")
        assert program.exit_code(30) == 0
        expect_answers(measured(), "orvanel:main_window", "#32770")
        wait_for(INSTALLER_TRACE.exists, what="the file that the installer leaves")
    saved = (PAGES / "home.orvl").read_text()
    assert float(re.search(r"<name>Moved.*?<x_position>([-0-9.]+)<", saved, re.S)[1]) > 1.0


def test_cancelling_sets_check_for_updates_next_one_day_ahead_and_a_restart_shows_no_offer(vendor):
    with Orvanel().wait_ready() as program:
        press(wait_offer(), "Escape")
        wait_for(lambda: dialog_window() is None, what="the dialog to close")
        declined = time.time()
        assert abs(wait_for(next_offer, what="the option") - (declined + DAY)) < 60
        assert quit_program(program) == 0
    with Orvanel().wait_ready() as program:
        wait_for(lambda: len(vendor.asked_for("current_version.xml")) == 2, what="the second check")
        time.sleep(2)
        assert dialog_window() is None
        assert quit_program(program) == 0
    write_options(check_for_updates=1, check_for_updates_next=int(time.time()) - 1)
    with Orvanel().wait_ready() as program:  # a day later
        press(wait_offer(), "Escape")
    assert not vendor.asked_for("orvanel_setup.exe")


def test_the_offer_waits_until_a_menu_is_closed(vendor):
    vendor.may_tell_version.clear()
    with Orvanel().wait_ready() as program:
        program.move_to(640, 940)
        xdotool("click", 3)
        time.sleep(1)
        vendor.may_tell_version.set()
        time.sleep(3)
        assert dialog_window() is None
        picture("root", "menu")
        xdotool("key", "Escape")
        press(wait_offer(), "Escape")
        assert quit_program(program) == 0


def packets_of_a_run(seconds):
    with network_alone(), Orvanel(through=ALONE).wait_ready() as program:
        time.sleep(seconds)
        assert dialog_window() is None
        sent = packets_sent()
        assert quit_program(program) == 0
    return sent


def test_with_check_for_updates_0_there_is_no_network_traffic_at_all(vendor):
    write_options(check_for_updates=0)
    assert packets_of_a_run(TIME_OF_CHECK + 4) == 0
    with Orvanel().wait_ready() as program:
        time.sleep(TIME_OF_CHECK + 4)
        assert dialog_window() is None
        assert quit_program(program) == 0
    assert vendor.connections == 0


def test_with_check_for_updates_1_the_same_count_of_packets_is_not_0(vendor):
    assert packets_of_a_run(TIME_OF_CHECK + 4) > 0
    assert vendor.connections == 0, "the vendor is not in that network"


def test_a_download_that_breaks_off_midway_deletes_the_file_and_opens_the_download_page(vendor):
    vendor.broken_off_after = len(vendor.installer) // 2
    vendor.chunk_pause = 0.1
    with Orvanel().wait_ready() as program:
        press(wait_offer(), "Return")
        assert program.exit_code(30) == 0
    wait_for(BROWSER_TRACE.exists, what="the browser")
    assert f"http://{SITE}/download.html" in BROWSER_TRACE.read_text()
    assert not INSTALLER.exists()
    assert not INSTALLER_TRACE.exists()


def test_a_failed_request_is_told_and_the_button_tries_again(vendor):
    with Orvanel().wait_ready() as program:
        window = wait_offer()
        vendor.installer_status = "503 Busy"
        press(window, "Return")
        wait_for(lambda: dialog_text() == f"Failed to connect to {SITE}.", what="the failure")
        picture(window, "failed")
        vendor.installer_status = vendor.GOOD
        vendor.chunk_pause = 0
        press(window, "Return")
        assert program.exit_code(30) == 0
    wait_for(INSTALLER_TRACE.exists, what="the file that the installer leaves")
    assert len(vendor.asked_for("orvanel_setup.exe")) == 2


def test_a_silent_server_keeps_no_window_from_answering(vendor):
    vendor.may_send_installer.clear()
    with Orvanel().wait_ready() as program:
        window = wait_offer()
        measured = answers_during(6, TOOLS / "window_answers.exe")
        press(window, "Return")
        wait_for(lambda: vendor.asked_for("orvanel_setup.exe"), what="the request")
        expect_answers(measured(), "orvanel:main_window", "#32770")
        press(window, "Escape")
        wait_for(lambda: dialog_window() is None, what="the dialog to close")
        assert quit_program(program) == 0
    assert not INSTALLER.exists()


def test_a_server_that_does_not_tell_its_version_keeps_neither_the_window_nor_the_end_waiting(vendor):
    vendor.may_tell_version.clear()
    with Orvanel().wait_ready() as program:
        wait_for(lambda: vendor.connections, what="the check")
        expect_answers(answers_during(4, TOOLS / "window_answers.exe")(), "orvanel:main_window")
        assert quit_program(program) == 0
