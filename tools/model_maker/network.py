"""What connects and guards the computers."""
import math

from .mesh import group, move, turn
from .pose import lamp, posed
from .shapes import ball, block, circle, cylinder, frame, inset, lathe, panel, prism, rectangle, tube


def router():
    parts = [block(3.5, 0.55, 2.0, 0.2, "white", steps=2), block(3.3, 0.3, 0.2, 0.08, "graphite").move(y=-0.03, z=0.95)]
    colours = ["lamp_green", "lamp_green", "lamp_blue", "lamp_green", "lamp_amber"]
    parts += [lamp(-1.2 + 0.42 * k, -0.03, 1.05, 0.17, colour) for k, colour in enumerate(colours)]
    badge = panel(0.9, 0.5, 0.2, 0.06, "blue").turn("x", -90.0).move(0.0, 0.29, 0.1)
    for x, lean in ((-1.3, 14.0), (0.0, 0.0), (1.3, -14.0)):
        antenna = group(cylinder(0.17, 0.4, 0.06, 20, "graphite").move(y=0.2),
                        lathe([(0.0, 0.3), (0.13, 0.34), (0.1, 1.95), (0.06, 2.05), (0.0, 2.08)], 20, "graphite"))
        parts += move(turn(antenna, "z", lean), x=x, y=0.05, z=-0.8)
    return posed(parts, badge, pitch=27.0, yaw=-22.0, width=1.95)


def switch():
    parts = [block(3.9, 0.95, 2.0, 0.09, "teal"), panel(3.7, 0.78, 0.05, 0.06, "graphite").move(z=1.0)]
    for row in range(2):
        for column in range(7):
            x, y = -1.52 + 0.37 * column, 0.17 - 0.36 * row
            parts += [prism(rectangle(0.28, 0.22), 0.05, 0.0, "silver").move(x, y, 1.03),
                      prism(rectangle(0.22, 0.16), 0.04, 0.0, "black").move(x, y, 1.05),
                      lamp(x, y + (0.17 if row == 0 else -0.15), 1.03, 0.075,
                           "lamp_amber" if (column + row) % 5 == 3 else "lamp_green")]
    parts += [block(0.34, 0.56, 0.1, 0.04, "silver").move(x, 0.0, 1.05) for x in (1.18, 1.6)]
    parts += [block(0.2, 0.75, 0.1, 0.04, "steel").move(x, 0.0, 0.92) for x in (-2.0, 2.0)]
    return posed(parts, pitch=30.0, yaw=-20.0, width=2.1)


def access_point():
    parts = [lathe([(0.0, -0.3), (1.35, -0.3), (1.5, -0.2), (1.5, -0.05), (1.3, 0.18), (0.9, 0.29), (0.0, 0.33)], 48,
                   "white", 60.0), lathe([(0.0, 0.3), (0.5, 0.3), (0.5, 0.36), (0.0, 0.36)], 32, "lamp_blue")]
    move(parts, y=-1.2)
    for radius in (0.75, 1.35, 1.95):
        points = [(radius * math.sin(a), radius * math.cos(a), 0.0)
                  for a in [math.radians(-42.0 + 84.0 * k / 16) for k in range(17)]]
        parts.append(tube(points, 0.13, 12, "sky").move(y=-0.7))
    return posed(parts, pitch=20.0, yaw=-14.0)


def shield_outline(width, height):
    half = width / 2.0
    right = [(half * math.sin(t), -height * 0.5 + height * 0.62 * (1.0 - math.cos(t)))
             for t in [math.radians(90.0 * k / 10) for k in range(1, 11)]]
    return [(0.0, -height * 0.5)] + right + [(half, height * 0.36), (0.0, height * 0.5), (-half, height * 0.36)] + \
           [(-x, y) for x, y in reversed(right)]


def shield_solids(width, height):
    outline = shield_outline(width, height)
    tick = [(-0.26, -0.02), (-0.09, -0.2), (0.3, 0.22), (0.2, 0.33), (-0.09, 0.02), (-0.16, 0.09)]
    return [prism(outline, 0.36, 0.09, "silver", steps=3),
            prism(inset(outline, 0.09 * width), 0.2, 0.06, "blue").move(z=0.14),
            prism([(x * width, y * width) for x, y in tick], 0.14, 0.03, "white").move(y=0.02, z=0.26)]


def shield():
    return posed(shield_solids(3.0, 3.6), pitch=10.0, yaw=-22.0)


def firewall():
    rows, height, long = 5, 0.56, 1.06
    parts = [block(3.06, rows * height - 0.1, 0.62, 0.03, "mortar")]
    for row in range(rows):
        edges = [-1.59, -0.53, 0.53, 1.59] if row % 2 == 0 else [-1.59, -1.06, 0.0, 1.06, 1.59]
        for k, (x0, x1) in enumerate(zip(edges, edges[1:])):
            colour = "brick" if (k + 2 * row) % 3 else "brick_dark"
            parts.append(block(x1 - x0 - 0.07, height - 0.07, 0.78, 0.06, colour)
                         .move((x0 + x1) / 2.0, (row - (rows - 1) / 2.0) * height))
    guard = move(shield_solids(1.7, 2.05), x=0.85, y=-0.62, z=0.75)
    return posed(parts, guard, pitch=16.0, yaw=-26.0, width=1.9)


LAND = [  # longitude and latitude, roughly as they are seen from far away
    [(-165, 65), (-130, 70), (-95, 72), (-80, 66), (-60, 54), (-66, 45), (-76, 36), (-81, 27), (-90, 30), (-97, 26),
     (-95, 18), (-84, 10), (-78, 8), (-90, 14), (-106, 22), (-118, 34), (-125, 47), (-140, 59), (-160, 57)],
    [(-78, 8), (-62, 10), (-50, 0), (-35, -7), (-40, -22), (-54, -34), (-66, -46), (-70, -54), (-74, -48), (-71, -20),
     (-81, -5)],
    [(-50, 60), (-25, 70), (-20, 80), (-45, 82), (-68, 77)],
    [(-10, 36), (-9, 43), (0, 48), (8, 54), (6, 60), (14, 68), (28, 71), (45, 67), (70, 73), (105, 77), (140, 73),
     (178, 68), (162, 60), (142, 54), (132, 43), (122, 38), (121, 29), (108, 20), (104, 9), (98, 14), (90, 22), (80, 14),
     (77, 8), (72, 20), (62, 25), (56, 27), (58, 20), (45, 13), (36, 28), (30, 36), (22, 38), (12, 44), (3, 42)],
    [(-16, 15), (-8, 33), (10, 37), (22, 32), (33, 30), (43, 12), (51, 11), (40, -8), (34, -24), (20, -35), (14, -22),
     (9, 2), (-8, 5)],
    [(114, -22), (130, -12), (142, -11), (153, -26), (148, -38), (136, -34), (116, -35)],
    [(96, 4), (104, -6), (118, -8), (140, -3), (146, -8), (136, -9), (118, 6), (108, 0)],
    [(44, -14), (50, -16), (46, -25)], [(130, 32), (140, 36), (145, 44), (138, 38)], [(-6, 50), (1, 52), (-4, 58)],
]
ICE_BELOW, ICE_ABOVE = -68.0, 78.0  # degrees of latitude


def on_land(longitude, latitude):
    for outline in LAND:
        hit = False
        for (x0, y0), (x1, y1) in zip(outline, outline[1:] + outline[:1]):
            if (y0 > latitude) != (y1 > latitude) and longitude < x0 + (latitude - y0) / (y1 - y0) * (x1 - x0):
                hit = not hit
        if hit:
            return True
    return False


def globe():
    def surface(centre, _):
        latitude = math.degrees(math.asin(max(-1.0, min(1.0, centre[1] / math.sqrt(sum(c * c for c in centre))))))
        longitude = math.degrees(math.atan2(centre[0], centre[2]))
        if latitude < ICE_BELOW or latitude > ICE_ABOVE:
            return "ice"
        return "land" if on_land(longitude, latitude) else "ocean"
    world = ball(1.5, 60, 32, "ocean").paint(surface).turn("y", -14.0)
    axis = [cylinder(0.09, 3.5, 0.04, 14, "brass")]
    world = turn([world] + axis, "z", -20.0)
    meridian = tube([(1.72 * math.cos(a), 1.72 * math.sin(a), 0.0)
                     for a in [math.radians(68.0 + 180.0 + 184.0 * k / 32) for k in range(33)]], 0.1, 10, "brass")
    foot = [lathe([(0.0, -2.3), (1.0, -2.3), (1.06, -2.24), (0.95, -2.14), (0.25, -2.02), (0.14, -1.9), (0.14, -1.66),
                   (0.0, -1.66)], 36, "wood", 40.0)]
    return posed(world, meridian, foot, pitch=12.0, yaw=0.0, height=2.0)


def network():
    nodes = [(0.0, 0.0, 0.0, 0.62, "blue"), (-1.4, 1.1, 0.2, 0.42, "sky"), (1.35, 1.2, -0.3, 0.42, "green"),
             (1.5, -0.9, 0.3, 0.42, "amber"), (-1.2, -1.25, -0.2, 0.42, "orange")]
    parts = [ball(radius, 28, 14, colour).move(x, y, z) for x, y, z, radius, colour in nodes]
    for x, y, z, _, _ in nodes[1:]:
        parts.append(tube([(0.0, 0.0, 0.0), (x, y, z)], 0.1, 12, "silver"))
    return posed(parts, pitch=10.0, yaw=-10.0)


def cloud():
    puffs = [(0.0, 0.25, 0.0, 1.0), (-1.05, -0.15, 0.05, 0.72), (1.0, -0.1, 0.05, 0.78), (-0.5, -0.35, 0.45, 0.62),
             (0.5, -0.35, 0.5, 0.64), (0.62, 0.42, -0.1, 0.72), (-0.6, 0.3, -0.15, 0.66)]
    parts = [ball(radius, 26, 14, "white").move(x, y, z) for x, y, z, radius in puffs]
    parts.append(ball(0.8, 26, 10, "sky").scale(2.0, 0.42, 0.9).move(0.0, -0.72, 0.1))
    return posed(parts, pitch=10.0, yaw=-12.0, width=2.0)


def lock():
    shackle = [(-0.75, 0.2, 0.0), (-0.75, 0.9, 0.0)]
    shackle += [(0.75 * math.cos(math.radians(180.0 - 15.0 * k)), 0.9 + 0.75 * math.sin(math.radians(15.0 * k)), 0.0)
                for k in range(1, 12)]
    shackle += [(0.75, 0.9, 0.0), (0.75, 0.2, 0.0)]
    hole = [prism(circle(0.26, 24), 0.06, 0.0, "black").move(y=-0.55, z=0.52),
            prism([(-0.1, 0.0), (-0.17, -0.62), (0.17, -0.62), (0.1, 0.0)], 0.06, 0.0, "black").move(y=-0.6, z=0.52)]
    return posed(tube(shackle, 0.2, 16, "silver"), block(2.5, 2.0, 1.0, 0.22, "amber", steps=3).move(y=-0.7),
                 panel(2.1, 1.6, 0.15, 0.06, "honey").move(y=-0.7, z=0.49), hole)


def magnifier():
    ring = frame(circle(1.25, 48), circle(1.0, 48), 0.36, 0.1, "silver", steps=3)
    glass = lathe([(0.0, -0.05), (0.6, -0.04), (1.02, -0.01), (1.02, 0.01), (0.6, 0.14), (0.0, 0.2)], 40, "sky")
    glass.turn("x", 90.0)
    grip = [cylinder(0.16, 0.6, 0.04, 20, "silver").move(y=-1.45), cylinder(0.27, 1.5, 0.12, 24, "graphite").move(y=-2.35),
            cylinder(0.285, 0.16, 0.05, 24, "amber").move(y=-1.75)]
    return posed(ring, glass, grip, pitch=12.0, yaw=-14.0, roll=40.0)
