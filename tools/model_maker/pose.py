"""What all models share: how they stand before the viewer, and details that many of them use."""
from .mesh import centred, group, turn
from .palette import SCREEN_BANDS
from .shapes import panel, prism, rectangle, rounded_rectangle

# Models are seen from straight above the floor, so they are turned a little to show three of their
# sides at rest: the bright front, the lit top and the dark right side.
PITCH_DEGREES = 17.0
YAW_DEGREES = -24.0
HALF_SIZE = 1.8  # floor units, the size of the built-in object


def posed(*parts, pitch=PITCH_DEGREES, yaw=YAW_DEGREES, roll=0.0, width=HALF_SIZE, height=HALF_SIZE):
    solids = group(*parts)
    turn(turn(turn(solids, "z", roll), "y", yaw), "x", pitch)
    return centred(solids, width, height)


def screen(width, height, x, y, z):
    """Glowing picture area, brighter towards the top."""
    step = height / SCREEN_BANDS
    return [prism(rectangle(width, step), 0.04, 0.0, "screen_%d" % (k + 1))
            .move(x, y - height / 2.0 + step * (k + 0.5), z) for k in range(SCREEN_BANDS)]


def bar(x0, x1, y, z, thickness, material):
    """Flat line on a front face, as text or as a slot."""
    width = abs(x1 - x0)
    return prism(rounded_rectangle(width, thickness, min(width, thickness) * 0.3, 2), 0.04, 0.0,
                 material).move((x0 + x1) / 2.0, y, z)


def lamp(x, y, z, size, material):
    return panel(size, size, size * 0.35, 0.06, material).move(x, y, z)
