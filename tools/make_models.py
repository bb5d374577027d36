#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the sample models in models/ and the test models in tests/fixtures/formats/.

    tools/make_models.py            writes them anew
    tools/make_models.py --big n    writes a binary STL of about n triangles to standard output

A model is a list of parts; each part has a name, a colour and triangles. Inside, z points up and the front of a model
faces -y; each writer turns that into the habit of its format. osgt, osgb and ive are converted by OpenSceneGraph's
osgconv from the OBJ file.
"""
import base64
import json
import math
import pathlib
import struct
import subprocess
import sys
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent


class Part:
    def __init__(self, name, color, points, triangles, texcoords=None, texture=None):
        self.name = name
        self.color = color
        self.points = points
        self.triangles = triangles
        self.texcoords = texcoords
        self.texture = texture

    def normals(self):
        """One normal a point: the mean of its triangles' by area."""
        sums = [[0.0, 0.0, 0.0] for _ in self.points]
        for triangle in self.triangles:
            normal = cross(*(self.points[i] for i in triangle))
            for i in triangle:
                for k in range(3):
                    sums[i][k] += normal[k]
        return [unit(n) for n in sums]


def cross(a, b, c):
    u = [b[k] - a[k] for k in range(3)]
    v = [c[k] - a[k] for k in range(3)]
    return (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])


def unit(v):
    length = math.sqrt(sum(x * x for x in v)) or 1.0
    return tuple(x / length for x in v)


# --- shapes

def grid(name, color, columns, rows, at, texcoords=False, texture=None, flip=False):
    """A surface over a grid: at(u, v) gives a point for u and v from 0 to 1."""
    points, coords, triangles = [], [], []
    for r in range(rows + 1):
        for c in range(columns + 1):
            u, v = c / columns, r / rows
            points.append(at(u, v))
            coords.append((u * (1 - v), v) if texture else (u, v))
    for r in range(rows):
        for c in range(columns):
            a = r * (columns + 1) + c
            b, d, e = a + 1, a + columns + 1, a + columns + 2
            for t in ((a, b, e), (a, e, d)):
                if len({tuple(round(x, 9) for x in points[i]) for i in t}) == 3:
                    triangles.append(tuple(reversed(t)) if flip else t)
    return Part(name, color, points, triangles, coords if texcoords else None, texture)


def lathe(name, color, profile, sides=32, center=(0.0, 0.0)):
    """A profile of (radius, height) pairs, from bottom to top, turned about the z axis."""
    n = len(profile) - 1

    def at(u, v):
        index = min(int(round(v * n)), n)
        radius, z = profile[index]
        angle = 2 * math.pi * u
        return (center[0] + radius * math.cos(angle), center[1] + radius * math.sin(angle), z)
    return grid(name, color, sides, n, at)


def rod(name, color, a, b, radius, sides=10):
    """A cylinder between two points, closed at both ends."""
    axis = unit([b[k] - a[k] for k in range(3)])
    helper = (0.0, 0.0, 1.0) if abs(axis[2]) < 0.9 else (1.0, 0.0, 0.0)
    side = unit((axis[1] * helper[2] - axis[2] * helper[1], axis[2] * helper[0] - axis[0] * helper[2],
                 axis[0] * helper[1] - axis[1] * helper[0]))
    other = (axis[1] * side[2] - axis[2] * side[1], axis[2] * side[0] - axis[0] * side[2],
             axis[0] * side[1] - axis[1] * side[0])

    def at(u, v):
        end, r = ((a, 0.0), (a, radius), (b, radius), (b, 0.0))[int(round(v * 3))]
        angle = 2 * math.pi * u
        return tuple(end[k] + r * (math.cos(angle) * side[k] + math.sin(angle) * other[k]) for k in range(3))
    return grid(name, color, sides, 3, at)


def box(name, color, low, high):
    (x0, y0, z0), (x1, y1, z1) = low, high
    faces = (((x0, y0, z0), (x1, y0, z0), (x1, y0, z1), (x0, y0, z1)),
             ((x1, y1, z0), (x0, y1, z0), (x0, y1, z1), (x1, y1, z1)),
             ((x0, y1, z0), (x0, y0, z0), (x0, y0, z1), (x0, y1, z1)),
             ((x1, y0, z0), (x1, y1, z0), (x1, y1, z1), (x1, y0, z1)),
             ((x0, y0, z1), (x1, y0, z1), (x1, y1, z1), (x0, y1, z1)),
             ((x0, y1, z0), (x1, y1, z0), (x1, y0, z0), (x0, y0, z0)))
    points, triangles = [], []
    for face in faces:
        base = len(points)
        points.extend(face)
        triangles += [(base, base + 1, base + 2), (base, base + 2, base + 3)]
    return Part(name, color, points, triangles)


# --- models

def sailboat():
    def beam(x):
        t = (x + 1.25) / 2.75            # 0 at the stern, 1 at the bow
        return 0.40 * (1 - max(0.0, t - 0.35) ** 2 / 0.4225) * (0.78 + 0.22 * min(1.0, t / 0.35))

    def sheer(x):
        return 0.30 + 0.07 * (x - 0.1) ** 2

    def hull(u, v):
        x = -1.25 + 2.75 * u
        angle = math.pi * (v - 0.5)      # from one rail under the keel to the other
        depth = 0.26 + 0.30 * math.cos(0.5 * math.pi * min(1.0, abs(x - 0.05) / 1.6)) ** 2
        width = max(beam(x), 0.004)
        y = width * math.sin(angle) * (0.80 + 0.20 * abs(math.sin(angle)))
        z = sheer(x) - depth * math.cos(angle) ** 0.8 * (1 - 0.25 * u ** 6)
        return (x + 0.12 * u ** 4 * (z - 0.2), y, z)

    def deck(u, v):
        x = -1.25 + 2.75 * u
        return (x + 0.12 * u ** 4 * (sheer(x) - 0.2), (v - 0.5) * 2 * max(beam(x), 0.004) * 0.985,
                sheer(x) - 0.02 + 0.03 * (1 - (2 * v - 1) ** 2))

    def transom(u, v):
        point = hull(0.0, u)
        return (point[0], point[1], point[2] * v + (sheer(-1.25) - 0.02) * (1 - v))

    def cabin(u, v):
        x = -0.45 + 0.95 * u
        taper = 1 - 0.35 * u
        angle = math.pi * v
        return (x, -0.24 * taper * math.cos(angle), 0.28 + 0.20 * taper * math.sin(angle) ** 0.45)

    def sail(tack, clew, head, belly):
        def at(u, v):
            # The foot runs along u, the luff along v; the sail ends in a point.
            s = u * (1 - v)
            point = [tack[k] * (1 - v) + head[k] * v + (clew[k] - tack[k]) * s for k in range(3)]
            point[1] += belly * math.sin(math.pi * min(1.0, s * 1.15)) * math.sin(math.pi * (0.12 + 0.8 * v))
            return tuple(point)
        return at

    def flag(u, v):
        return (0.10 - 0.36 * u, 0.05 * math.sin(6 * u) * u, 2.86 - 0.05 * u - 0.17 * v)

    wood, white = (0.66, 0.43, 0.24), (0.93, 0.93, 0.90)
    return [
        grid("hull", (0.10, 0.22, 0.44), 36, 16, hull, flip=True),
        grid("transom", (0.10, 0.22, 0.44), 12, 1, transom),
        grid("deck", wood, 28, 4, deck),
        grid("cabin", white, 10, 12, cabin),
        grid("cabin-front", white, 1, 12, lambda u, v: (0.50 + 0.02 * u, -0.24 * 0.65 * math.cos(math.pi * v) * (1 - u),
                                                        0.28 + 0.20 * 0.65 * math.sin(math.pi * v) ** 0.45 * (1 - u))),
        grid("cabin-back", white, 1, 12, lambda u, v: (-0.45, -0.24 * math.cos(math.pi * v) * (1 - u),
                                                       0.28 + 0.20 * math.sin(math.pi * v) ** 0.45 * (1 - u)),
             flip=True),
        rod("keel", (0.30, 0.10, 0.10), (0.1, 0, -0.62), (0.1, 0, -0.15), 0.07),
        box("rudder", wood, (-1.36, -0.02, -0.28), (-1.20, 0.02, 0.42)),
        rod("mast", wood, (0.12, 0, 0.25), (0.12, 0, 2.90), 0.028),
        rod("boom", wood, (0.12, 0, 0.62), (-1.12, 0.10, 0.66), 0.022),
        grid("mainsail", (1, 1, 1), 14, 18,
             sail((0.09, 0.0, 0.68), (-1.08, 0.12, 0.72), (0.10, 0.0, 2.70), 0.22), True, "sail.png"),
        grid("jib", (0.95, 0.90, 0.80), 10, 14,
             sail((1.46, 0.0, 0.44), (0.24, 0.10, 0.60), (0.16, 0.0, 2.40), 0.16)),
        rod("forestay", (0.5, 0.5, 0.5), (1.48, 0, 0.42), (0.12, 0, 2.45), 0.006, 6),
        grid("flag", (0.80, 0.16, 0.14), 8, 2, flag),
    ]


def lighthouse():
    parts = [lathe("rock", (0.42, 0.40, 0.38), [(0.0, 0.0), (1.15, 0.0), (1.0, 0.12), (0.86, 0.2), (0.70, 0.26), (0.0, 0.28)], 11)]
    bands = 6
    for band in range(bands):
        low, high = 0.26 + band * 0.42, 0.26 + (band + 1) * 0.42
        radius = lambda z: 0.46 - 0.075 * (z - 0.26)
        parts.append(lathe(f"band-{band}", (0.78, 0.12, 0.12) if band % 2 else (0.95, 0.94, 0.90),
                           [(radius(low), low), (radius(0.5 * (low + high)), 0.5 * (low + high)), (radius(high), high)], 36))
    top = 0.26 + bands * 0.42
    parts += [
        lathe("gallery", (0.20, 0.22, 0.25), [(0.25, top - 0.05), (0.44, top), (0.44, top + 0.05), (0.20, top + 0.05)], 36),
        lathe("lantern", (1.0, 0.85, 0.35), [(0.21, top + 0.05), (0.21, top + 0.42)], 24),
        lathe("roof", (0.55, 0.08, 0.08), [(0.30, top + 0.42), (0.27, top + 0.50), (0.17, top + 0.62), (0.05, top + 0.68),
                                           (0.03, top + 0.80), (0.0, top + 0.82)], 32),
        box("door", (0.30, 0.20, 0.12), (-0.10, -0.50, 0.24), (0.10, -0.40, 0.62)),
        box("window", (0.20, 0.30, 0.42), (-0.06, -0.42, 1.30), (0.06, -0.30, 1.50)),
    ]
    for post in range(16):
        angle = 2 * math.pi * post / 16
        x, y = 0.42 * math.cos(angle), 0.42 * math.sin(angle)
        parts.append(rod("railing", (0.2, 0.22, 0.25), (x, y, top + 0.05), (x, y, top + 0.2), 0.01, 5))
    return parts


def rocket():
    body = [(0.0, 0.30), (0.30, 0.34), (0.38, 0.60), (0.42, 1.0), (0.42, 1.5), (0.38, 2.0), (0.30, 2.4)]
    nose = [(0.30, 2.4), (0.22, 2.65), (0.12, 2.85), (0.0, 3.0)]
    parts = [lathe("body", (0.90, 0.91, 0.93), body, 40), lathe("nose", (0.82, 0.18, 0.14), nose, 40),
             lathe("engine", (0.25, 0.26, 0.28), [(0.26, 0.05), (0.18, 0.20), (0.20, 0.34)], 32),
             lathe("ring", (0.82, 0.18, 0.14), [(0.425, 0.92), (0.435, 0.95), (0.435, 1.0), (0.425, 1.03)], 40)]
    for fin in range(3):
        angle = math.pi * (2 * fin / 3 - 0.5)
        c, s = math.cos(angle), math.sin(angle)
        outline = ((0.36, 1.00), (0.85, 0.45), (0.92, 0.0), (0.72, 0.16), (0.34, 0.42))
        points, triangles = [], []
        for side in (-0.03, 0.03):
            points += [(c * r - s * side, s * r + c * side, z) for r, z in outline]
        n = len(outline)
        for k in range(1, n - 1):
            triangles += [(0, k + 1, k), (n, n + k, n + k + 1)]
        for k in range(n):
            a, b = k, (k + 1) % n
            triangles += [(a, b, n + b), (a, n + b, n + a)]
        flat = [points[i] for t in triangles for i in t]
        parts.append(Part("fin", (0.82, 0.18, 0.14), flat, [(i, i + 1, i + 2) for i in range(0, len(flat), 3)]))
    parts.append(lathe("porthole", (0.25, 0.45, 0.65), [(0.0, 0.0), (0.10, 0.01), (0.13, 0.0)], 24))
    window = parts[-1]
    window.points = [(x, -0.425 + 0.03 * (x * x + y * y) / 0.0169 - z, 1.75 + y) for x, y, z in window.points]
    return parts


def king():
    profile = [(0.0, 0.0), (0.62, 0.0), (0.64, 0.06), (0.60, 0.12), (0.54, 0.16), (0.56, 0.20), (0.54, 0.26), (0.40, 0.36),
               (0.30, 0.55), (0.24, 0.85), (0.21, 1.15), (0.21, 1.32), (0.34, 1.36), (0.36, 1.40), (0.34, 1.44), (0.24, 1.48),
               (0.27, 1.56), (0.35, 1.86), (0.37, 1.90), (0.33, 1.94), (0.16, 2.02), (0.08, 2.06), (0.07, 2.10), (0.0, 2.10)]
    return [lathe("king", (0.92, 0.86, 0.74), profile, 72),
            box("upright", (0.92, 0.86, 0.74), (-0.045, -0.045, 2.06), (0.045, 0.045, 2.44)),
            box("arms", (0.92, 0.86, 0.74), (-0.14, -0.045, 2.22), (0.14, 0.045, 2.31))]


def windmill():
    """@return the parts that stand, the sails about the middle of their axle, and the cloth of the flag from its pole"""
    stone, wood, red = (0.93, 0.92, 0.88), (0.45, 0.30, 0.18), (0.80, 0.14, 0.12)
    tower = [lathe("tower", stone, [(0.0, 0.0), (1.1, 0.0), (0.95, 1.2), (0.75, 2.6), (0.7, 3.0), (0.0, 3.0)]),
             lathe("cap", (0.25, 0.30, 0.38), [(0.8, 3.0), (0.72, 3.3), (0.45, 3.6), (0.0, 3.75)]),
             rod("pole", wood, (0, 0, 3.6), (0, 0, 5.0), 0.03),
             box("door", wood, (-0.22, -1.12, 0.0), (0.22, -0.9, 0.7))]
    sails = [rod("axle", wood, (0, -0.15, 0), (0, 0.5, 0), 0.08)]
    for i in range(4):
        turn = i * math.pi / 2
        along, across = (math.cos(turn), math.sin(turn)), (-math.sin(turn), math.cos(turn))

        def at(far, side, depth=-0.1):
            return (far * along[0] + side * across[0], depth, far * along[1] + side * across[1])

        sails.append(rod(f"arm {i + 1}", wood, at(0, 0), at(2.3, 0), 0.05))
        cloth = [at(0.5, 0.05), at(2.3, 0.05), at(2.3, 0.55), at(0.5, 0.55)]
        sails.append(Part(f"sail {i + 1}", (0.97, 0.95, 0.88), cloth, [(0, 1, 2), (0, 2, 3)]))
    flag = grid("flag", red, 16, 4, lambda u, v: (1.6 * u, 0.0, 0.8 * v))
    return tower, sails, flag


def signpost():
    """Broad at the bottom, narrow at the top, with an arm to its right: a picture tells how it stands."""
    return [lathe("cone", (0.85, 0.35, 0.15), [(0.0, 0.0), (0.9, 0.0), (0.5, 0.9), (0.1, 1.8), (0.0, 1.8)], 24),
            box("arm", (0.20, 0.45, 0.75), (0.1, -0.06, 1.2), (0.9, 0.06, 1.4)),
            box("foot", (0.30, 0.55, 0.30), (-0.9, -0.9, -0.15), (0.9, 0.9, 0.0))]


# --- writers

def linear(color):
    """The colour as glTF stores it; the others are as screens show them."""
    return [round(c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4, 6) for c in color]


def y_up(p):
    return (p[0], p[2], -p[1])


def number(x):
    text = f"{x:.4f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def write_obj(path, parts):
    material = path.with_suffix(".mtl")
    lines = [f"mtllib {material.name}"]
    materials = []
    base, texture_base = 1, 1
    for index, part in enumerate(parts):
        name = f"{part.name}-{index}"
        materials.append(f"newmtl {name}\nKa {' '.join(map(number, part.color))}\n"
                         f"Kd {' '.join(map(number, part.color))}\nKs 0.25 0.25 0.25\nNs 40\nillum 2\n"
                         + (f"map_Kd {part.texture}\n" if part.texture else ""))
        lines += [f"g {part.name}", f"usemtl {name}"]
        lines += ["v " + " ".join(map(number, y_up(p))) for p in part.points]
        lines += ["vn " + " ".join(map(number, y_up(n))) for n in part.normals()]
        if part.texcoords:
            lines += [f"vt {number(u)} {number(v)}" for u, v in part.texcoords]
        for t in part.triangles:
            if part.texcoords:
                lines.append("f " + " ".join(f"{base + i}/{texture_base + i}/{base + i}" for i in t))
            else:
                lines.append("f " + " ".join(f"{base + i}//{base + i}" for i in t))
        base += len(part.points)
        texture_base += len(part.texcoords or ())
    path.write_text("\n".join(lines) + "\n")
    material.write_text("\n".join(materials))


def stl_binary(parts):
    chunks = []
    for part in parts:
        for t in part.triangles:
            a, b, c = (part.points[i] for i in t)
            chunks.append(struct.pack("<12fH", *unit(cross(a, b, c)), *a, *b, *c, 0))
    return b"velaFORGE sample".ljust(80, b" ") + struct.pack("<I", len(chunks)) + b"".join(chunks)


def write_stl_text(path, parts):
    lines = ["solid sample"]
    for part in parts:
        for t in part.triangles:
            corners = [part.points[i] for i in t]
            lines.append("facet normal " + " ".join(map(number, unit(cross(*corners)))))
            lines.append(" outer loop")
            lines += ["  vertex " + " ".join(map(number, p)) for p in corners]
            lines += [" endloop", "endfacet"]
    path.write_text("\n".join(lines + ["endsolid sample", ""]))


def write_ply(path, parts):
    vertices, faces = [], []
    for part in parts:
        base = len(vertices)
        color = " ".join(str(round(c * 255)) for c in part.color)
        vertices += [" ".join(map(number, p)) + " " + " ".join(map(number, n)) + " " + color
                     for p, n in zip(part.points, part.normals())]
        faces += [f"3 {base + a} {base + b} {base + c}" for a, b, c in part.triangles]
    header = ["ply", "format ascii 1.0", f"element vertex {len(vertices)}"]
    header += [f"property float {n}" for n in ("x", "y", "z", "nx", "ny", "nz")]
    header += [f"property uchar {n}" for n in ("red", "green", "blue")]
    header += [f"element face {len(faces)}", "property list uchar int vertex_indices", "end_header"]
    path.write_text("\n".join(header + vertices + faces) + "\n")


def write_ac(path, parts):
    lines = ["AC3Db"]
    for part in parts:
        rgb = " ".join(map(number, part.color))
        lines.append(f'MATERIAL "{part.name}" rgb {rgb} amb {rgb} emis 0 0 0 spec 0.2 0.2 0.2 shi 30 trans 0')
    lines += ["OBJECT world", f"kids {len(parts)}"]
    for index, part in enumerate(parts):
        lines += ["OBJECT poly", f'name "{part.name}"', "crease 40.0", f"numvert {len(part.points)}"]
        lines += [" ".join(map(number, y_up(p))) for p in part.points]
        lines.append(f"numsurf {len(part.triangles)}")
        for t in part.triangles:
            lines += ["SURF 0x10", f"mat {index}", "refs 3"] + [f"{i} 0 0" for i in t]
        lines.append("kids 0")
    path.write_text("\n".join(lines) + "\n")


def write_dxf(path, parts):
    lines = ["0", "SECTION", "2", "ENTITIES"]
    for index, part in enumerate(parts):
        for t in part.triangles:
            corners = [part.points[i] for i in t] + [part.points[t[2]]]
            lines += ["0", "3DFACE", "8", part.name, "62", str(index % 6 + 1)]
            for k, p in enumerate(corners):
                for axis in range(3):
                    lines += [str(10 * (axis + 1) + k), number(p[axis])]
    path.write_text("\n".join(lines + ["0", "ENDSEC", "0", "EOF", ""]))


def write_x(path, parts):
    # Left-handed, y up, and the front of a triangle is where its corners run clockwise.
    lines = ["xof 0303txt 0032", ""]
    for part in parts:
        points = [(p[0], p[2], p[1]) for p in part.points]
        normals = [(n[0], n[2], n[1]) for n in part.normals()]
        triangles = [tuple(reversed(t)) for t in part.triangles]

        def vectors(values):
            return ",\n".join(" " + ";".join(map(number, v)) + ";" for v in values) + ";"

        def faces():
            return ",\n".join(f" 3;{a},{b},{c};" for a, b, c in triangles) + ";"
        lines += [f"Mesh {part.name} {{", f" {len(points)};", vectors(points), f" {len(triangles)};", faces(),
                  " MeshNormals {", f" {len(normals)};", vectors(normals), f" {len(triangles)};", faces(), " }",
                  " MeshMaterialList {", " 1;", f" {len(triangles)};",
                  ",\n".join(" 0" for _ in triangles) + ";;",
                  " Material {", "  " + ";".join(map(number, part.color)) + ";1;;", "  30;", "  0.2;0.2;0.2;;",
                  "  0;0;0;;", " }", " }", "}", ""]
    path.write_text("\n".join(lines))


def write_3ds(path, parts):
    def chunk(identifier, body):
        return struct.pack("<HI", identifier, len(body) + 6) + body

    def color(identifier, rgb):
        return chunk(identifier, chunk(0x0011, bytes(round(c * 255) for c in rgb)))
    body = chunk(0x3D3E, struct.pack("<I", 3))
    for index, part in enumerate(parts):
        material = chunk(0xA000, f"m{index}".encode() + b"\0") + color(0xA010, part.color) + \
            color(0xA020, part.color) + color(0xA030, (0.2, 0.2, 0.2))
        body += chunk(0xAFFF, material)
    for index, part in enumerate(parts):
        points = struct.pack("<H", len(part.points)) + b"".join(struct.pack("<3f", *p) for p in part.points)
        count = len(part.triangles)
        faces = struct.pack("<H", count) + b"".join(struct.pack("<4H", *t, 7) for t in part.triangles)
        faces += chunk(0x4130, f"m{index}".encode() + b"\0" + struct.pack("<H", count) +
                       b"".join(struct.pack("<H", i) for i in range(count)))
        faces += chunk(0x4150, b"".join(struct.pack("<I", 1) for _ in range(count)))
        mesh = chunk(0x4110, points) + chunk(0x4120, faces)
        body += chunk(0x4000, f"part{index}".encode() + b"\0" + chunk(0x4100, mesh))
    path.write_bytes(chunk(0x4D4D, chunk(0x0002, struct.pack("<I", 3)) + chunk(0x3D3D, body)))


def write_lwo(path, parts):
    # LWO2: big endian, left-handed, y up, and the front of a polygon is where its corners run clockwise.
    def chunk(name, body):
        return name + struct.pack(">I", len(body)) + body + (b"\0" if len(body) % 2 else b"")

    def text(name):
        raw = name.encode() + b"\0"
        return raw + (b"\0" if len(raw) % 2 else b"")

    def sub(name, body):
        return name + struct.pack(">H", len(body)) + body
    points, polygons, tags, surfaces, names = b"", b"", b"", b"", b""
    base, polygon = 0, 0
    for index, part in enumerate(parts):
        names += text(f"s{index}")
        for p in part.points:
            points += struct.pack(">3f", p[0], p[2], p[1])
        for t in part.triangles:
            polygons += struct.pack(">4H", 3, base + t[2], base + t[1], base + t[0])
            tags += struct.pack(">2H", polygon, index)
            polygon += 1
        base += len(part.points)
        surfaces += chunk(b"SURF", text(f"s{index}") + b"\0\0" +
                          sub(b"COLR", struct.pack(">3fH", *part.color, 0)) +
                          sub(b"DIFF", struct.pack(">fH", 1.0, 0)) + sub(b"SMAN", struct.pack(">f", 0.7)))
    layer = struct.pack(">2H3f", 0, 0, 0.0, 0.0, 0.0) + b"\0\0"
    body = b"LWO2" + chunk(b"TAGS", names) + chunk(b"LAYR", layer) + chunk(b"PNTS", points) + \
        chunk(b"POLS", b"FACE" + polygons) + chunk(b"PTAG", b"SURF" + tags) + surfaces
    path.write_bytes(b"FORM" + struct.pack(">I", len(body)) + body)


def write_dae(path, parts):
    out = ['<?xml version="1.0" encoding="utf-8"?>',
           '<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">',
           " <asset><created>2026-01-01T00:00:00Z</created><modified>2026-01-01T00:00:00Z</modified>"
           "<up_axis>Z_UP</up_axis></asset>", " <library_effects>"]
    for index, part in enumerate(parts):
        rgb = " ".join(map(number, part.color))
        out.append(f'  <effect id="e{index}"><profile_COMMON><technique sid="common"><phong>'
                   f"<ambient><color>{rgb} 1</color></ambient><diffuse><color>{rgb} 1</color></diffuse>"
                   f"<specular><color>0.2 0.2 0.2 1</color></specular><shininess><float>30</float></shininess>"
                   f"</phong></technique></profile_COMMON></effect>")
    out += [" </library_effects>", " <library_materials>"]
    out += [f'  <material id="m{i}"><instance_effect url="#e{i}"/></material>' for i in range(len(parts))]
    out += [" </library_materials>", " <library_geometries>"]
    for i, part in enumerate(parts):
        def source(kind, values):
            flat = " ".join(number(x) for v in values for x in v)
            return (f'<source id="g{i}-{kind}"><float_array id="g{i}-{kind}-a" count="{3 * len(values)}">{flat}'
                    f'</float_array><technique_common><accessor source="#g{i}-{kind}-a" count="{len(values)}" stride="3">'
                    '<param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/>'
                    "</accessor></technique_common></source>")
        indices = " ".join(f"{k} {k}" for t in part.triangles for k in t)
        out.append(f'  <geometry id="g{i}" name="{part.name}"><mesh>{source("p", part.points)}{source("n", part.normals())}'
                   f'<vertices id="g{i}-v"><input semantic="POSITION" source="#g{i}-p"/></vertices>'
                   f'<triangles count="{len(part.triangles)}" material="s"><input semantic="VERTEX" source="#g{i}-v" offset="0"/>'
                   f'<input semantic="NORMAL" source="#g{i}-n" offset="1"/><p>{indices}</p></triangles></mesh></geometry>')
    out += [" </library_geometries>", ' <library_visual_scenes><visual_scene id="scene">']
    out += [f'  <node id="n{i}" name="{part.name}"><instance_geometry url="#g{i}"><bind_material><technique_common>'
            f'<instance_material symbol="s" target="#m{i}"/></technique_common></bind_material></instance_geometry></node>'
            for i, part in enumerate(parts)]
    out += [" </visual_scene></library_visual_scenes>", ' <scene><instance_visual_scene url="#scene"/></scene>',
            "</COLLADA>", ""]
    path.write_text("\n".join(out))


class Gltf:
    """Writes glTF, everything in one file."""

    def __init__(self):
        self.data = b""
        self.tree = {"asset": {"version": "2.0"}, "scene": 0, "nodes": [], "meshes": [], "materials": [],
                     "accessors": [], "bufferViews": [], "skins": [], "animations": []}

    def add(self, kind, value):
        self.tree[kind].append(value)
        return len(self.tree[kind]) - 1

    def array(self, rows, kind, code="f"):
        """@return the number of an accessor to numbers: floats, or bytes where the code is B, or shorts where it is H"""
        flat = [value for row in rows for value in (row if isinstance(row, (tuple, list)) else (row,))]
        packed = struct.pack(f"<{len(flat)}{code}", *flat)
        view = self.add("bufferViews", {"buffer": 0, "byteOffset": len(self.data), "byteLength": len(packed)})
        self.data += packed + b"\0" * (-len(packed) % 4)
        accessor = {"bufferView": view, "componentType": {"f": 5126, "B": 5121, "H": 5123}[code], "count": len(rows),
                    "type": kind}
        if kind in ("VEC3", "SCALAR") and code == "f":
            columns = list(zip(*(row if isinstance(row, (tuple, list)) else (row,) for row in rows)))
            single = struct.Struct("<f")
            exact = lambda value: single.unpack(single.pack(value))[0]
            accessor["min"] = [exact(min(column)) for column in columns]
            accessor["max"] = [exact(max(column)) for column in columns]
        return self.add("accessors", accessor)

    def mesh(self, name, parts, extra=None):
        primitives = []
        for part in parts:
            material = self.add("materials", {"name": part.name, "doubleSided": True, "pbrMetallicRoughness": {
                "baseColorFactor": [*linear(part.color), 1], "metallicFactor": 0, "roughnessFactor": 0.8}})
            attributes = {"POSITION": self.array([y_up(p) for p in part.points], "VEC3")}
            attributes.update(extra(part) if extra else {})
            indices = self.array([i for triangle in part.triangles for i in triangle], "SCALAR", "H")
            primitives.append({"attributes": attributes, "indices": indices, "material": material})
        return self.add("meshes", {"name": name, "primitives": primitives})

    def write(self, path, roots):
        self.tree["scenes"] = [{"nodes": roots}]
        self.tree["buffers"] = [{"byteLength": len(self.data), "uri": "data:application/octet-stream;base64," +
                                 base64.b64encode(self.data).decode()}]
        path.write_text(json.dumps({key: value for key, value in self.tree.items() if value != []}) + "\n")


def write_windmill(path):
    """The sails turn, and the flag is carried by bones; there are two winds."""
    tower, sails, flag = windmill()
    file = Gltf()
    joints = 5
    length = 1.6 / joints

    def carried(part):
        # Between two joints a point goes with both.
        numbers, weights = [], []
        for x, _, _ in part.points:
            at = min(max(x / length - 0.5, 0.0), joints - 1.0)
            first = min(int(at), joints - 2)
            numbers.append((first, first + 1, 0, 0))
            weights.append((1 - (at - first), at - first, 0.0, 0.0))
        return {"JOINTS_0": file.array(numbers, "VEC4", "B"), "WEIGHTS_0": file.array(weights, "VEC4")}

    file.add("nodes", {"name": "tower", "mesh": file.mesh("tower", tower)})
    file.add("nodes", {"name": "sails", "mesh": file.mesh("sails", sails), "translation": y_up((0, -0.95, 3.0))})
    file.add("nodes", {"name": "flag", "mesh": file.mesh("flag", [flag], carried), "skin": 0})
    first = len(file.tree["nodes"])
    top = (0.0, 0.0, 4.15)
    for i in range(joints):
        place = top if i == 0 else (length, 0.0, 0.0)
        joint = {"name": f"flag {i + 1}", "translation": y_up(place)}
        if i + 1 < joints:
            joint["children"] = [first + i + 1]
        file.add("nodes", joint)
    # The cloth lies at the origin when no joint moves.
    binds = [(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -i * length, 0, 0, 1) for i in range(joints)]
    file.add("skins", {"joints": list(range(first, first + joints)), "inverseBindMatrices": file.array(binds, "MAT4")})

    for name, seconds, turns, swing in (("breeze", 4.0, 1, 0.16), ("gale", 2.0, 3, 0.32)):
        steps = 24
        times = file.array([seconds * i / steps for i in range(steps + 1)], "SCALAR")
        animation = {"name": name, "channels": [], "samplers": []}

        def rotate(node, turn):
            keys = file.array([turn(i / steps) for i in range(steps + 1)], "VEC4")
            animation["samplers"].append({"input": times, "output": keys})
            animation["channels"].append({"sampler": len(animation["samplers"]) - 1,
                                          "target": {"node": node, "path": "rotation"}})

        rotate(1, lambda t: (0, 0, math.sin(math.pi * turns * t), math.cos(math.pi * turns * t)))
        for i in range(joints):
            def wave(t, i=i):
                angle = swing * math.sin(2 * math.pi * (2 * t - i / joints))
                return (0, math.sin(angle / 2), 0, math.cos(angle / 2))
            rotate(first + i, wave)
        file.add("animations", animation)
    file.write(path, [0, 1, 2, first])


def png(width, height, at):
    rows = b"".join(b"\0" + bytes(c for x in range(width) for c in at(x, y)) for y in range(height))

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def sail_pixel(x, y):
    u, v = x / 255, 1 - y / 255          # v runs up the luff, u along the foot
    seam = abs((v * 9) % 1 - 0.5) > 0.47
    if 0.16 < v < 0.30:
        color = (196, 44, 38)
    elif 0.34 < v < 0.40:
        color = (28, 62, 118)
    elif (u - 0.20) ** 2 + ((v - 0.52) * 1.7) ** 2 < 0.010:
        color = (232, 176, 40)
    else:
        color = (247, 243, 232)
    return tuple(int(c * (0.93 if seam else 1.0)) for c in color)


def checker_pixel(x, y):
    """Red, green, blue and yellow quarters: a picture tells which way up it is."""
    quarter = ((220, 60, 50), (60, 170, 80)) if y < 48 else ((60, 90, 200), (235, 200, 60))
    return quarter[x >= 64]


def big_stl(triangles):
    side = max(2, int(math.sqrt(triangles / 2)))

    def at(u, v):
        a, b = 2 * math.pi * u, 2 * math.pi * v
        r = 1 + 0.35 * math.cos(b) * (1 + 0.15 * math.sin(9 * a + 4 * b))
        return (r * math.cos(a), r * math.sin(a), 0.35 * math.sin(b) * (1 + 0.15 * math.sin(9 * a + 4 * b)))
    rows = [[at(c / side, r / side) for c in range(side + 1)] for r in range(side + 1)]
    out = sys.stdout.buffer
    out.write(b"a knotted ring".ljust(80, b" ") + struct.pack("<I", 2 * side * side))
    pack = struct.Struct("<12fH").pack
    for r in range(side):
        for c in range(side):
            a, b, d, e = rows[r][c], rows[r][c + 1], rows[r + 1][c], rows[r + 1][c + 1]
            for t in ((a, b, e), (a, e, d)):
                out.write(pack(*unit(cross(*t)), *t[0], *t[1], *t[2], 0))


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "--big":
        big_stl(int(sys.argv[2]))
        return
    models = ROOT / "models"
    models.mkdir(exist_ok=True)
    write_obj(models / "sailboat.obj", sailboat())
    (models / "sail.png").write_bytes(png(256, 256, sail_pixel))
    write_ply(models / "lighthouse.ply", lighthouse())
    write_dae(models / "rocket.dae", rocket())
    write_windmill(models / "windmill.gltf")
    (models / "king.stl").write_bytes(stl_binary(king()))

    fixtures = ROOT / "tests" / "fixtures" / "formats"
    fixtures.mkdir(parents=True, exist_ok=True)
    post = signpost()
    write_obj(fixtures / "signpost.obj", post)
    (fixtures / "signpost.stl").write_bytes(stl_binary(post))
    write_stl_text(fixtures / "signpost-text.stl", post)
    write_ply(fixtures / "signpost.ply", post)
    write_ac(fixtures / "signpost.ac", post)
    write_dxf(fixtures / "signpost.dxf", post)
    write_x(fixtures / "signpost.x", post)
    write_3ds(fixtures / "signpost.3ds", post)
    write_lwo(fixtures / "signpost.lwo", post)
    write_dae(fixtures / "signpost.dae", post)
    (fixtures / "quarters.png").write_bytes(png(128, 96, checker_pixel))
    for extension in ("osgt", "osgb", "ive"):
        subprocess.run(["osgconv", "-O", "noTriStripPolygons", "signpost.obj", f"signpost.{extension}"], cwd=fixtures,
                       check=True, stdout=subprocess.DEVNULL)


main()
