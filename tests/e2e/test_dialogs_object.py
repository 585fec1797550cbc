"""An object with a model, texts and a tree of actions is made in its dialog, and one of the actions
tested: with the mouse alone, the letters of texts apart, and with the keyboard alone."""

import re

import menus
from dialogs import Dialog, click_at, type_text
from orvanel import (
    PAGES,
    ROOT,
    TEMP,
    Orvanel,
    page_text,
    wait_for,
    write_options,
    write_page,
    xdotool,
)

COMMAND = "Enter the name of a program, folder, document, or Internet resource: "
STEADY_LOOKS = 8  # a tenth of a second apart
TREE_ITEM = 16  # pixels high
TREE_LABEL = 50  # pixels from the left edge of the tree into a label

SEPARATOR, SUBMENU = 1, 2  # places in the box of types

TESTED = TEMP / "tested.txt"
RUN = "cmd.exe /c echo $NAME>%TEMP%\\tested.txt"
PING = "ping.exe $NAME"

ACTIONS = (
    "\t\t<action>\n\t\t\t<type>submenu</type>\n\t\t\t<name>Tools</name>\n\t\t</action>\n"
    "\t\t<action>\n\t\t\t<type>command</type>\n\t\t\t<owner>1</owner>\n\t\t\t<name>Run</name>\n"
    f"\t\t\t<command>{RUN}</command>\n\t\t\t<icon></icon>\n\t\t</action>\n"
    "\t\t<action>\n\t\t\t<type>command</type>\n\t\t\t<owner>1</owner>\n\t\t\t<name>Ping</name>\n"
    f"\t\t\t<command>{PING}</command>\n\t\t\t<icon></icon>\n\t\t</action>\n"
    "\t\t<action>\n\t\t\t<type>separator</type>\n\t\t\t<owner>1</owner>\n\t\t</action>\n"
)


def first_model():
    """File of the shipped model that stands first by name, behind the built-in one."""
    names = {}
    for path in (ROOT / "models").glob("*.obj"):
        name = re.search(r"^#name:\s*(.*?)\s*$", path.read_text(), re.M)[1]
        names[name.lower()] = path.name
    return names[min(names)]


def saved():
    return (PAGES / "home.orvl").read_bytes().replace(b"\r\n", b"\n").decode("latin-1")


def start():
    TESTED.unlink(missing_ok=True)
    write_page("home.orvl", page_text("", ("0.10", "0.60", "0.10")))
    write_options(object_transitions=0, confirm_object_delete=0)
    return Orvanel().wait_ready()


def expect_object(place=None):
    text = wait_for(lambda: "<node>" in saved() and saved(), what="the saved page")
    node = text[text.index("\t<node>") :]
    head = (
        "\t<node>\n\t\t<type>object</type>\n\t\t<!-- object_id 0 -->\n"
        "\t\t<name>server1</name>\n\t\t<description>In the cellar</description>\n"
    )
    assert node.startswith(head)
    rest = re.fullmatch(
        r"\t\t<x_position>(.*)</x_position>\n\t\t<y_position>(.*)</y_position>\n"
        rf"\t\t<model>{first_model()}</model>\n(.*)\t</node>\n</page>\n",
        node[len(head) :],
        re.S,
    )
    assert rest, node
    assert rest[3] == ACTIONS, rest[3]
    if place is not None:
        assert abs(float(rest[1]) - place[0]) < 0.2
        assert abs(float(rest[2]) - place[1]) < 0.2


def expect_tested(dialog):
    """The action has left its file, and what it ran in has given the keyboard back."""
    wait_for(lambda: TESTED.exists() and TESTED.read_text().strip(), what="the tested action's file")
    assert TESTED.read_text().strip() == "server1"
    looks = []  # the other window may yet come up and go

    def keeps_keyboard():
        looks.append(dialog.is_active())
        return len(looks) >= STEADY_LOOKS and all(looks[-STEADY_LOOKS:])

    wait_for(keeps_keyboard, what="the dialog to be active")


def click_first_item(dialog):
    tree = dialog.of_kind("SysTreeView32")
    click_at(tree.left + TREE_LABEL, tree.top + 1 + TREE_ITEM // 2)


def enter(dialog, caption, text):
    dialog.click(caption)
    type_text(text)


def add_with_mouse(dialog, name, command=None, kind=None):
    dialog.click("New")
    type_text(name)
    if kind is not None:
        dialog.choose("Type:", kind)  # a click elsewhere ends the label
    if command is not None:
        enter(dialog, COMMAND, command)


def test_an_object_is_made_and_its_action_tested_with_the_mouse():
    with start() as program:
        floor = program.screen_position(-6, 4)
        menus.choose(program, *floor, menus.PAGE, "Edit This Page")
        menus.choose(program, *floor, menus.EDIT_PAGE, "New Object")
        dialog = Dialog("New Object")
        enter(dialog, "Description:", "In the cellar")
        enter(dialog, "Name:", "server1")
        for button in (">", ">", "<"):
            dialog.click(button)
        dialog.photograph("object-details")
        dialog.click_tab(1)
        dialog.photograph("object-no-actions")
        add_with_mouse(dialog, "Run", RUN)
        dialog.click("Test")
        expect_tested(dialog)
        add_with_mouse(dialog, "Tools", kind=SUBMENU)
        add_with_mouse(dialog, "Ping", PING)
        add_with_mouse(dialog, "Line", kind=SEPARATOR)
        click_first_item(dialog)
        dialog.click("Down")  # into the submenu
        dialog.photograph("object-actions")
        dialog.click("OK")
        dialog.wait_closed()
        menus.choose(program, *program.screen_position(8, -8), menus.EDIT_PAGE, "Finish Editing")
        expect_object((-6, 4))


def add_with_keyboard(dialog, name, command=None, kind=0):
    dialog.key("alt+w")
    type_text(name)
    dialog.key("Return")
    if kind != 0:
        dialog.key("alt+t", *["Down"] * kind)
    if command is not None:
        dialog.key("alt+p")
        type_text(command)


def test_an_object_is_made_and_its_action_tested_with_the_keyboard():
    with start() as program:
        program.key("Tab")
        program.key("shift+F10")
        wait_for(lambda: menus.windows(program), 10, "the menu")
        Dialog.key("Down", "Down", "Down", "Return")  # to "New Object"
        dialog = Dialog("New Object")
        type_text("server1")
        dialog.key("Tab")
        type_text("In the cellar")
        dialog.key("Tab", "Tab", "Tab", "Tab", "Return", "Return")  # twice ">"
        dialog.key("shift+Tab", "Up")  # one back in the box of models
        dialog.key("ctrl+Tab")
        add_with_keyboard(dialog, "Run", RUN)
        dialog.key("alt+s")
        expect_tested(dialog)
        add_with_keyboard(dialog, "Tools", kind=SUBMENU)
        add_with_keyboard(dialog, "Ping", PING)
        add_with_keyboard(dialog, "Line", kind=SEPARATOR)
        dialog.key("ctrl+Page_Up", "ctrl+Page_Down", "Home", "alt+d")  # to the tree; the first down
        dialog.photograph("object-keyboard")
        dialog.key("Return")
        dialog.wait_closed()
        program.key("Tab")
        expect_object()
