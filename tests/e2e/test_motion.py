"""The page moves: buttons lead back, the floor is dragged and thrown, objects spin."""

import time

from PIL import ImageChops

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

RED_PAGE = ("0.60", "0.10", "0.10")
GREEN_PAGE = ("0.10", "0.60", "0.10")
BLUE_PAGE = ("0.10", "0.10", "0.60")
STILL = 0.6  # seconds without a change after which the picture counts as still


def floor_colour(program):
    picture = program.picture()
    return picture.getpixel((picture.width // 2 + 3, picture.height - 8))


def shows(program, channel):
    pixel = floor_colour(program)
    return all(pixel[channel] > 1.5 * pixel[other] for other in range(3) if other != channel)


def differ(one, other):
    return ImageChops.difference(one, other).getbbox() is not None


def wait_still(program, timeout=20):
    """Waits until nothing moves any more and returns the picture."""

    def still():
        before = program.picture().tobytes()
        time.sleep(STILL)
        after = program.picture()
        return after if after.tobytes() == before else None

    return wait_for(still, timeout, "a still picture")


def move_in_steps(program, start, end, steps=12, pause=0.02):
    for step in range(1, steps + 1):
        x = start[0] + (end[0] - start[0]) * step // steps
        y = start[1] + (end[1] - start[1]) * step // steps
        xdotool("mousemove", "--window", program.window, x, y)
        time.sleep(pause)


def drag(program, start, end, steps=12, pause=0.02, rest=0.0):
    program.move_to(*start)
    xdotool("mousedown", 1)
    move_in_steps(program, start, end, steps, pause)
    time.sleep(rest)
    xdotool("mouseup", 1)


def test_the_buttons_beside_the_title_lead_back_and_home():
    write_page("home.orvl", page_text(page_object_text("One", 0, 0, "one.orvl"), GREEN_PAGE))
    write_page("one.orvl", page_text(page_object_text("Two", 0, 0, "two.orvl"), RED_PAGE))
    write_page("two.orvl", page_text("", BLUE_PAGE))
    with Orvanel().wait_ready() as program:
        middle = program.screen_position(0, 0)
        program.double_click(*middle)
        wait_for(lambda: shows(program, 0), what="the first sub-page")
        program.double_click(*middle)
        wait_for(lambda: shows(program, 2), what="the second sub-page")
        program.rest_mouse()
        picture = program.picture("two-levels")
        # Buttons are 32 pixels, 14 below the top; back begins right of the title, home 39 further.
        back = find_buttons(picture)
        program.move_to(back, 30)
        lit = program.picture("back-lit")
        changed = ImageChops.difference(lit, picture).getbbox()
        assert changed, "the button does not light up"
        assert back - 20 < changed[0] and changed[2] < back + 20 and changed[3] < 48
        xdotool("click", 1)
        wait_for(lambda: shows(program, 0), what="the first sub-page again")
        program.rest_mouse()
        program.double_click(*middle)
        wait_for(lambda: shows(program, 2), what="the second sub-page again")
        program.rest_mouse()
        program.move_to(find_buttons(program.picture()) + 39, 30)
        xdotool("click", 1)
        wait_for(lambda: shows(program, 1), what="the home page")


def find_buttons(picture):
    """Middle of the back button: the first 32-pixel block right of the title that is not floor."""
    floor = picture.getpixel((picture.width // 2, 30))

    def differs(x):
        return any(
            sum(abs(a - b) for a, b in zip(picture.getpixel((x, y)), floor)) > 60
            for y in range(15, 46)
        )

    columns = [x for x in range(5, 600) if differs(x)]
    home_end = columns[-1]
    return home_end - 39 - 14


def right_edge(picture):
    """Brightness of the green floor, or of the black beyond it, at the window's right edge."""
    return picture.getpixel((picture.width - 3, picture.height // 2))[1]


def test_a_floor_dragged_past_its_edge_springs_back():
    write_page("home.orvl", page_text("", GREEN_PAGE, position=(85.0, 0.0)))
    write_options(floor_inertia=0)
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        wait_still(program)
        program.move_to(1000, 700)
        xdotool("mousedown", 1)
        move_in_steps(program, (1000, 700), (200, 700))
        held = wait_still(program)
        program.picture("past-the-edge")
        assert right_edge(held) < 5, "the floor was not dragged past its edge"
        xdotool("mouseup", 1)
        wait_for(lambda: right_edge(program.picture()) > 30, what="the floor at the window's edge")
        wait_still(program)


def middle_of_name(program):
    """Where the one name on the page stands from left to right, below the title; None = not in sight."""
    picture = program.picture()
    page = picture.crop((0, 100, picture.width, picture.height))
    columns = [
        i % page.width for i, pixel in enumerate(page.getdata()) if min(pixel) > 190
    ]
    return sum(columns) / len(columns) if columns else None


def test_a_thrown_floor_coasts_and_comes_to_rest_and_a_rested_mouse_does_not_throw():
    write_page("home.orvl", page_text(object_text("Only", 0.0, 0.0, []), GREEN_PAGE))
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        wait_still(program)
        start = middle_of_name(program)
        drag(program, (700, 800), (600, 800), steps=6, pause=0.03, rest=0.5)
        wait_still(program)
        at_release = middle_of_name(program)
        assert abs(start - at_release - 100) < 8, "the floor does not follow the mouse"

        # A machine that is busy drawing may hear of the last moves and of the release far apart.
        def coasted():
            program.key("Home")
            wait_still(program)
            drag(program, (800, 800), (700, 800), steps=8, pause=0.01)
            wait_still(program)
            end = middle_of_name(program)
            return end is None or start - end > 130

        assert any(coasted() for _ in range(4)), "the floor stops with the mouse"


def test_an_object_under_the_mouse_grows_and_then_spins_and_settles_as_it_was():
    write_page("home.orvl", page_text(object_text("Only", 0.0, 0.0, []), GREEN_PAGE))
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        at_rest = wait_still(program)
        program.move_to(*program.screen_position(0, 0))
        time.sleep(0.8)  # 15 frames of 25 ms have passed, but not the 80 after them
        assert differ(program.picture("grown"), at_rest), "the object does not grow"
        time.sleep(2.5)
        first = program.picture("spinning")
        time.sleep(0.5)
        assert differ(program.picture(), first), "the object does not spin"
        program.rest_mouse()
        assert not differ(wait_still(program), at_rest), "the object does not settle as it was"
