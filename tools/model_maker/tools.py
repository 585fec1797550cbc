"""Tools, people and stored data."""
import math

from .mesh import group, move, turn
from .pose import lamp, posed
from .shapes import ball, block, cylinder, frame, lathe, prism


def gear_outline(inner, outer, teeth):
    tooth_shape = [(0.0, inner), (0.18, inner), (0.27, outer), (0.5, outer), (0.73, outer), (0.82, inner), (0.91, inner)]
    result = []
    for tooth in range(teeth):
        for share, radius in tooth_shape:
            a = 2.0 * math.pi * (tooth + share) / teeth
            result.append((radius * math.cos(a), radius * math.sin(a)))
    return result


def gear_solids(inner, outer, teeth, hole, depth, material):
    outline = gear_outline(inner, outer, teeth)
    hole_outline = [(hole * math.cos(math.atan2(y, x)), hole * math.sin(math.atan2(y, x))) for x, y in outline]
    hub = [(hole + 0.32) / hole * x for x, _ in hole_outline], [(hole + 0.32) / hole * y for _, y in hole_outline]
    return [frame(outline, hole_outline, depth, 0.06, material, steps=1),
            frame(list(zip(*hub)), [(0.98 * x, 0.98 * y) for x, y in hole_outline], depth + 0.22, 0.07, "silver", steps=1)]


def gear():
    return posed(gear_solids(1.4, 1.8, 10, 0.55, 0.6, "steel"), pitch=14.0, yaw=-24.0)


def services():
    """Two gears in mesh."""
    small = move(gear_solids(0.76, 1.05, 8, 0.3, 0.5, "orange"), 1.62, -1.28)
    return posed(gear_solids(1.25, 1.6, 10, 0.5, 0.6, "sky"), small, pitch=12.0, yaw=-22.0, width=1.95)


def wrench_outline():
    head = [(0.62 * math.cos(math.radians(a)), 1.65 + 0.62 * math.sin(math.radians(a))) for a in range(-60, 49, 12)]
    jaw = [(0.2, 2.16), (0.2, 1.6), (0.0, 1.46), (-0.2, 1.6), (-0.2, 2.16)]
    other = [(-x, y) for x, y in reversed(head)]
    lower = [(-0.24, 0.95), (-0.24, -1.05)]
    end = [(0.5 * math.cos(math.radians(a)), -1.6 + 0.5 * math.sin(math.radians(a))) for a in range(124, 417, 12)]
    return head + jaw + other + lower + end + [(0.24, -1.05), (0.24, 0.95)]


def tools():
    wrench = group(prism(wrench_outline(), 0.3, 0.05, "silver"),
                   cylinder(0.24, 0.33, 0.03, 24, "graphite").turn("x", 90.0).move(y=-1.6))
    driver = group(lathe([(0.0, -2.2), (0.28, -2.15), (0.36, -1.9), (0.28, -1.3), (0.36, -0.8), (0.3, -0.5), (0.14, -0.42),
                          (0.0, -0.42)], 16, "red"), cylinder(0.12, 1.9, 0.03, 16, "steel").move(y=0.5),
                   prism([(-0.1, 0.0), (0.1, 0.0), (0.22, 0.6), (0.16, 0.8), (-0.16, 0.8), (-0.22, 0.6)], 0.1, 0.03, "steel").move(y=1.35))
    return posed(turn(wrench, "z", 42.0), move(turn(driver, "z", -42.0), z=0.32), pitch=12.0, yaw=-18.0)


def person(shirt, x=0.0, y=0.0, z=0.0, factor=1.0, around=32, rows=18):
    shoulders = lathe([(0.0, -1.75), (1.3, -1.75), (1.42, -1.68), (1.45, -1.5), (1.36, -0.95), (1.1, -0.5), (0.7, -0.22),
                       (0.32, -0.12), (0.0, -0.1)], around, shirt, 60.0).scale(1.0, 1.0, 0.62)
    neck = cylinder(0.32, 0.6, 0.05, 20, "skin", steps=1).move(y=-0.02)
    head = ball(0.76, around, rows, "skin").scale(0.95, 1.1, 0.95).move(y=0.86)
    hair = ball(0.8, around, rows, "graphite").scale(0.96, 0.95, 0.96).move(y=1.1, z=-0.14)
    collar = lathe([(0.3, -0.2), (0.5, -0.22), (0.44, -0.02), (0.34, 0.04)] + [(0.3, -0.2)], 20, "white")
    solids = [shoulders, neck, head, hair, collar]
    return move([s.scale(factor, factor, factor) for s in solids], x, y, z)


def user():
    return posed(person("blue"), pitch=10.0, yaw=-22.0)


def users():
    return posed(person("teal", x=-0.9, y=0.35, z=-0.9, factor=0.85, around=24, rows=12), person("orange", x=0.9, y=0.35, z=-0.9, factor=0.85, around=24, rows=12),
                 person("blue", y=-0.1, around=28, rows=14), pitch=10.0, yaw=-14.0, width=1.95)


def database():
    parts = []
    for k, colour in enumerate(("blue", "sky", "blue")):
        y = -1.12 + 1.12 * k
        parts.append(cylinder(1.45, 0.96, 0.16, 48, colour).move(y=y))
        parts += [lamp(0.0, 0.0, 0.0, 0.22, c).move(z=1.46).turn("y", angle).move(y=y)
                 for angle, c in ((20.0, "lamp_green"), (34.0, "lamp_green"), (48.0, "lamp_amber"))]
    parts += [cylinder(1.36, 3.1, 0.04, 40, "graphite"), cylinder(1.12, 0.12, 0.04, 48, "silver").move(y=1.6)]
    return posed(parts, pitch=26.0, yaw=-24.0)


def blocks():
    """A cube of cubes with one of them coming out: values in a store."""
    colours = ["blue", "sky", "teal", "sky", "blue", "teal", "sky", "blue"]
    parts, n = [], 0
    for x in (-0.56, 0.56):
        for y in (-0.56, 0.56):
            for z in (-0.56, 0.56):
                outside = x > 0 and y > 0 and z > 0
                cube = block(1.04, 1.04, 1.04, 0.1, "orange" if outside else colours[n])
                if outside:
                    cube.turn("z", -16.0).turn("y", 14.0).move(0.34, 0.52, 0.34)
                parts.append(cube.move(x, y, z))
                n += 1
    return posed(parts, pitch=24.0, yaw=-30.0)
