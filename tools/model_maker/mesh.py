"""Solids made of triangles, and their way into an OBJ file.

A model is a list of solids. Every solid is closed by itself and its triangles run counter-clockwise
seen from outside; solids may stand in each other. Normals are worked out last, from the finished
shape, so transforms never have to care about them.
"""
import math

CREASE_DEGREES = 50.0  # faces that meet at a sharper angle keep their own normals


def sub(a, b):
    return (a[0] - b[0], a[1] - b[1], a[2] - b[2])


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def normalised(a):
    length = math.sqrt(dot(a, a))
    return (a[0] / length, a[1] / length, a[2] / length) if length > 0.0 else (0.0, 0.0, 1.0)


def corner_angle(at, one, other):
    cosine = dot(normalised(sub(one, at)), normalised(sub(other, at)))
    return math.acos(max(-1.0, min(1.0, cosine)))


def turned(point, axis, degrees):
    x, y, z = point
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    if axis == "x":
        return (x, y * c - z * s, y * s + z * c)
    if axis == "y":
        return (x * c + z * s, y, z * c - x * s)
    return (x * c - y * s, x * s + y * c, z)


class Solid:
    """points, and triangles as (a, b, c, material name)."""

    def __init__(self, crease=CREASE_DEGREES):
        self.points = []
        self.triangles = []
        self.crease = crease
        self._index = {}

    def point(self, p):
        """Index of the point; points at the same place are one point, which is what closes a solid."""
        key = tuple(round(c, 6) + 0.0 for c in p)
        if key not in self._index:
            self._index[key] = len(self.points)
            self.points.append(key)
        return self._index[key]

    def triangle(self, a, b, c, material):
        if a != b and b != c and c != a:
            self.triangles.append((a, b, c, material))

    def quad(self, a, b, c, d, material):
        """Cut along the shorter diagonal: curved strips look rounder that way."""
        p = self.points
        ac, bd = sub(p[a], p[c]), sub(p[b], p[d])
        if dot(ac, ac) <= dot(bd, bd):
            self.triangle(a, b, c, material)
            self.triangle(a, c, d, material)
        else:
            self.triangle(a, b, d, material)
            self.triangle(b, c, d, material)

    def mapped(self, function):
        self.points = [function(p) for p in self.points]
        return self

    def move(self, x=0.0, y=0.0, z=0.0):
        return self.mapped(lambda p: (p[0] + x, p[1] + y, p[2] + z))

    def turn(self, axis, degrees):
        return self.mapped(lambda p: turned(p, axis, degrees))

    def scale(self, x, y, z):
        """Positive factors only: a mirrored solid would be inside out."""
        return self.mapped(lambda p: (p[0] * x, p[1] * y, p[2] * z))

    def paint(self, chooser):
        """chooser(centre of the triangle, its material) returns the material it gets."""
        p = self.points
        self.triangles = [
            (a, b, c, chooser(tuple((p[a][i] + p[b][i] + p[c][i]) / 3.0 for i in range(3)), m))
            for a, b, c, m in self.triangles]
        return self

    def corner_normals(self):
        """Per triangle three normals: the mean of the faces around a point within the crease angle.
        A face weighs by its angle at the point, so that the way it was cut does not show, and by the
        area of its whole plane, so that flat faces stay flat beside their bevels."""
        limit = math.cos(math.radians(self.crease))
        units, planes, plane_areas, around = [], [], {}, [[] for _ in self.points]
        for index, (a, b, c, _) in enumerate(self.triangles):
            p = self.points
            area = cross(sub(p[b], p[a]), sub(p[c], p[a]))
            unit = normalised(area)
            plane = tuple(round(v, 4) for v in unit) + (round(dot(unit, p[a]), 3),)
            units.append(unit)
            planes.append(plane)
            plane_areas[plane] = plane_areas.get(plane, 0.0) + math.sqrt(dot(area, area))
            for corner, after, before in ((a, b, c), (b, c, a), (c, a, b)):
                around[corner].append((index, corner_angle(p[corner], p[after], p[before])))
        result = []
        for index, (a, b, c, _) in enumerate(self.triangles):
            normals = []
            for corner in (a, b, c):
                total = (0.0, 0.0, 0.0)
                for other, angle in around[corner]:
                    if dot(units[index], units[other]) >= limit:
                        weight = angle * plane_areas[planes[other]]
                        total = tuple(total[i] + units[other][i] * weight for i in range(3))
                normals.append(normalised(total))
            result.append(normals)
        return result


def group(*parts):
    """One flat list of solids out of solids and lists of solids."""
    flat = []
    for part in parts:
        flat.extend(group(*part) if isinstance(part, (list, tuple)) else [part])
    return flat


def move(solids, x=0.0, y=0.0, z=0.0):
    return [s.move(x, y, z) for s in group(solids)]


def turn(solids, axis, degrees):
    return [s.turn(axis, degrees) for s in group(solids)]


def scale(solids, factor):
    return [s.scale(factor, factor, factor) for s in group(solids)]


def bounds(solids):
    points = [p for s in solids for p in s.points]
    return [(min(p[i] for p in points), max(p[i] for p in points)) for i in range(3)]


def centred(solids, half_width, half_height):
    """Moved to the middle and scaled to touch the given half extents in x or y."""
    (x0, x1), (y0, y1), (z0, z1) = bounds(solids)
    move(solids, -(x0 + x1) / 2.0, -(y0 + y1) / 2.0, -(z0 + z1) / 2.0)
    factor = min(2.0 * half_width / (x1 - x0), 2.0 * half_height / (y1 - y0))
    return scale(solids, factor)


def number(value):
    text = "%.4f" % value
    return "0.0000" if text == "-0.0000" else text


def obj_text(name, category, library, solids):
    """The file's text. Every line ends in a line feed: readers may ignore an unfinished last line."""
    points, normals, faces = {}, {}, {}
    for solid in solids:
        for (a, b, c, material), corner in zip(solid.triangles, solid.corner_normals()):
            ids = []
            for index, normal in zip((a, b, c), corner):
                p = " ".join(number(v) for v in solid.points[index])
                n = " ".join(number(v) for v in normal)
                ids.append((points.setdefault(p, len(points) + 1), normals.setdefault(n, len(normals) + 1)))
            if len({p for p, _ in ids}) == 3:
                faces.setdefault(material, []).append(ids)
    lines = ["#name:" + name, "#category:" + category, "mtllib " + library]
    lines += ["v " + p for p in points]
    lines += ["vn " + n for n in normals]
    for material, triangles in faces.items():
        lines.append("usemtl " + material)
        lines += ["f " + " ".join("%d//%d" % corner for corner in ids) for ids in triangles]
    return "\n".join(lines) + "\n", list(faces)
