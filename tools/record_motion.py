#!/usr/bin/python3
"""Makes docs/motion.png: the real program at work in a virtual display, a few frames side by side.

    tools/with_display.sh tools/record_motion.py

Needs the win32 build and its Wine, as the end-to-end tests do. A row each for a page that is opened,
a floor that is thrown, and an object that spins under the mouse.
"""

import pathlib
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "e2e"))

from PIL import Image, ImageChops, ImageStat  # noqa: E402

import orvanel  # noqa: E402

COLUMNS = 4
FRAME = (400, 306)  # pixels of a frame in the picture
GAP = 6  # pixels between frames
GAP_COLOUR = (255, 255, 255)
NETWORK = (0.0, 20.0)  # floor positions on the home page
REGISTRY = (10.0, 7.5)
PAGE_BOX = (140, 55, 1140, 820)  # the part of the window with the objects, pixels
NEAR = 7  # zoom level for the spinning object


def difference(a, b):
    """How much of a picture differs from another one, 0..255."""
    return sum(ImageStat.Stat(ImageChops.difference(a, b)).mean) / 3


def wait_still(program):
    def still():
        before = program.picture()
        time.sleep(0.6)
        after = program.picture()
        return after if before.tobytes() == after.tobytes() else None

    return orvanel.wait_for(still, 30, "a still picture")


def film(program, seconds):
    """Pictures as fast as they come, leaving out repetitions."""
    frames = []
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        frame = program.picture()
        if not frames or frame.tobytes() != frames[-1].tobytes():
            frames.append(frame)
    return frames


def shows_objects(frame):
    """False for bare floor."""
    return max(ImageStat.Stat(frame.crop(PAGE_BOX)).stddev) > 12


def floor_red(frame):
    """Tells the pages apart: one is blue, the other purple."""
    return frame.getpixel((20, 700))[0]


def spread(frames, count):
    """That many of the frames, from the first to the last."""
    return [frames[i * (len(frames) - 1) // (count - 1)] for i in range(count)]


def opening_page(program):
    before = wait_still(program)
    program.double_click(*program.screen_position(*NETWORK))
    frames = film(program, 6.0)
    after = wait_still(program)
    flight = [f for f in frames if min(difference(f, before), difference(f, after)) > 1.0]
    out = [f for f in flight if floor_red(f) <= floor_red(before) + 1 and shows_objects(f)]
    back = [f for f in flight if floor_red(f) > floor_red(before) + 1 and shows_objects(f)]
    if not out or not back:
        return None
    return [before, out[len(out) // 2], back[len(back) // 2], after]


def throwing_floor(program):
    program.rest_mouse()
    before = wait_still(program)
    program.move_to(560, 820)
    orvanel.xdotool("mousedown", 1)
    for step in range(1, 16):
        orvanel.xdotool("mousemove", "--window", program.window, 560 + 9 * step, 820 - 3 * step)
        time.sleep(0.03)
    orvanel.xdotool("mouseup", 1)
    frames = [frame for frame in film(program, 4.0) if difference(frame, before) > 0.5]
    if len(frames) < COLUMNS - 1 or difference(frames[-1], frames[0]) < 0.5:
        return None
    return spread([before, *frames], COLUMNS) if shows_objects(frames[-1]) else None


def spinning_object(program):
    program.key(*["plus"] * (NEAR - 4))
    x, y = program.screen_position(*REGISTRY, zoom_level=NEAR)
    program.rest_mouse()
    before = wait_still(program)
    program.move_to(x, y)
    time.sleep(3.0)  # it grows and waits before it spins
    frames = [before]
    for _ in range(COLUMNS - 1):
        frames.append(program.picture())
        time.sleep(0.7)
    half = (FRAME[0] * 2 // 5, FRAME[1] * 2 // 5)
    box = (x - half[0], y - half[1], x + half[0], y + half[1])
    return [frame.crop(box) for frame in frames]


def sheet(rows):
    width = COLUMNS * (FRAME[0] + GAP) - GAP
    height = len(rows) * (FRAME[1] + GAP) - GAP
    picture = Image.new("RGB", (width, height), GAP_COLOUR)
    for row, frames in enumerate(rows):
        for column, frame in enumerate(frames):
            place = (column * (FRAME[0] + GAP), row * (FRAME[1] + GAP))
            picture.paste(frame.resize(FRAME, Image.LANCZOS), place)
    return picture


def take(program, scene):
    """The frames of a scene; it is played again when the moment was missed."""
    for _ in range(5):
        frames = scene(program)
        program.key("BackSpace")
        wait_still(program)
        program.key("Home")
        program.rest_mouse()
        if frames is not None:
            return [frame.crop(PAGE_BOX) for frame in frames]
    raise SystemExit(f"{scene.__name__}: not caught")


def main():
    orvanel.clean_user()
    orvanel.write_options()
    with orvanel.Orvanel().wait_ready() as program:
        program.rest_mouse()
        rows = [take(program, opening_page), take(program, throwing_floor)]
        rows.append(spinning_object(program))
    orvanel.clean_user()
    out = ROOT / "docs" / "motion.png"
    sheet(rows).save(out, optimize=True)
    print(out)


main()
