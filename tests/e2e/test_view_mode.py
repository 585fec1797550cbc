"""What a user does before touching any menu: start, look, zoom, scroll, run, hand over, quit."""

import time

import pytest

from orvanel import (
    PAGES,
    PROGRAM_FOLDER,
    ROOT,
    SETTINGS,
    START_TIMEOUT,
    TEMP,
    Orvanel,
    clean_user,
    object_text,
    page_object_text,
    page_text,
    wait_for,
    write_options,
    write_page,
    xdotool,
)

RED_PAGE = ("0.60", "0.10", "0.10")
GREEN_PAGE = ("0.10", "0.60", "0.10")
EXIT_FAILED_TO_START = 1  # as in app/orvanel.cpp


def floor_colour(program):
    """A spot of floor without objects near the window's bottom edge."""
    picture = program.picture()
    return picture.getpixel((picture.width // 2 + 3, picture.height - 8))


def is_reddish(pixel):
    return pixel[0] > 2 * pixel[1] and pixel[0] > 2 * pixel[2]


def is_greenish(pixel):
    return pixel[1] > 2 * pixel[0] and pixel[1] > 2 * pixel[2]


def marker_page(marker, **more):
    """A page with one object in the middle whose first action leaves a file behind."""
    command = f"cmd.exe /c copy /y c:\\windows\\win.ini c:\\users\\root\\Temp\\{marker}-$NAME.txt"
    return page_text(object_text("Marker", 0.0, 0.0, [("Leave a file", command)]), **more)


def test_first_start_copies_the_template_pages_into_the_documents_folder():
    with Orvanel().wait_ready() as program:
        program.picture("home")
        shipped = {path.name for path in (ROOT / "pages").glob("*.orvl")}
        assert shipped and shipped == {path.name for path in PAGES.glob("*.orvl")}
        for name in shipped:
            assert (PAGES / name).read_bytes() == (PROGRAM_FOLDER / "pages" / name).read_bytes()


def test_escape_ends_the_program_with_exit_code_0():
    with Orvanel().wait_ready() as program:
        program.key("Escape")
        assert program.exit_code() == 0


def test_a_double_click_on_an_object_runs_its_first_action_with_the_objects_name():
    write_page("home.orvl", marker_page("run"))
    marker = TEMP / "run-Marker.txt"
    marker.unlink(missing_ok=True)
    with Orvanel().wait_ready() as program:
        program.double_click(*program.screen_position(0, 0))
        wait_for(marker.exists, what="the file that the action leaves")
        assert program.process.poll() is None
    marker.unlink()


def test_a_double_click_quits_after_the_action_when_the_option_asks_for_it():
    write_page("home.orvl", marker_page("quit"))
    write_options(action_exit_action_1=1)
    marker = TEMP / "quit-Marker.txt"
    marker.unlink(missing_ok=True)
    with Orvanel().wait_ready() as program:
        program.double_click(*program.screen_position(0, 0))
        assert program.exit_code() == 0
        wait_for(marker.exists, what="the file that the action leaves")
    marker.unlink()


def test_a_double_click_with_shift_held_runs_the_action_but_never_quits():
    write_page("home.orvl", marker_page("shift"))
    write_options(action_exit_action_1=1)
    marker = TEMP / "shift-Marker.txt"
    marker.unlink(missing_ok=True)
    with Orvanel().wait_ready() as program:
        program.move_to(*program.screen_position(0, 0))
        xdotool("keydown", "Shift_L")
        try:
            time.sleep(0.3)
            program.double_click(*program.screen_position(0, 0))
            wait_for(marker.exists, what="the file that the action leaves")
        finally:
            xdotool("keyup", "Shift_L")
        time.sleep(1.0)
        assert program.process.poll() is None
    marker.unlink()


def test_a_double_click_on_a_page_object_opens_its_page_and_backspace_returns():
    write_page("home.orvl", page_text(page_object_text("Sub", 0, 0, "sub.orvl"), GREEN_PAGE))
    write_page("sub.orvl", page_text("", RED_PAGE))
    with Orvanel().wait_ready() as program:
        assert is_greenish(floor_colour(program))
        program.double_click(*program.screen_position(0, 0))
        wait_for(lambda: is_reddish(floor_colour(program)), what="the sub-page's red floor")
        program.picture("sub-page")
        program.key("BackSpace")
        wait_for(lambda: is_greenish(floor_colour(program)), what="the home page's green floor")


def test_a_double_click_on_empty_floor_maximises_and_restores_the_window():
    write_page("home.orvl", page_text())
    with Orvanel().wait_ready() as program:
        normal = program.geometry(program.window)[2:]
        program.double_click(200, 700)
        wait_for(lambda: program.geometry(program.window)[2] > normal[0], what="a larger window")
        time.sleep(0.5)
        program.double_click(200, 700)
        wait_for(lambda: program.geometry(program.window)[2:] == normal, what="the old size")


def test_a_second_start_brings_the_first_instance_forward_and_hands_its_page_over():
    write_page("home.orvl", page_text("", GREEN_PAGE))
    write_page("other.orvl", page_text("", RED_PAGE))
    with Orvanel().wait_ready() as first:
        assert is_greenish(floor_colour(first))
        first.minimise()
        with Orvanel("C:\\users\\root\\Documents\\Orvanel Pages\\other.orvl") as second:
            assert second.exit_code() == 0
        wait_for(first.is_in_front, what="the first instance in front")
        wait_for(lambda: is_reddish(floor_colour(first)), what="the page handed over")


def test_a_second_start_with_any_other_argument_only_brings_the_first_instance_forward():
    write_page("home.orvl", page_text("", GREEN_PAGE))
    with Orvanel().wait_ready() as first:
        first.minimise()
        with Orvanel("something else") as second:
            assert second.exit_code() == 0
        wait_for(first.is_in_front, what="the first instance in front")
        time.sleep(1.0)
        assert is_greenish(floor_colour(first))
        assert first.message() is None


def test_a_second_start_waits_while_the_first_is_starting_and_then_hands_its_page_over():
    write_page("home.orvl", page_text("", GREEN_PAGE))
    write_page("other.orvl", page_text("", RED_PAGE))
    SETTINGS.mkdir(parents=True, exist_ok=True)
    newer = "<orvanel_options>\n<offv>003</offv>\n</orvanel_options>\n"
    (SETTINGS / "options.xml").write_text(newer)
    with Orvanel() as first:
        shown = first.wait_message()[1]
        assert "It will be ignored, and default options will be used instead." in shown
        with Orvanel("C:\\users\\root\\Documents\\Orvanel Pages\\other.orvl") as second:
            time.sleep(2.0)  # long enough to get past the look for another instance
            assert second.process.poll() is None
            first.answer()
            assert second.exit_code() == 0
        first.wait_ready()
        wait_for(lambda: is_reddish(floor_colour(first)), what="the page handed over")
    assert (SETTINGS / "options.xml").read_text() == newer


def test_a_page_handed_over_while_a_message_is_shown_opens_when_it_is_answered():
    write_page("home.orvl", page_text(page_object_text("Sub", 0, 0, "missing.orvl"), GREEN_PAGE))
    write_page("other.orvl", page_text("", RED_PAGE))
    with Orvanel().wait_ready() as first:
        first.double_click(*first.screen_position(0, 0))
        first.wait_message()
        with Orvanel("C:\\users\\root\\Documents\\Orvanel Pages\\other.orvl") as second:
            assert second.exit_code() == 0
        time.sleep(1.0)
        assert not is_reddish(floor_colour(first))
        assert "Failed to open page file." in first.wait_message()[1]
        first.answer()
        wait_for(lambda: is_reddish(floor_colour(first)), what="the page handed over")


def test_a_double_click_on_an_object_of_the_shipped_home_page_starts_its_program():
    def notepad():
        return xdotool("search", "--onlyvisible", "--name", "Notepad$").split()

    with Orvanel().wait_ready() as program:
        program.double_click(*program.screen_position(-10.0, 10.0))  # the object "Notepad"
        window = wait_for(notepad, START_TIMEOUT, "the program's window")[0]
        xdotool("windowfocus", "--sync", window, "key", "alt+F4")
        wait_for(lambda: not notepad(), what="the program's end")


def test_a_page_on_the_command_line_opens_above_the_home_page():
    write_page("home.orvl", page_text("", GREEN_PAGE))
    write_page("other.orvl", page_text("", RED_PAGE))
    with Orvanel("C:\\users\\root\\Documents\\Orvanel Pages\\other.orvl").wait_ready() as program:
        assert is_reddish(floor_colour(program))
        program.key("BackSpace")
        wait_for(lambda: is_greenish(floor_colour(program)), what="the home page's green floor")


BROKEN = page_text("\t<node>\n\t\t<type>object</type>\n\t\t<name>a</name>\n\t</node>\n")


@pytest.mark.parametrize(
    "page, text",
    [
        (None, "Failed to open page file."),
        (
            page_text("", version="005"),
            "Failed to load page file.  It apears to be from a newer version of Orvanel.",
        ),
        (
            "no page at all\n",
            "Failed to load page file.  It does not apear to be a valid Orvanel file.",
        ),
        (BROKEN, "The page file contains syntax errors and will not be loaded."),
    ],
    ids=["missing", "newer", "not_a_page", "broken"],
)
def test_a_page_that_cannot_be_loaded_shows_its_message_and_the_parent_stays(page, text):
    write_page("home.orvl", page_text(page_object_text("Sub", 0, 0, "sub.orvl"), GREEN_PAGE))
    if page is not None:
        write_page("sub.orvl", page)
    with Orvanel().wait_ready() as program:
        program.double_click(*program.screen_position(0, 0))
        caption, shown = program.wait_message()
        assert caption == "Orvanel"
        assert text in shown
        program.answer()
        wait_for(lambda: is_greenish(floor_colour(program)), what="the home page again")
        assert program.process.poll() is None


def test_a_home_page_that_cannot_be_loaded_ends_the_program_after_its_message():
    write_page("home.orvl", BROKEN)
    with Orvanel() as program:
        caption, shown = program.wait_message()
        assert caption == "Orvanel"
        assert "The page file contains syntax errors and will not be loaded." in shown
        program.answer()
        assert program.exit_code() == EXIT_FAILED_TO_START


def test_an_action_that_cannot_be_started_shows_its_message():
    write_page("home.orvl", page_text(object_text("X", 0, 0, [("Go", "no-such-program-here")])))
    with Orvanel().wait_ready() as program:
        program.double_click(*program.screen_position(0, 0))
        caption, shown = program.wait_message()
        assert caption == "Orvanel"
        assert "Orvanel failed to execute the action." in shown
        assert "Make sure that you have specified the full path to the executable." in shown
        program.answer()


def test_old_settings_beside_the_program_are_read_and_moved_to_the_users_folder():
    clean_user()
    write_page("home.orvl", page_text("", GREEN_PAGE))
    write_options(PROGRAM_FOLDER, initial_zoom_level=7, splash_screen=0, reflections=0)
    with Orvanel().wait_ready():
        text = wait_for((SETTINGS / "options.xml").exists) and (
            SETTINGS / "options.xml"
        ).read_bytes().decode("latin-1")
        assert "\t<initial_zoom_level>7</initial_zoom_level>\r\n" in text
        assert "\t<splash_screen>0</splash_screen>\r\n" in text
        assert "\t<reflections>0</reflections>\r\n" in text
        assert "\t<text_shadows>1</text_shadows>\r\n" in text
        assert text.startswith('<?xml version="1.0" encoding="utf-8" ?>\r\n<orvanel_options>\r\n')


def test_options_are_read_back_and_change_what_is_seen():
    write_page("home.orvl", page_text(object_text("Only", 10, 0, [])))
    pictures = []
    for level in (4, 8):
        write_options(initial_zoom_level=level)
        with Orvanel().wait_ready() as program:
            x, y = program.screen_position(10, 0, zoom_level=level)
            pictures.append((program.picture(), (x, y)))
    (near, at_near), (far, at_far) = pictures
    assert at_near != at_far
    for picture, place in pictures:
        region = picture.crop((place[0] - 10, place[1] - 10, place[0] + 10, place[1] + 10))
        assert len(region.getcolors(maxcolors=400) or range(401)) > 8, "no object where it should be"


def test_options_that_are_no_orvanel_file_end_the_program_with_their_message():
    SETTINGS.mkdir(parents=True, exist_ok=True)
    (SETTINGS / "options.xml").write_text("<something>\n</something>\n")
    with Orvanel() as program:
        _, shown = program.wait_message()
        assert "options.xml is not valid Orvanel file.  Please correct or remove the file." in shown
        program.answer()
        assert program.exit_code() == EXIT_FAILED_TO_START
    assert (SETTINGS / "options.xml").read_text() == "<something>\n</something>\n"


def test_every_zoom_level_is_reached_with_plus_and_minus_and_none_beyond():
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        program.key(*["minus"] * 10)
        seen = []
        for level in range(9):
            picture = program.picture(f"zoom-{level}")
            assert all(picture.tobytes() != other for other in seen)
            seen.append(picture.tobytes())
            program.key("plus")
        time.sleep(0.3)
        assert program.picture().tobytes() == seen[-1]


def test_the_arrow_keys_scroll_and_the_home_key_returns():
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        at_home = program.picture().tobytes()
        program.key(*["Right"] * 5, *["Up"] * 3)
        assert program.picture().tobytes() != at_home
        program.key("Home")
        wait_for(lambda: program.picture().tobytes() == at_home, what="the page's resting place")
