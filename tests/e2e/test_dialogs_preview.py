"""A model is chosen in the object dialog and turned in its preview, with the mouse."""

import re

import menus
from dialogs import Dialog
from orvanel import ROOT, Orvanel, page_text, wait_for, write_options, write_page, xdotool
from PIL import ImageChops

CATEGORY, CATEGORY_PLACE = "Documents", 2  # in the box: behind "All" and "Devices"
CHOOSER, VIEWER = 2024, 1001  # ids of the controls
STILL_PICTURES = 4  # the same one after the other show that nothing turns


def model_names(category):
    """Of the shipped models, as the chooser lists them."""
    names = []
    for path in (ROOT / "models").glob("*.obj"):
        text = path.read_text()
        if re.search(rf"^#category:\s*{category}\s*$", text, re.M):
            names.append(re.search(r"^#name:\s*(.*?)\s*$", text, re.M)[1])
    return sorted(names, key=str.lower)


class Preview:
    """The picture of the chosen model in an open dialog, and the mouse on it."""

    def __init__(self, dialog):
        self.dialog = dialog
        self.control = dialog.by_id(VIEWER)
        self.x, self.y = self.control.middle()

    def picture(self):
        return self.dialog.picture_of(self.control)

    def wait_turning(self):
        """Three pictures after the first, each of another angle."""
        for _ in range(3):
            before = self.picture()
            wait_for(lambda: differ(before, self.picture()), what="the model to turn")

    def wait_still(self):
        """The picture that stays."""
        seen = [self.picture()]

        def is_still():
            seen.append(self.picture())
            last = seen[-STILL_PICTURES:]
            return len(last) == STILL_PICTURES and not any(differ(last[0], other) for other in last)

        wait_for(is_still, what="the model to stand still")
        return seen[-1]

    def press(self):
        xdotool("mousemove", self.x, self.y, "mousedown", 1)

    def drag(self, x):
        """To so far from where it was pressed; the picture that stays there."""
        before = self.picture()
        xdotool("mousemove", self.x + x, self.y)
        wait_for(lambda: differ(before, self.picture()), what="the model to follow the mouse")
        return self.wait_still()

    def release(self, x, y=0):
        """Behind a last move to so far from where it was pressed."""
        xdotool("mousemove", self.x + x, self.y + y, "mouseup", 1)


def differ(one, other):
    return ImageChops.difference(one, other).getbbox() is not None


def choose_models(dialog):
    """Steps through a category, past both of its ends."""
    names = model_names(CATEGORY)
    dialog.choose("Category:", CATEGORY_PLACE)
    dialog.wait(lambda _: dialog.by_id(CHOOSER).text == names[0], "the first model of the category")
    assert dialog.control("Category:").text == CATEGORY
    for buttons, place in ((">>", 2), ("<", 1), ("<<", -1), (">", 0)):
        for button in buttons:
            dialog.click(button)
        dialog.wait(lambda _: dialog.by_id(CHOOSER).text == names[place], names[place])
        dialog.photograph(f"preview-model-{place % len(names)}")


def turn_model(dialog, preview):
    preview.wait_turning()  # by itself
    preview.press()
    at_grab = preview.wait_still()
    assert differ(at_grab, preview.drag(60))
    dialog.photograph("preview-dragged")
    assert not differ(at_grab, preview.drag(0))
    preview.release(40)  # a throw
    preview.wait_turning()
    dialog.photograph("preview-thrown")
    preview.press()
    preview.wait_still()
    preview.drag(20)
    preview.release(20, 5)  # at rest: sideways it is not moved any more
    preview.wait_still()
    dialog.photograph("preview-stopped")


def test_a_model_is_chosen_and_turned_in_the_preview_with_the_mouse():
    write_page("home.orvl", page_text("", ("0.10", "0.60", "0.10")))
    write_options(object_transitions=0)
    with Orvanel().wait_ready() as program:
        program.key("Tab")
        menus.choose(program, *program.screen_position(-6, 4), menus.EDIT_PAGE, "New Object")
        dialog = Dialog("New Object")
        preview = Preview(dialog)
        choose_models(dialog)
        turn_model(dialog, preview)
        dialog.click("Cancel")
        dialog.wait_closed()
