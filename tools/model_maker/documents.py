"""Paper, folders and what is kept in them; the page objects' own model."""
from .mesh import group, move, turn
from .pose import bar, posed
from .shapes import ball, block, cylinder, lathe, panel, prism, rectangle, rounded, rounded_rectangle, tube


def folder():
    back = rounded([(-1.8, -1.25), (1.8, -1.25), (1.8, 1.05), (0.1, 1.05), (-0.25, 1.4), (-1.5, 1.4), (-1.8, 1.1)],
                   [0.12, 0.12, 0.12, 0.1, 0.1, 0.12, 0.12], 3)
    sheets = [prism(rectangle(3.2, 2.2), 0.04, 0.0, colour).turn("z", angle).move(0.0, 0.05, z)
              for colour, angle, z in (("paper_shade", 1.5, 0.14), ("paper", -1.0, 0.24))]
    flap = prism(rounded_rectangle(3.7, 2.15, 0.16), 0.14, 0.05, "amber").move(y=1.075).turn("x", 15.0)
    return posed(prism(back, 0.14, 0.05, "honey"), sheets, flap.move(y=-1.25, z=0.36), pitch=14.0, width=1.9)


def sheet_outline():
    """Paper with its upper right corner folded over."""
    return [(-1.35, -1.8), (1.35, -1.8), (1.35, 1.0), (0.55, 1.8), (-1.35, 1.8)]


def document():
    lines = [bar(-1.0, x, 0.72 - 0.38 * k, 0.1, 0.14, "ink") for k, x in enumerate((1.0, 0.8, 1.0, 0.6, 0.95, 0.2))]
    title = bar(-1.0, 0.2, 1.25, 0.1, 0.26, "blue")
    ear = prism([(0.55, 1.0), (1.35, 1.0), (0.55, 1.8)], 0.12, 0.03, "paper_shade").move(z=0.1)
    under = prism(rectangle(2.7, 3.5), 0.06, 0.02, "paper_shade").turn("z", 4.0).move(-0.1, -0.05, -0.12)
    return posed(prism(sheet_outline(), 0.16, 0.04, "paper"), ear, lines, title, under, pitch=12.0, yaw=-22.0)


def notepad():
    pad = [block(2.7, 3.3, 0.5, 0.08, "paper"), block(2.74, 3.34, 0.1, 0.04, "blue").move(z=-0.24),
           block(2.74, 0.5, 0.56, 0.08, "blue").move(y=1.45)]
    rings = [tube([(x, 1.62 + 0.22 * s, 0.3 * c) for s, c in ((0.0, 1.0), (0.7, 0.7), (1.0, 0.0), (0.7, -0.7), (0.0, -1.0))],
                  0.055, 8, "silver") for x in [-1.05 + 0.42 * k for k in range(6)]]
    lines = [bar(-1.05, x, 0.8 - 0.4 * k, 0.25, 0.1, "ink") for k, x in enumerate((1.05, 0.85, 1.05, 0.4, 0.9, 0.1))]
    pencil = group(cylinder(0.17, 2.1, 0.02, 6, "amber"), lathe([(0.0, -1.5), (0.17, -1.05), (0.0, -1.05)], 6, "wood"),
                   lathe([(0.0, -1.52), (0.06, -1.36), (0.0, -1.36)], 6, "black"),
                   cylinder(0.18, 0.2, 0.03, 16, "silver").move(y=1.1), cylinder(0.17, 0.26, 0.08, 16, "red").move(y=1.3))
    move(turn(pencil, "z", -38.0), 0.75, -0.65, 0.45)
    return posed(pad, rings, lines, pencil, pitch=14.0, yaw=-22.0)


def mail():
    flap = prism([(-1.75, 0.0), (0.0, -1.3), (1.75, 0.0)], 0.1, 0.04, "paper_shade").move(y=1.2, z=0.2)
    seams = [prism([(-1.75, -1.2), (-1.6, -1.2), (0.08, 0.12), (-0.08, 0.12)], 0.08, 0.0, "paper_shade").move(z=0.13),
             prism([(1.6, -1.2), (1.75, -1.2), (0.08, 0.12), (-0.08, 0.12)], 0.08, 0.0, "paper_shade").move(z=0.13)]
    seal = cylinder(0.36, 0.16, 0.06, 28, "red").turn("x", 90.0).move(0.0, 0.02, 0.28)
    return posed(block(3.6, 2.5, 0.32, 0.1, "paper"), flap, seams, seal, pitch=14.0, yaw=-20.0, width=1.9)


def book():
    cover = [block(2.7, 3.5, 0.14, 0.05, "navy").move(z=0.42), block(2.7, 3.5, 0.14, 0.05, "navy").move(z=-0.42),
             block(0.16, 3.5, 0.98, 0.06, "navy").move(x=-1.3), block(2.5, 3.24, 0.74, 0.03, "paper").move(x=-0.04)]
    label = [panel(1.7, 0.9, 0.08, 0.06, "amber").move(0.1, 0.8, 0.49), bar(-0.5, 0.7, 0.92, 0.51, 0.14, "navy"),
             bar(-0.5, 0.4, 0.66, 0.51, 0.1, "navy"), bar(-1.02, -0.94, 0.0, 0.49, 3.2, "amber")]
    ribbon = prism([(0.5, -2.15), (0.65, -2.0), (0.8, -2.15), (0.8, -1.5), (0.5, -1.5)], 0.06, 0.0, "red")
    return posed(cover, label, ribbon, pitch=17.0, yaw=-30.0)


def page_orvanel():
    """A little page of its own: a framed dark floor with a grid and three objects standing on it."""
    tile = group(prism(rounded_rectangle(3.7, 3.3, 0.3), 0.3, 0.1, "silver", steps=3),
                 prism(rounded_rectangle(3.4, 3.0, 0.2), 0.06, 0.0, "screen_1").move(z=0.14))
    grid = [prism(rectangle(0.035, 2.9), 0.03, 0.0, "screen_8").move(x, 0.0, 0.165) for x in (-0.85, 0.0, 0.85)]
    grid += [prism(rectangle(3.3, 0.035), 0.03, 0.0, "screen_8").move(0.0, y, 0.165) for y in (-0.75, 0.0, 0.75)]
    links = [tube([(-0.85, 0.65, 0.22), (0.9, 0.5, 0.22)], 0.05, 8, "lamp_white"),
             tube([(0.9, 0.5, 0.22), (0.0, -0.85, 0.22)], 0.05, 8, "lamp_white"),
             tube([(-0.85, 0.65, 0.22), (0.0, -0.85, 0.22)], 0.05, 8, "lamp_white")]
    things = [block(0.85, 0.85, 0.85, 0.1, "orange").turn("z", 15.0).move(-0.85, 0.65, 0.62),
              ball(0.5, 30, 16, "green").move(0.9, 0.5, 0.68),
              cylinder(0.46, 0.8, 0.1, 32, "sky").turn("x", 90.0).move(0.0, -0.85, 0.58)]
    solids = turn(group(tile, grid, links, things), "x", -48.0)
    return posed(solids, pitch=17.0, yaw=-24.0, width=2.0)


def windowed(width, height):
    """Dark program window with a title bar and three buttons."""
    parts = [block(width, height, 0.36, 0.12, "silver", steps=2),
             panel(width - 0.24, height - 0.7, 0.08, 0.06, "screen_dark").move(0.0, -0.2, 0.18)]
    parts += [cylinder(0.12, 0.08, 0.03, 18, colour).turn("x", 90.0).move(width / 2.0 - 0.36 - 0.36 * k, height / 2.0 - 0.28, 0.18)
              for k, colour in enumerate(("red", "amber", "green"))]
    return group(parts)


def terminal():
    prompt = prism([(-1.25, 0.55), (-0.95, 0.55), (-0.35, -0.02), (-0.95, -0.6), (-1.25, -0.6), (-0.68, -0.02)][::-1],
                   0.1, 0.02, "lamp_green", steps=1).move(0.0, 0.0, 0.24)
    cursor = panel(0.95, 0.2, 0.03, 0.1, "lamp_green").move(0.35, -0.5, 0.24)
    return posed(windowed(3.6, 2.9), prompt, cursor, pitch=14.0, yaw=-22.0, width=1.85)


def chart():
    bars = [block(0.4, h, 0.3, 0.04, colour).move(-1.2 + 0.6 * k, -1.05 + h / 2.0, 0.32)
            for k, (h, colour) in enumerate(((0.7, "sky"), (1.15, "green"), (0.85, "amber"), (1.5, "orange"), (1.8, "red")))]
    axes = [bar(-1.55, 1.55, -1.1, 0.22, 0.06, "lamp_white")]
    return posed(windowed(3.6, 2.9), bars, axes, pitch=14.0, yaw=-22.0, width=1.85)
