"""Pages, labels and options are made and changed in their dialogs: with the mouse alone, the letters of
texts apart, and with the keyboard alone."""

import re
import shutil

import menus
import pytest
from dialogs import Dialog, answer_with_mouse, click_at, type_text, wait_text
from orvanel import (
    DOCUMENTS,
    PAGES,
    SETTINGS,
    Orvanel,
    object_text,
    page_text,
    wait_for,
    write_options,
    write_page,
    xdotool,
)

GRAY = 1  # place in the box of colors
GREEN_PAGE = ("0.10", "0.60", "0.10")
NEW_FOLDER = DOCUMENTS / "Orvanel New"  # stands above the page folder in the chooser
NEW_FOLDER_NAME = "C:\\users\\root\\Documents\\Orvanel New"
COPY_QUESTION = "Do you want to copy your existing pages into the new location?"
COPIED = "Your page files have been copied to the new Page file folder."
EDIT_QUESTION = "Do you want to edit this page now?"

GENERAL = {
    "Show home page title": "show_home_page_title",
    "Maintain zoom level between pages": "maintain_zoom_level",
    "Display splash screen": "splash_screen",
    "Confirm page file deletion": "confirm_page_file_delete",
    "Confirm object deletion": "confirm_object_delete",
    "Remember last 3D model used": "remember_last_model",
    "Check for updates automatically": "check_for_updates",
}
ACTIONS = {
    "Double-Click runs Action 1": "action_double_click_run",
    "Exit after running Action 1": "action_exit_action_1",
    "Exit after running any Action": "action_exit_any",
    "Show Action menu title bar": "action_menu_title",
    "Show Action menu application icons": "action_menu_icons",
}
GRAPHICS = {  # in tab order, behind "Enhanced graphics"
    "Draw reflections": "reflections",
    "Page zoom transiton": "zoom_transition",
    "Object rotation": "object_rotation",
    "Object transitions": "object_transitions",
    "Page inertia": "floor_inertia",
    "Object inertia": "object_inertia",
    "Text shadows": "text_shadows",
    "Anti-aliasing": "anti_aliasing",
}
WARNINGS = {"Disable start-up graphics card warnings": "disable_graphics_card_warning"}
ENHANCED = {"Enhanced graphics": "good_graphics_card"}
START = {
    key: 1 for key in (*GENERAL.values(), *ACTIONS.values(), *GRAPHICS.values(), *ENHANCED.values())
} | {
    "maintain_zoom_level": 0,
    "splash_screen": 0,
    "confirm_object_delete": 0,
    "action_exit_action_1": 0,
    "action_exit_any": 0,
    "action_menu_title": 0,
    "disable_graphics_card_warning": 0,
    "zoom_transition": 0,
    "object_transitions": 0,
    "check_for_updates": 0,
}


def text_of(path):
    return path.read_bytes().replace(b"\r\n", b"\n").decode("latin-1") if path.exists() else ""


@pytest.fixture(autouse=True)
def new_folder():
    shutil.rmtree(NEW_FOLDER, ignore_errors=True)
    NEW_FOLDER.mkdir(parents=True)
    yield
    shutil.rmtree(NEW_FOLDER, ignore_errors=True)


# ---- pages and labels


def start_editing():
    write_page("home.orvl", page_text("", GREEN_PAGE))
    write_page("a_linked-page.orvl", page_text())
    write_options(object_transitions=0, zoom_transition=0)
    program = Orvanel().wait_ready()
    program.key("Tab")
    return program


def names_and_files(text):
    return dict(
        zip(re.findall("<name>(.*)</name>", text), re.findall("<page_file>(.*)</page_file>", text))
    )


def expect_pages():
    """What both users have made."""
    def saved():
        text = text_of(PAGES / "home.orvl")
        return text if text.count("<type>page</type>") == 2 else None

    home = wait_for(saved, what="the saved home page")
    made = names_and_files(home)
    assert made == {"A Linked-Page": "a_linked-page.orvl", "My Rack": "My_Rack.orvl"}
    assert "<description>row 4</description>" in home
    assert "<model>page_orvanel.obj</model>" in home
    wait_for(lambda: "<text>Cables here</text>" in text_of(PAGES / "My_Rack.orvl"), what="the label")


def test_pages_are_made_and_linked_and_a_label_is_written_with_the_mouse():
    with start_editing() as program:
        left, right = program.screen_position(-12, -6), program.screen_position(12, -6)
        # The name is left to the file, which is found with the mouse.
        menus.choose(program, *left, menus.EDIT_PAGE, "New Page")
        page = Dialog("New Page")
        page.photograph("new-page")
        page.click("Link to an existing page file")
        page.click("Browse...")
        chooser = Dialog("Browse")
        chooser.photograph("browse")
        files = chooser.of_kind("SysListView32")
        click_at(files.left + 40, files.top + 10)
        chooser.click("Open")
        chooser.wait_closed()
        page.wait_text("File Name:", "a_linked-page.orvl")
        page.photograph("new-page-linked")
        page.click("OK")
        page.wait_closed()
        # A page of its own, and what is on it.
        menus.choose(program, *right, menus.EDIT_PAGE, "New Page")
        page = Dialog("New Page")
        page.click("Name:")
        type_text("My Rack")
        page.click("Description:")
        type_text("row 4")
        page.click(">")
        page.click("<")
        page.click("OK")
        answer_with_mouse(program, EDIT_QUESTION, "Yes")
        wait_for((PAGES / "My_Rack.orvl").exists, what="the page file")
        page.wait_closed()
        menus.choose(program, *left, menus.EDIT_PAGE, "New Label")
        label = Dialog("New Label")
        label.click("Label Text:")
        type_text("Cables <here")  # the sign is refused
        label.photograph("new-label")
        label.wait_text("Label Text:", "Cables here")
        label.click("OK")
        label.wait_closed()
        menus.choose(program, *right, menus.EDIT_PAGE, "Finish Editing")
        expect_pages()


def choose_by_keyboard(program, entries, name):
    """The menu of the floor under the mouse, which nobody has to move for that."""
    program.key("Menu")
    wait_for(lambda: menus.windows(program), 10, "the menu")
    steps = [entry for entry in entries if entry is not menus.LINE].index(name) + 1
    Dialog.key(*["Down"] * steps, "Return")


def test_pages_are_made_and_linked_and_a_label_is_written_with_the_keyboard():
    with start_editing() as program:
        program.move_to(*program.screen_position(-12, -6))  # where it happens to stand
        choose_by_keyboard(program, menus.EDIT_PAGE, "New Page")
        page = Dialog("New Page")
        Dialog.key("alt+l", "alt+f")
        type_text("a_linked-page.orvl")
        Dialog.key("Return")
        page.wait_closed()
        program.key(*["Left"] * 20)  # the floor under the mouse is another now
        choose_by_keyboard(program, menus.EDIT_PAGE, "New Page")
        page = Dialog("New Page")
        type_text("My Rack")
        Dialog.key("Tab")
        type_text("row 4")
        Dialog.key("Return")
        wait_text(program, EDIT_QUESTION)
        program.answer("y")
        page.wait_closed()
        choose_by_keyboard(program, menus.EDIT_PAGE, "New Label")
        label = Dialog("New Label")
        type_text("Cables here")
        Dialog.key("Return")
        label.wait_closed()
        program.key("Tab")
        expect_pages()


# ---- options


def options():
    text = text_of(SETTINGS / "options.xml")
    return dict(re.findall(r"<(\w+)>(.*)</\1>", text))


def expect_options(program):
    """Every box is the other way round, and the rest is what both users have chosen."""
    wait_for(lambda: options().get("page_folder", "").startswith(NEW_FOLDER_NAME), what="options.xml")
    seen = options()
    assert {key: seen[key] for key in START} == {key: str(1 - START[key]) for key in START}
    assert seen["initial_zoom_level"] == "6"
    assert seen["name"] == "Gray"
    for page in ("home.orvl", "other.orvl"):
        assert (NEW_FOLDER / page).read_bytes() == (PAGES / page).read_bytes()
    # The window was made anew, shows the new folder's page, nearer, without the home page's title.
    program.window = wait_for(program.find_window, 20, "the new window")
    wait_for(lambda: is_gray(program), what="the gray page")
    program.rest_mouse()
    picture = program.picture("options-changed")
    x, y = program.screen_position(10, 0, zoom_level=6)
    assert picture.crop((x - 15, y - 15, x + 15, y + 15)).getcolors(maxcolors=8) is None
    x, y = program.screen_position(10, 0, zoom_level=4)
    assert picture.crop((x - 5, y - 5, x + 5, y + 5)).getcolors(maxcolors=8) is not None
    title = picture.crop((0, 0, picture.width, 60)).getcolors(maxcolors=60 * picture.width)
    assert max(sum(colour) for _, colour in title) < 300, "the title is still there"


def is_gray(program):
    picture = program.picture()
    red, green, blue = picture.getpixel((picture.width // 2 + 3, picture.height - 8))
    return max(red, green, blue) - min(red, green, blue) < 12 and red > 10


def start_for_options():
    write_page("home.orvl", page_text(object_text("Only", 10, 0, [])))
    write_page("other.orvl", page_text("", GREEN_PAGE))
    write_options(**START)
    return Orvanel().wait_ready()


def click_boxes(dialog, boxes):
    for caption, key in boxes.items():
        assert dialog.control(caption).is_checked() == bool(START[key]), caption
        dialog.click(caption)


def is_selection_blue(pixel):
    return pixel[0] < 120 and pixel[1] < 180 and pixel[2] > 200


def selected_row(dialog):
    """Screen position of the entry chosen in a tree: it is drawn on the system's blue."""
    tree = dialog.of_kind("SysTreeView32")
    pixels = dialog.picture_of(tree)
    rows = []
    for y in range(pixels.height):
        blue = [x for x in range(pixels.width) if is_selection_blue(pixels.getpixel((x, y)))]
        rows.append((len(blue), sum(blue) // max(len(blue), 1), y))
    count, x, y = max(rows)
    assert count > 20, "nothing is chosen in the tree"
    return tree.left + x, tree.top + y


def test_every_option_is_changed_and_the_page_folder_moved_with_the_mouse():
    with start_for_options() as program:
        menus.choose(program, *program.screen_position(0, -12), menus.PAGE, "Options")
        dialog = Dialog("Options")
        dialog.photograph("options-general")
        click_boxes(dialog, GENERAL)
        slider = dialog.control("Initial zoom level:")
        x, y = slider.middle()
        xdotool("mousemove", x, y - 4, "mousedown", 1)
        for step in range(8):
            xdotool("mousemove", x + 6 * (step + 1), y - 4)
        xdotool("mouseup", 1)
        dialog.choose("Default page color:", GRAY)
        dialog.wait_text("Default page color:", "Gray")
        dialog.click("...")
        chooser = Dialog("Browse for Folder")
        chooser.photograph("folder")
        x, y = selected_row(chooser)
        click_at(x, y - 16)
        chooser.click("OK")
        chooser.wait_closed()
        dialog.wait_text("Page file folder:", NEW_FOLDER_NAME)
        dialog.click_tab(1)
        dialog.photograph("options-actions")
        click_boxes(dialog, ACTIONS)
        dialog.click_tab(2)
        dialog.photograph("options-graphics")
        click_boxes(dialog, {**WARNINGS, **GRAPHICS, **ENHANCED})
        dialog.wait(
            lambda _: all(dialog.control(caption).is_disabled() for caption in GRAPHICS),
            "the boxes to be disabled",
        )
        dialog.photograph("options-graphics-not-enhanced")
        dialog.click("OK")
        answer_with_mouse(program, COPY_QUESTION, "Yes")
        answer_with_mouse(program, COPIED, "OK")
        expect_options(program)


def toggle_boxes(number):
    """From the first one with the focus on; ends behind the last."""
    Dialog.key(*["space", "Tab"] * number)


def test_every_option_is_changed_and_the_page_folder_moved_with_the_keyboard():
    with start_for_options() as program:
        program.move_to(*program.screen_position(0, -12))  # where it happens to stand
        choose_by_keyboard(program, menus.PAGE, "Options")
        Dialog("Options")
        toggle_boxes(len(GENERAL))
        Dialog.key("Right", "Right", "Tab")
        Dialog.key("Down", "Tab")  # the colour
        type_text(NEW_FOLDER_NAME)
        Dialog.key("ctrl+Tab")
        toggle_boxes(len(ACTIONS))
        Dialog.key("ctrl+Page_Down", "alt+w", "Tab", "Tab")
        toggle_boxes(len(GRAPHICS))
        Dialog.key("alt+e", "Return")
        wait_text(program, COPY_QUESTION)
        program.answer("y")
        wait_text(program, COPIED)
        program.answer()
        expect_options(program)


def test_a_folder_that_does_not_exist_is_refused_and_escape_leaves_everything_as_it_was():
    with start_for_options() as program:
        before = text_of(SETTINGS / "options.xml")
        menus.choose(program, *program.screen_position(0, -12), menus.PAGE, "Options")
        dialog = Dialog("Options")
        Dialog.key("alt+f")
        type_text("C:\\no such folder")
        Dialog.key("ctrl+Tab", "Return")
        wait_text(program, "The specified Page file folder is invalid.")
        program.answer()
        dialog.wait_focus("Page file folder:")
        Dialog.key("Escape")
        dialog.wait_closed()
        assert text_of(SETTINGS / "options.xml") == before


def test_the_about_box_is_closed_with_enter_and_its_link_reached_with_tab():
    with start_for_options() as program:
        for keys in (["Return"], ["Tab", "Escape"]):
            menus.choose(program, *program.screen_position(0, -12), menus.PAGE, "About")
            about = Dialog("About Orvanel")
            about.photograph("about")
            assert about.control("Orvanel\u2122 v1.4.1")
            assert about.focus() is about.control("OK")
            Dialog.key(keys[0])
            if len(keys) > 1:
                about.wait_focus("www.orvanel.example")
                Dialog.key(keys[1])
            about.wait_closed()
