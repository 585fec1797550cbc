"""Computers and what is plugged into them."""
import math

from .mesh import group, move, turn
from .pose import bar, lamp, posed, screen
from .shapes import block, circle, cylinder, frame, panel, prism, rectangle, rounded, rounded_rectangle


def server():
    parts = [block(1.9, 3.5, 2.3, 0.14, "silver"), block(1.68, 3.26, 0.14, 0.06, "graphite").move(z=1.14)]
    for k in range(3):
        y = 1.24 - 0.44 * k
        parts += [block(1.36, 0.34, 0.1, 0.04, "steel").move(y=y, z=1.21),
                  bar(-0.56, 0.12, y, 1.27, 0.07, "black"), lamp(0.5, y, 1.27, 0.13, "lamp_green")]
    parts += [bar(-0.68, 0.68, -0.12, 1.22, 0.06, "lamp_blue"), lamp(-0.48, -0.42, 1.23, 0.24, "lamp_blue"),
              lamp(0.1, -0.42, 1.23, 0.13, "lamp_amber"), lamp(0.46, -0.42, 1.23, 0.13, "lamp_green")]
    parts += [bar(-0.64, 0.64, -0.76 - 0.17 * k, 1.21, 0.08, "black") for k in range(5)]
    parts += [block(0.34, 0.14, 2.0, 0.05, "black").move(x=x, y=-1.78) for x in (-0.62, 0.62)]
    return posed(parts)


def rack():
    parts = [block(2.3, 3.7, 2.0, 0.09, "graphite"), frame(rounded_rectangle(2.3, 3.7, 0.09),
             rounded_rectangle(1.96, 3.36, 0.05), 0.2, 0.04, "steel").move(z=1.04)]
    looks = ["lamp_green", "lamp_blue", "lamp_green", "lamp_amber", "lamp_green", "lamp_blue", "lamp_green"]
    for k, colour in enumerate(looks):
        y = 1.41 - 0.47 * k
        parts.append(block(1.92, 0.41, 0.14, 0.04, "silver" if k % 3 != 1 else "blue").move(y=y, z=1.04))
        parts += [lamp(0.66 - 0.24 * i, y, 1.12, 0.13, colour) for i in range(2)]
        parts += [bar(-0.8, 0.1, y + dy, 1.1, 0.07, "black") for dy in (-0.09, 0.09)]
    return posed(parts)


def computer():
    window = [panel(1.5, 0.95, 0.05, 0.05, "white").move(-0.35, 0.1, 0.2),
              bar(-1.06, 0.36, 0.47, 0.225, 0.15, "lamp_blue")]
    window += [bar(-0.98, x, 0.2 - 0.19 * k, 0.225, 0.08, "ink") for k, x in enumerate((0.2, -0.1, 0.05))]
    monitor = group(block(3.6, 2.36, 0.3, 0.12, "graphite"), screen(3.26, 1.98, 0.0, 0.04, 0.15), window,
                    bar(-1.6, 1.6, -0.9, 0.18, 0.13, "black"), lamp(1.5, -1.07, 0.15, 0.1, "lamp_green"))
    stand = [block(0.5, 0.9, 0.22, 0.08, "silver").move(y=-1.45, z=-0.12),
             cylinder(0.95, 0.16, 0.07, 32, "silver").move(y=-1.86, z=0.0)]
    return posed(move(monitor, y=0.0), stand, pitch=15.0)


def laptop():
    keys = [prism(rounded_rectangle(2.9, 1.12, 0.06), 0.04, 0.0, "black").move(y=0.22)]
    for row in range(4):
        keys += [prism(rectangle(0.19, 0.19), 0.05, 0.0, "steel").move(-1.3 + 0.26 * k, 0.6 - 0.26 * row, 0.02)
                 for k in range(11)]
    keys += [panel(0.95, 0.5, 0.06, 0.05, "steel").move(y=-0.68)]
    base = group(block(3.4, 0.2, 2.3, 0.08, "silver"), move(turn(keys, "x", -90.0), y=0.11))
    lid = group(block(3.4, 2.2, 0.16, 0.07, "silver"), panel(3.22, 2.02, 0.07, 0.06, "black").move(z=0.08),
                screen(3.0, 1.8, 0.0, 0.0, 0.11), panel(1.3, 0.84, 0.05, 0.05, "white").move(-0.45, 0.1, 0.14),
                bar(-1.06, 0.16, 0.43, 0.165, 0.13, "lamp_blue"),
                [bar(-1.0, x, 0.17 - 0.19 * k, 0.165, 0.08, "ink") for k, x in enumerate((0.05, -0.2, -0.1))])
    move(turn(move(lid, y=1.12), "x", -14.0), y=0.06, z=-1.14)
    return posed(base, lid, pitch=30.0, yaw=-22.0, height=2.0)


def printer():
    body = [block(3.4, 1.25, 2.2, 0.2, "white"), block(3.42, 0.3, 2.1, 0.1, "graphite").move(y=-0.16),
            block(2.5, 0.24, 0.5, 0.06, "black").move(y=-0.28, z=1.0),
            block(2.7, 0.2, 1.0, 0.08, "steel").move(y=-0.55, z=1.35)]
    sheet = group(prism(rectangle(2.0, 1.5), 0.03, 0.0, "paper"),
                  [bar(-0.8, x, 0.45 - 0.24 * k, 0.02, 0.09, "ink") for k, x in enumerate((0.8, 0.5, 0.7, 0.2))])
    move(turn(sheet, "x", -72.0), y=-0.34, z=1.55)
    supply = group(prism(rounded_rectangle(2.3, 1.7, 0.1), 0.1, 0.03, "graphite"),
                   prism(rectangle(2.0, 1.75), 0.08, 0.0, "paper").move(y=0.18, z=0.08))
    move(turn(supply, "x", -24.0), y=1.15, z=-0.75)
    controls = group(panel(1.0, 0.5, 0.06, 0.06, "black"), panel(0.5, 0.3, 0.03, 0.06, "lamp_blue").move(-0.15, 0.0, 0.02),
                     lamp(0.3, 0.0, 0.03, 0.17, "lamp_green"))
    move(turn(controls, "x", -60.0), x=1.0, y=0.6, z=0.66)
    return posed(body, sheet, supply, controls, pitch=24.0, width=1.9)


def drive():
    case = group(block(2.9, 3.7, 0.55, 0.14, "steel"), panel(2.66, 3.44, 0.14, 0.06, "graphite").move(z=0.27),
                 cylinder(1.24, 0.08, 0.03, 56, "silver").turn("x", 90.0).move(y=0.46, z=0.34),
                 cylinder(0.42, 0.12, 0.04, 32, "steel").turn("x", 90.0).move(y=0.46, z=0.38),
                 cylinder(0.3, 0.22, 0.05, 24, "brass").turn("x", 90.0).move(-0.9, -1.3, 0.4),
                 panel(1.2, 0.6, 0.05, 0.06, "green").move(0.62, -1.3, 0.3),
                 lamp(1.02, -1.42, 0.33, 0.16, "lamp_green"))
    arm = prism(rounded([(-0.17, -0.2), (0.17, -0.2), (0.07, 1.75), (-0.07, 1.75)], 0.04), 0.08, 0.02, "white")
    arm.turn("z", -24.0).move(-0.9, -1.3, 0.46)
    screws = [cylinder(0.12, 0.08, 0.03, 16, "silver").turn("x", 90.0).move(x, y, 0.31)
              for x in (-1.18, 1.18) for y in (-1.58, 1.58)]
    return posed(case, arm, screws, pitch=14.0)


def phone():
    parts = [block(2.0, 3.8, 0.34, 0.16, "silver", steps=2), panel(1.82, 3.6, 0.16, 0.06, "black").move(z=0.16),
             screen(1.6, 2.84, 0.0, 0.06, 0.18), bar(-0.3, 0.3, 1.65, 0.2, 0.08, "steel"),
             cylinder(0.16, 0.06, 0.02, 20, "steel").turn("x", 90.0).move(y=-1.58, z=0.19)]
    colours = ["lamp_white", "lamp_amber", "lamp_green", "lamp_red", "lamp_blue", "lamp_white", "lamp_green",
               "lamp_amber", "lamp_white"]
    parts += [panel(0.38, 0.38, 0.1, 0.06, colour).move(-0.5 + 0.5 * (k % 3), 1.0 - 0.52 * (k // 3), 0.205)
              for k, colour in enumerate(colours)]
    parts += [bar(-0.6, 0.6, -0.98, 0.22, 0.3, "screen_dark")]
    parts += [panel(0.22, 0.22, 0.07, 0.05, c).move(x, -0.98, 0.24)
              for x, c in ((-0.36, "lamp_green"), (0.0, "lamp_blue"), (0.36, "lamp_white"))]
    return posed(parts)


def chip():
    pins = []
    for k in range(7):
        offset = -1.08 + 0.36 * k
        for angle in (0.0, 90.0, 180.0, 270.0):
            pins.append(block(0.2, 0.5, 0.12, 0.04, "brass").move(offset, 1.55, 0.0).turn("z", angle))
    die = group(block(2.8, 2.8, 0.42, 0.1, "graphite"), panel(2.0, 2.0, 0.1, 0.08, "silver").move(z=0.22),
                panel(1.5, 1.5, 0.08, 0.05, "teal").move(z=0.27),
                [bar(-0.5, x, 0.3 - 0.3 * k, 0.3, 0.12, "white") for k, x in enumerate((0.5, 0.1, 0.35))],
                cylinder(0.11, 0.06, 0.02, 16, "amber").turn("x", 90.0).move(-1.15, 1.15, 0.2))
    return posed(die, pins, pitch=26.0)


def adapter():
    """A card with chips on it, for the devices of a computer."""
    board = [block(3.6, 2.3, 0.16, 0.05, "green"), block(2.6, 0.3, 0.14, 0.04, "brass").move(-0.2, -1.25),
             block(0.16, 2.9, 0.7, 0.05, "silver").move(-1.86, -0.1, 0.2)]
    fan = [cylinder(0.82, 0.34, 0.08, 40, "graphite").turn("x", 90.0).move(0.75, 0.08, 0.24),
           frame(circle(0.72, 40), circle(0.62, 40), 0.1, 0.03, "silver").move(0.75, 0.08, 0.42),
           cylinder(0.22, 0.2, 0.05, 20, "silver").turn("x", 90.0).move(0.75, 0.08, 0.4)]
    for k in range(7):
        blade = prism(rounded([(-0.1, 0.12), (0.1, 0.12), (0.2, 0.58), (-0.04, 0.6)], 0.03, 2), 0.06, 0.0, "steel")
        fan.append(blade.turn("z", 360.0 / 7.0 * k).move(0.75, 0.08, 0.42))
    chips = [block(0.5, 0.5, 0.18, 0.05, "black").move(x, y, 0.14) for x, y in ((-1.3, 0.65), (-1.3, -0.1), (-0.6, 0.65))]
    chips += [block(0.55, 0.24, 0.16, 0.05, "silver").move(-0.6, 0.0, 0.14), block(0.55, 0.24, 0.16, 0.05, "silver").move(-0.6, -0.4, 0.14)]
    chips += [bar(-1.5, -0.4, -0.8, 0.1, 0.1, "amber")]
    return posed(board, fan, chips, pitch=18.0, yaw=-24.0, width=1.95)


def dial(radius, count):
    """Points of a dial, the first at the top, clockwise."""
    return [(radius * math.sin(2.0 * math.pi * k / count), radius * math.cos(2.0 * math.pi * k / count))
            for k in range(count)]


def calculator():
    parts = [block(2.5, 3.6, 0.5, 0.2, "graphite", steps=2), panel(2.1, 0.8, 0.08, 0.06, "lamp_lcd").move(0, 1.15, 0.25)]
    parts += [bar(x, x + 0.22, 1.15, 0.28, 0.42, "navy") for x in (0.0, 0.34, 0.68)]
    for row in range(4):
        for column in range(4):
            colour = "orange" if column == 3 else "white"
            parts.append(block(0.42, 0.4, 0.2, 0.08, colour).move(-0.8 + 0.535 * column, 0.35 - 0.56 * row, 0.28))
    return posed(parts)


def clock():
    parts = [cylinder(1.8, 0.5, 0.14, 56, "blue").turn("x", 90.0),
             cylinder(1.52, 0.12, 0.03, 56, "white").turn("x", 90.0).move(z=0.25)]
    for k, (x, y) in enumerate(dial(1.25, 12)):
        mark = prism(rectangle(0.14 if k % 3 == 0 else 0.09, 0.3 if k % 3 == 0 else 0.18), 0.06, 0.0, "navy")
        parts.append(mark.turn("z", -30.0 * k).move(x, y, 0.31))
    for length, width, angle, colour, z in ((0.85, 0.16, -55.0, "navy", 0.36), (1.2, 0.12, 35.0, "navy", 0.4),
                                            (1.3, 0.06, 165.0, "red", 0.44)):
        hand = prism(rounded_rectangle(width, length, width * 0.4, 2), 0.06, 0.015, colour, steps=1)
        parts.append(hand.move(y=length / 2.0 - 0.18).turn("z", angle).move(z=z))
    parts.append(cylinder(0.17, 0.14, 0.04, 20, "red").turn("x", 90.0).move(z=0.44))
    return posed(parts, pitch=12.0, yaw=-22.0)
