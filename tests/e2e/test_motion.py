"""The page moves: buttons lead back, the floor is dragged and thrown, objects spin."""

import time

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


def wait_still(program, timeout=20):
    """Waits until nothing moves any more and returns the picture."""

    def still():
        before = program.picture().tobytes()
        time.sleep(STILL)
        after = program.picture()
        return after if after.tobytes() == before else None

    return wait_for(still, timeout, "a still picture")


def drag(program, start, end, steps=12, pause=0.02, rest=0.0):
    program.move_to(*start)
    xdotool("mousedown", 1)
    for step in range(1, steps + 1):
        x = start[0] + (end[0] - start[0]) * step // steps
        y = start[1] + (end[1] - start[1]) * step // steps
        xdotool("mousemove", "--window", program.window, x, y)
        time.sleep(pause)
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
        assert lit.tobytes() != picture.tobytes()
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


def test_a_floor_dragged_past_its_edge_springs_back():
    write_page("home.orvl", page_text("", GREEN_PAGE, position=(85.0, 0.0)))
    write_options(floor_inertia=0)
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        wait_still(program)
        drag(program, (1000, 700), (200, 700), rest=0.2)
        beyond = program.picture("past-the-edge")
        back = wait_still(program)
        assert beyond.tobytes() != back.tobytes()
        right = back.getpixel((back.width - 3, back.height // 2))
        assert right[1] > 30, "the floor does not reach the window's edge again"


def test_a_thrown_floor_coasts_and_comes_to_rest_and_a_rested_mouse_does_not_throw():
    write_page("home.orvl", page_text(object_text("Only", 0.0, 0.0, []), GREEN_PAGE))
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        wait_still(program)
        drag(program, (700, 700), (600, 700), steps=6, pause=0.03, rest=0.5)
        at_release = program.picture().tobytes()
        time.sleep(0.3)
        assert program.picture().tobytes() == at_release
        drag(program, (700, 800), (500, 800), steps=8, pause=0.01)
        thrown = program.picture().tobytes()
        rest = wait_still(program)
        assert rest.tobytes() != thrown


def test_an_object_under_the_mouse_grows_and_then_spins():
    write_page("home.orvl", page_text(object_text("Only", 0.0, 0.0, []), GREEN_PAGE))
    with Orvanel().wait_ready() as program:
        program.rest_mouse()
        program.move_to(*program.screen_position(0, 0))
        time.sleep(3.5)  # 15 frames of growing, 80 of waiting, 25 ms each
        first = program.picture("spinning")
        time.sleep(0.5)
        assert program.picture().tobytes() != first.tobytes()
        program.rest_mouse()
        wait_still(program)
