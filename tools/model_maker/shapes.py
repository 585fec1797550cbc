"""The basic shapes the models are built from. All are closed; sizes are in floor units."""
import math

from .mesh import Solid, cross, dot, normalised, sub


# ---- outlines: lists of (x, y), counter-clockwise

def rectangle(width, height):
    x, y = width / 2.0, height / 2.0
    return [(-x, -y), (x, -y), (x, y), (-x, y)]


def circle(radius, count, x=0.0, y=0.0):
    return [(x + radius * math.cos(2.0 * math.pi * i / count),
             y + radius * math.sin(2.0 * math.pi * i / count)) for i in range(count)]


def arc(radius, start, end, count, x=0.0, y=0.0):
    """count + 1 points from start to end, degrees."""
    return [(x + radius * math.cos(math.radians(start + (end - start) * i / count)),
             y + radius * math.sin(math.radians(start + (end - start) * i / count)))
            for i in range(count + 1)]


def rounded(outline, radius, steps=4):
    """Corners replaced by arcs; radius is one number or one for each corner."""
    result, total = [], len(outline)
    for i, (x, y) in enumerate(outline):
        r = radius[i] if isinstance(radius, (list, tuple)) else radius
        if r <= 0.0:
            result.append((x, y))
            continue
        before, after = outline[i - 1], outline[(i + 1) % total]
        u = _unit(before[0] - x, before[1] - y)
        v = _unit(after[0] - x, after[1] - y)
        half = math.acos(max(-1.0, min(1.0, u[0] * v[0] + u[1] * v[1]))) / 2.0
        along, to_centre = r / math.tan(half), r / math.sin(half)
        m = _unit(u[0] + v[0], u[1] + v[1])
        cx, cy = x + m[0] * to_centre, y + m[1] * to_centre
        a0 = math.atan2(y + u[1] * along - cy, x + u[0] * along - cx)
        a1 = math.atan2(y + v[1] * along - cy, x + v[0] * along - cx)
        sweep = (a1 - a0 + math.pi) % (2.0 * math.pi) - math.pi
        result += [(cx + r * math.cos(a0 + sweep * k / steps), cy + r * math.sin(a0 + sweep * k / steps))
                   for k in range(steps + 1)]
    return result


def rounded_rectangle(width, height, radius, steps=4):
    return rounded(rectangle(width, height), radius, steps)


def shifted(outline, x, y):
    return [(px + x, py + y) for px, py in outline]


def _unit(x, y):
    length = math.hypot(x, y)
    return (x / length, y / length)


def inset(outline, distance):
    """Every side moved inwards; meant for distances that are small beside the outline's features."""
    result, total = [], len(outline)
    for i, (x, y) in enumerate(outline):
        a, b = outline[i - 1], outline[(i + 1) % total]
        u, v = _unit(x - a[0], y - a[1]), _unit(b[0] - x, b[1] - y)
        n1, n2 = (-u[1], u[0]), (-v[1], v[0])
        k = distance / max(0.2, 1.0 + n1[0] * n2[0] + n1[1] * n2[1])
        result.append((x + (n1[0] + n2[0]) * k, y + (n1[1] + n2[1]) * k))
    return result


def _area2(a, b, c):
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])


def ears(outline):
    """Triangles (index triples) that fill the outline, by cutting ears, the fattest first."""
    left, result = list(range(len(outline))), []
    while len(left) > 3:
        best = None
        for k, index in enumerate(left):
            a, b, c = left[k - 1], index, left[(k + 1) % len(left)]
            area = _area2(outline[a], outline[b], outline[c])
            if area <= 1e-12 or any(_inside(outline, a, b, c, other) for other in left):
                continue
            ac = (outline[c][0] - outline[a][0], outline[c][1] - outline[a][1])
            score = area / (ac[0] * ac[0] + ac[1] * ac[1])
            if best is None or score > best[0]:
                best = (score, k, (a, b, c))
        if best is None:
            raise ValueError("the outline crosses itself")
        result.append(best[2])
        del left[best[1]]
    result.append(tuple(left))
    return result


def _inside(outline, a, b, c, other):
    if other in (a, b, c):
        return False
    p = outline[other]
    return (_area2(outline[a], outline[b], p) >= 0.0 and _area2(outline[b], outline[c], p) >= 0.0
            and _area2(outline[c], outline[a], p) >= 0.0)


# ---- solids

def block(width, height, depth, radius, material, steps=1):
    """Box with rounded edges and corners; 2 * steps strips round every edge."""
    solid = Solid()
    half = (width / 2.0 - radius, height / 2.0 - radius, depth / 2.0 - radius)
    angles = [math.radians(45.0 * k / steps) for k in range(steps + 1)]
    grid = [(-math.tan(a), -1.0) for a in reversed(angles)] + [(math.tan(a), 1.0) for a in angles]
    for axis in range(3):
        u, v = (axis + 1) % 3, (axis + 2) % 3
        for side in (1.0, -1.0):
            ids = []
            for tv, sv in grid:
                row = []
                for tu, su in grid:
                    direction, core = [0.0] * 3, [0.0] * 3
                    direction[axis], direction[u], direction[v] = side, tu, tv
                    core[axis], core[u], core[v] = side * half[axis], su * half[u], sv * half[v]
                    n = normalised(direction)
                    row.append(solid.point(tuple(core[i] + radius * n[i] for i in range(3))))
                ids.append(row)
            for j in range(len(grid) - 1):
                for i in range(len(grid) - 1):
                    q = (ids[j][i], ids[j][i + 1], ids[j + 1][i + 1], ids[j + 1][i])
                    solid.quad(*(q if side > 0.0 else q[::-1]), material)
    return solid


def _bevel_levels(depth, bevel, steps):
    """(inset, z) of the rings from the back cap to the front cap."""
    if bevel <= 0.0:
        return [(0.0, -depth / 2.0), (0.0, depth / 2.0)]
    front = [(bevel * (1.0 - math.cos(math.pi / 2.0 * k / steps)),
              depth / 2.0 - bevel * (1.0 - math.sin(math.pi / 2.0 * k / steps))) for k in range(steps + 1)]
    return [(i, -z) for i, z in reversed(front)] + front


def _rings(solid, outline, levels):
    return [[solid.point((x, y, z)) for x, y in (inset(outline, i) if i else outline)] for i, z in levels]


def _walls(solid, rings, material):
    for below, above in zip(rings, rings[1:]):
        for i in range(len(below)):
            j = (i + 1) % len(below)
            solid.quad(below[i], below[j], above[j], above[i], material)


def prism(outline, depth, bevel, material, cap=None, steps=2):
    """Outline pushed along z, centred on z = 0; cap paints the front face."""
    solid = Solid()
    levels = _bevel_levels(depth, bevel, steps)
    rings = _rings(solid, outline, levels)
    _walls(solid, rings, material)
    for a, b, c in ears(inset(outline, levels[-1][0]) if levels[-1][0] else outline):
        solid.triangle(rings[-1][a], rings[-1][b], rings[-1][c], cap or material)
        solid.triangle(rings[0][c], rings[0][b], rings[0][a], material)
    return solid


def frame(outer, inner, depth, bevel, material, steps=2):
    """A prism with a hole. Both outlines have the same number of points, matching one by one."""
    solid = Solid()
    levels = _bevel_levels(depth, bevel, steps)
    outside = _rings(solid, outer, levels)
    inside = [[solid.point((x, y, z)) for x, y in inset(inner, -i)] for i, z in levels]
    _walls(solid, outside, material)
    _walls(solid, [ring[::-1] for ring in inside], material)
    for i in range(len(outer)):
        j = (i + 1) % len(outer)
        solid.quad(outside[-1][i], outside[-1][j], inside[-1][j], inside[-1][i], material)
        solid.quad(outside[0][j], outside[0][i], inside[0][i], inside[0][j], material)
    return solid


def lathe(profile, count, material, crease=50.0):
    """Profile of (radius, y) from the lowest point on the axis to the highest, turned about y."""
    solid = Solid(crease)
    rings = []
    for radius, y in profile:
        rings.append([solid.point((radius * math.sin(2.0 * math.pi * k / count), y,
                                   radius * math.cos(2.0 * math.pi * k / count))) for k in range(count)])
    _walls(solid, rings, material)
    return solid


def cylinder(radius, height, bevel, count, material, steps=3):
    """Standing along y."""
    half, corner = height / 2.0, []
    for k in range(steps + 1):
        a = math.pi / 2.0 * k / steps
        corner.append((radius - bevel + bevel * math.cos(a), half - bevel + bevel * math.sin(a)))
    return lathe([(0.0, -half)] + [(r, -y) for r, y in reversed(corner)] + corner + [(0.0, half)],
                 count, material)


def ball(radius, count, rows, material, crease=80.0):
    return lathe([(radius * math.sin(math.pi * k / rows) if 0 < k < rows else 0.0,
                   -radius * math.cos(math.pi * k / rows)) for k in range(rows + 1)], count, material, crease)


def tube(path, radius, count, material, closed=False):
    """Round rod along the points of path; open ends get rounded caps."""
    solid, rings, total = Solid(80.0), [], len(path)
    side = None
    for i, centre in enumerate(path):
        before = path[i - 1] if closed else path[max(0, i - 1)]
        after = path[(i + 1) % total] if closed else path[min(total - 1, i + 1)]
        forward = normalised(sub(after, before))
        if side is None:
            side = (0.0, 0.0, 1.0) if abs(forward[2]) < 0.9 else (1.0, 0.0, 0.0)
        side = normalised(tuple(side[k] - forward[k] * dot(side, forward) for k in range(3)))
        up = cross(forward, side)
        if not closed and i == 0:
            rings += _cap_rings(solid, centre, side, up, forward, radius, count, -1.0)
        rings.append(_ring(solid, centre, side, up, radius, count))
        if not closed and i == total - 1:
            rings += _cap_rings(solid, centre, side, up, forward, radius, count, 1.0)
    if closed:
        rings.append(rings[0])
    _walls(solid, rings, material)
    return solid


def _ring(solid, centre, side, up, radius, count):
    result = []
    for k in range(count):
        c, s = math.cos(2.0 * math.pi * k / count) * radius, math.sin(2.0 * math.pi * k / count) * radius
        result.append(solid.point(tuple(centre[j] + side[j] * c + up[j] * s for j in range(3))))
    return result


def _cap_rings(solid, centre, side, up, forward, radius, count, sign):
    """Rings of the half ball at an end, in path order, the pole included."""
    result = []
    for k in (1, 2, 3):
        a = math.pi / 2.0 * k / 3.0
        middle = tuple(centre[j] + forward[j] * sign * radius * math.sin(a) for j in range(3))
        result.append(_ring(solid, middle, side, up, radius * math.cos(a) if k < 3 else 0.0, count))
    return result if sign > 0.0 else result[::-1]


def torus(radius, thickness, count, sides, material):
    """Ring in the plane z = 0."""
    return tube([(x, y, 0.0) for x, y in circle(radius, count)], thickness, sides, material, closed=True)


def panel(width, height, radius, depth, material, bevel=0.015):
    """Thin rounded plate facing +z, for screens, labels and buttons."""
    return prism(rounded_rectangle(width, height, radius, 3), depth, bevel, material, steps=1)
