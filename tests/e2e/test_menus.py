"""Every menu at its real size, and what choosing from them does."""

import time

import menus
from orvanel import (
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


def label_text(text, x, y):
    return (
        "\t<node>\n\t\t<type>label</type>\n\t\t<!-- object_id 0 -->\n"
        f"\t\t<text>{text}</text>\n"
        f"\t\t<x_position>{x:.2f}</x_position>\n\t\t<y_position>{y:.2f}</y_position>\n\t</node>\n"
    )


def show(program, name, x, y, entries):
    window, geometry = menus.open_at(program, x, y)
    menus.photograph(window, name)
    menus.frame(geometry, entries)
    return geometry


def test_every_menu_holds_its_entries_at_their_heights():
    actions = [("Notepad", "notepad.exe"), ("Explorer", "explorer.exe"), ("", "cmd.exe")]
    write_page(
        "home.orvl",
        page_text(
            object_text("Server", -12, 4, actions)
            + page_object_text("Sub", 0, 4, "sub.orvl")
            + label_text("A label", -12, -8),
            GREEN_PAGE,
        ),
    )
    write_options(action_menu_icons=1, action_menu_title=1)
    with Orvanel().wait_ready() as program:
        server = program.screen_position(-12, 4)
        sub = program.screen_position(0, 4)
        label = program.screen_position(-12, -8)
        floor = program.screen_position(0, -8)
        title = ["title"]
        show(program, "view-page", *floor, menus.PAGE)
        menus.close()
        show(program, "view-label", *label, menus.PAGE)
        menus.close()
        show(program, "actions", *server, title + ["Notepad", "Explorer", "Action 3"])
        menus.close()
        show(program, "open-page", *sub, title + ["Open this page"])
        menus.close()
        program.key("Tab")
        show(program, "edit-object", *server, menus.EDIT_OBJECT)
        menus.close()
        show(program, "edit-page-object", *sub, menus.EDIT_PAGE_OBJECT)
        menus.close()
        show(program, "edit-label", *label, menus.EDIT_LABEL)
        menus.close()
        geometry = show(program, "edit-page", *floor, menus.EDIT_PAGE)
        menus.move_onto(geometry, menus.EDIT_PAGE, "Page Color")
        window, submenu = wait_for(
            lambda: menus.windows(program)[1:] and menus.windows(program)[-1], 10, "the submenu"
        )
        time.sleep(0.3)
        menus.photograph(window, "page-color")
        menus.frame(submenu, menus.PAGE_COLOR)
        menus.close()
        menus.close()
        wait_for(lambda: not menus.windows(program), what="the menus to close")
        assert program.process.poll() is None
