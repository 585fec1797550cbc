"""A page is built, changed, undone and saved with mouse and keyboard."""

import time

import menus
from orvanel import (
    PAGES,
    TEMP,
    Orvanel,
    object_text,
    page_object_text,
    page_text,
    wait_for,
    write_options,
    write_page,
    xdotool,
)

GREEN_PAGE = ("0.10", "0.60", "0.10")
PURPLE = ("0.11", "0.09", "0.19")


def saved(name="home.orvl"):
    return (PAGES / name).read_bytes().replace(b"\r\n", b"\n").decode("latin-1")


def numbered(text):
    """The page text with object ids counted up, as the program writes them."""
    parts = text.split("<!-- object_id 0 -->")
    return "".join(
        part + (f"<!-- object_id {i} -->" if i + 1 < len(parts) else "")
        for i, part in enumerate(parts)
    )


def link_text(first, second):
    return (
        "\t<node>\n\t\t<type>link</type>\n"
        f"\t\t<from_id>{first}</from_id>\n\t\t<to_id>{second}</to_id>\n\t</node>\n"
    )


def drag(program, start, end, steps=15):
    program.move_to(*start)
    xdotool("mousedown", 1)
    for step in range(1, steps + 1):
        x = start[0] + (end[0] - start[0]) * step // steps
        y = start[1] + (end[1] - start[1]) * step // steps
        xdotool("mousemove", "--window", program.window, x, y)
        time.sleep(0.02)
    time.sleep(0.3)  # a rested mouse does not throw
    xdotool("mouseup", 1)
    time.sleep(0.3)


def start(nodes, **options):
    write_page("home.orvl", page_text(nodes, GREEN_PAGE))
    write_options(**{"object_transitions": 0, "object_inertia": 0, **options})
    program = Orvanel().wait_ready()
    program.key("Tab")
    return program


ACTIONS = [("Notepad", "notepad.exe")]


def test_a_page_opened_and_saved_without_a_change_stays_identical():
    text = numbered(
        page_text(
            object_text("A", -10, 5, ACTIONS)
            + page_object_text("B", 10, 5, "sub.orvl")
            + link_text(0, 1),
            GREEN_PAGE,
            position=(1.5, -2.25),
        )
    )
    write_page("home.orvl", text)
    before = (PAGES / "home.orvl").read_bytes()
    with Orvanel().wait_ready() as program:
        program.key("Tab")
        x, y = program.screen_position(-1.0, -12.0, position=(1.5, -2.25))
        menus.choose(program, x, y, menus.EDIT_PAGE, "Set Page Center")  # marks it as changed
        program.wait_message()
        program.answer()
        program.key("Tab")
        wait_for(lambda: (PAGES / "home.orvl").read_bytes(), what="the page")
    assert (PAGES / "home.orvl").read_bytes() == before


def test_a_page_is_turned_around_undone_redone_and_saved_byte_for_byte():
    with start(object_text("A", -12, 6, ACTIONS) + object_text("B", 12, 6, ACTIONS)) as program:
        home = program.screen_position
        floor = home(0, -12)
        # Moved by hand to about (-6, -4), then onto the grid of 2.5.
        drag(program, home(-12, 6), home(-6.1, -4.1))
        menus.choose(program, *home(-6, -4), menus.EDIT_OBJECT, "Align With Grid")
        # Linked: Draw Link and a click on the other.
        menus.choose(program, *home(-5, -5), menus.EDIT_OBJECT, "Draw Link")
        program.move_to(*home(12, 6))
        program.picture("link-being-drawn")
        xdotool("click", 1)
        time.sleep(0.5)
        # B takes the row of A.
        menus.choose(program, *home(12, 6), menus.EDIT_OBJECT, "Align With Object")
        program.move_to(*home(-5, -5))
        program.picture("aligning")
        xdotool("click", 1)
        time.sleep(1.0)
        # A second A, by keyboard.
        program.move_to(*home(-5, -5))
        program.key("ctrl+c")
        program.move_to(*home(0.2, 7.4))
        program.key("ctrl+v")
        menus.choose(program, *home(0, 7.5), menus.EDIT_OBJECT, "Align With Grid")
        # The page turns purple.
        _, geometry = menus.open_at(program, *floor)
        menus.move_onto(geometry, menus.EDIT_PAGE, "Page Color")
        wait_for(lambda: len(menus.windows(program)) == 2, 10, "the submenu")
        submenu = max(menus.windows(program), key=lambda found: found[1][0])[1]
        menus.click_on(submenu, menus.PAGE_COLOR, "Purple")
        time.sleep(1.0)
        program.picture("edited")
        expected = numbered(
            page_text(
                object_text("A", -5, -5, ACTIONS)
                + object_text("B", 12, -5, ACTIONS)
                + object_text("A", 0, 7.5, ACTIONS)
                + link_text(0, 1),
                PURPLE,
            )
        )
        # All undone, all done again; the colour is no part of the history.
        for _ in range(8):
            program.key("ctrl+z")
        program.picture("undone")
        for _ in range(8):
            program.key("ctrl+y")
        program.key("Tab")
        wait_for(lambda: PURPLE[0] in saved(), what="the saved page")
        assert saved() == expected
        assert (PAGES / "home.orvl").read_bytes().count(b"\r\n") == expected.count("\n")


def test_undoing_everything_brings_the_first_page_back():
    nodes = object_text("A", -12, 6, ACTIONS) + object_text("B", 12, 6, ACTIONS)
    with start(nodes, confirm_object_delete=0) as program:
        home = program.screen_position
        drag(program, home(-12, 6), home(-3, -4))
        menus.choose(program, *home(12, 6), menus.EDIT_OBJECT, "Delete")
        for _ in range(4):
            program.key("ctrl+z")
        program.key("Tab")
        wait_for(lambda: "object_id 1" in saved(), what="the saved page")
        assert saved() == numbered(page_text(nodes, GREEN_PAGE))


def test_an_object_dragged_against_another_pushes_it_aside():
    with start(object_text("A", -12, 0, []) + object_text("B", 0, 0.4, [])) as program:
        home = program.screen_position
        drag(program, home(-12, 0), home(2, 0))
        program.key("Tab")
        wait_for(lambda: "-12.00" not in saved(), what="the saved page")
        positions = [float(part.split("<")[0]) for part in saved().split("<x_position>")[2:]]
        assert abs(positions[0] - 2) < 1.0
        assert positions[1] > positions[0] + 2


def test_page_objects_are_copied_with_their_files_and_deleted_with_and_without():
    write_page("sub.orvl", page_text("", PURPLE))
    nodes = page_object_text("Sub", -12, 6, "sub.orvl")
    with start(nodes, confirm_page_file_delete=1, confirm_object_delete=1) as program:
        home = program.screen_position
        program.move_to(*home(-12, 6))
        program.key("ctrl+c")
        program.move_to(*home(5, 5))
        program.key("ctrl+v")
        wait_for((PAGES / "sub_copy_1.orvl").exists, what="the copied page file")
        assert (PAGES / "sub_copy_1.orvl").read_bytes() == (PAGES / "sub.orvl").read_bytes()
        # No at the first question keeps all of it.
        menus.choose(program, *home(5, 5), menus.EDIT_PAGE_OBJECT, "Delete")
        caption, text = program.wait_message()
        assert caption == "Orvanel" and "Are you sure?" in text
        program.answer("n")
        # Yes and No: only the object goes.
        menus.choose(program, *home(-12, 6), menus.EDIT_PAGE_OBJECT, "Delete")
        program.wait_message()
        program.answer("y")
        caption, text = program.wait_message()
        assert "Do you also want to delete the page file?" in text
        program.answer("n")
        assert (PAGES / "sub.orvl").exists()
        # Yes and Yes: the file goes and the page is saved at once.
        menus.choose(program, *home(5, 5), menus.EDIT_PAGE_OBJECT, "Delete")
        program.wait_message()
        program.answer("y")
        program.wait_message()
        program.answer("y")
        wait_for(lambda: not (PAGES / "sub_copy_1.orvl").exists(), what="the file to go")
        wait_for(lambda: "<node>" not in saved(), what="the saved page")


def test_revert_to_saved_throws_the_changes_away():
    nodes = object_text("A", -12, 6, ACTIONS)
    with start(nodes, confirm_object_delete=0) as program:
        home = program.screen_position
        before = (PAGES / "home.orvl").read_bytes()
        menus.choose(program, *home(-12, 6), menus.EDIT_OBJECT, "Delete")
        menus.choose(program, *home(0, -12), menus.EDIT_PAGE, "Revert to saved")
        time.sleep(1.5)
        program.picture("reverted")
        # In view mode again: the object's own menu opens.
        window, geometry = menus.open_at(program, *home(-12, 6))
        menus.frame(geometry, ["Notepad"])
        menus.close()
        assert (PAGES / "home.orvl").read_bytes() == before


def test_an_action_chosen_with_mouse_or_first_letter_starts_its_program():
    for letter in (None, "w"):
        target = TEMP / "chosen.txt"
        target.unlink(missing_ok=True)
        actions = [("Notepad", "notepad.exe"), ("Write it", "cmd.exe /c echo x>%TEMP%\\chosen.txt")]
        write_page("home.orvl", page_text(object_text("A", 0, 0, actions), GREEN_PAGE))
        with Orvanel().wait_ready() as program:
            spot = program.screen_position(0, 0)
            if letter is None:
                menus.choose(program, *spot, [title for title, _ in actions], "Write it")
            else:
                menus.open_at(program, *spot)
                xdotool("key", letter)
            wait_for(target.exists, what="the file that the action writes")


def test_the_menu_key_and_shift_f10_open_the_menu_of_the_object_under_the_mouse():
    write_page("home.orvl", page_text(object_text("A", 0, 0, ACTIONS), GREEN_PAGE))
    with Orvanel().wait_ready() as program:
        for key in ("Menu", "shift+F10"):
            program.move_to(*program.screen_position(0, 0))
            program.key(key)
            _, geometry = wait_for(lambda: menus.windows(program), 10, f"the menu of {key}")[-1]
            menus.frame(geometry, ["Notepad"])
            menus.close()
            wait_for(lambda: not menus.windows(program), what="the menu to close")
