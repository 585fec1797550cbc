"""The colours all models share, as MTL materials."""
import collections

Material = collections.namedtuple("Material", "diffuse specular exponent glow")

# The ambient light is white and full, so a material's ambient colour is what its unlit side shows.
AMBIENT_SHARE = 0.21
NS_PER_EXPONENT = 7.8125  # the viewer turns Ns into the exponent 128 - Ns / 7.8125


def plastic(r, g, b):
    return Material((r, g, b), 0.30, 36, False)


def metal(r, g, b):
    return Material((r, g, b), 0.75, 48, False)


def matt(r, g, b):
    return Material((r, g, b), 0.06, 12, False)


def light(r, g, b):
    """Shines by itself; the diffuse light comes on top, so the colour is given at half strength."""
    return Material((r, g, b), 0.0, 12, True)


MATERIALS = {
    "white": plastic(0.90, 0.92, 0.94),
    "silver": metal(0.62, 0.65, 0.70),
    "steel": metal(0.40, 0.44, 0.50),
    "graphite": plastic(0.20, 0.22, 0.27),
    "black": plastic(0.06, 0.07, 0.09),
    "blue": plastic(0.12, 0.42, 0.78),
    "navy": plastic(0.08, 0.22, 0.46),
    "sky": plastic(0.36, 0.66, 0.92),
    "teal": plastic(0.08, 0.56, 0.58),
    "green": plastic(0.28, 0.66, 0.26),
    "amber": plastic(0.96, 0.68, 0.16),
    "honey": plastic(0.86, 0.55, 0.10),
    "orange": plastic(0.93, 0.42, 0.10),
    "red": plastic(0.80, 0.16, 0.13),
    "brick": matt(0.74, 0.28, 0.16),
    "brick_dark": matt(0.60, 0.21, 0.13),
    "mortar": matt(0.62, 0.60, 0.56),
    "paper": matt(0.93, 0.93, 0.90),
    "paper_shade": matt(0.74, 0.76, 0.78),
    "ink": matt(0.36, 0.44, 0.54),
    "skin": matt(0.92, 0.72, 0.56),
    "wood": matt(0.86, 0.66, 0.40),
    "brass": metal(0.84, 0.64, 0.26),
    "ocean": plastic(0.09, 0.34, 0.68),
    "land": matt(0.36, 0.62, 0.24),
    "ice": matt(0.90, 0.93, 0.96),
    "screen_dark": light(0.015, 0.025, 0.04),
    "lamp_green": light(0.16, 0.70, 0.22),
    "lamp_blue": light(0.16, 0.45, 0.80),
    "lamp_amber": light(0.75, 0.45, 0.06),
    "lamp_red": light(0.70, 0.10, 0.08),
    "lamp_white": light(0.50, 0.54, 0.58),
    "lamp_lcd": light(0.28, 0.40, 0.30),
}

# A glowing screen from its dark lower to its bright upper edge.
SCREEN_BANDS = 8
SCREEN_LOW, SCREEN_HIGH = (0.04, 0.15, 0.37), (0.12, 0.38, 0.63)
for band in range(SCREEN_BANDS):
    share = band / (SCREEN_BANDS - 1.0)
    MATERIALS["screen_%d" % (band + 1)] = light(
        *(low + (high - low) * share for low, high in zip(SCREEN_LOW, SCREEN_HIGH)))


def mtl_text(names):
    """Blocks are separated by empty lines: readers end a block there and nowhere else."""
    blocks = []
    for name in names:
        m = MATERIALS[name]
        ambient = tuple(AMBIENT_SHARE * c for c in m.diffuse)
        blocks.append("\n".join([
            "newmtl " + name,
            "Ka %.4f %.4f %.4f" % ambient,
            "Kd %.4f %.4f %.4f" % m.diffuse,
            "Ks %.4f %.4f %.4f" % ((m.specular,) * 3),
            "Ns %.4f" % ((128 - m.exponent) * NS_PER_EXPONENT),
            "illum %d" % (1 if m.glow else 2)]))
    return "\n\n".join(blocks) + "\n"
