#!/usr/bin/python3
"""Checks the lengths, areas and centre points VELTOR_SETPROP and VELTOR_SETXYZ wrote.

usage: check_set_values.py VALUES.json

VALUES.json names the drawing the commands ran on and, per entity handle, the values they
wrote: "len" and "area" (eight decimals; 0 where nothing was written) and "x", "y" (the
centre point, six decimals). This script reads the same drawing with ezdxf and computes
what the commands must write for lines, lightweight polylines and 3D polylines:

- length: the straight distances between consecutive vertices (bulged segments count as
  their chords), plus the closing segment of a closed polyline;
- area: a lightweight polyline's enclosed area with its arcs (as if closed), a closed 3D
  polyline's area projected on XY, nothing for lines and open 3D polylines;
- centre: the mean of a closed polyline's vertices (a last vertex repeating the first left
  out), otherwise the point halfway along the vertex path.

Prints how many entities of each type were compared and exits 1 on the first mismatch
beyond the rounding of the written text; 77 when ezdxf is not installed.
"""
import json
import math
import sys

try:
    import ezdxf
    from ezdxf.math import Vec3
except ImportError as error:  # pragma: no cover - depends on the machine
    print(f"check_set_values: ezdxf is not available ({error}); skipped")
    sys.exit(77)


def chord_length(points, closed):
    total = sum((b - a).magnitude for a, b in zip(points, points[1:]))
    if closed and len(points) > 1:
        total += (points[0] - points[-1]).magnitude
    return total


def shoelace(points):
    # Relative to the first vertex: far from the origin, the products would cancel badly.
    origin = points[0]
    twice = 0.0
    for i, a in enumerate(points):
        a = a - origin
        b = points[(i + 1) % len(points)] - origin
        twice += a.x * b.y - b.x * a.y
    return twice / 2


def bulged_area(xyb):
    """Signed area of a polyline closed by a straight chord, with its arc segments."""
    area = shoelace([Vec3(x, y, 0) for x, y, _ in xyb])
    for i, (x, y, bulge) in enumerate(xyb):
        if bulge == 0 or (i == len(xyb) - 1):
            continue  # the closing chord of an open polyline has no arc
        nx, ny, _ = xyb[i + 1]
        chord = math.hypot(nx - x, ny - y)
        theta = 4 * math.atan(abs(bulge))
        radius = chord / (2 * math.sin(theta / 2))
        segment = radius * radius / 2 * (theta - math.sin(theta))
        area += segment if bulge > 0 else -segment
    return area


def closed_bulged_area(xyb):
    """As bulged_area, with the last vertex's bulge on the closing segment."""
    return bulged_area(xyb + [xyb[0]])


def halfway(points):
    if len(points) == 2:
        return (points[0] + points[1]) / 2
    total = chord_length(points, False)
    run = 0.0
    for a, b in zip(points, points[1:]):
        length = (b - a).magnitude
        run += length
        if run > total / 2:
            return b - (b - a) * ((run - total / 2) / length)
    return points[0]


def mean_of_outline(points):
    if len(points) > 1 and (points[-1] - points[0]).magnitude <= 0.0001:
        points = points[:-1]
    return sum(points, Vec3()) / len(points)


def expected(entity):
    """(length, area, centre) the commands must write, or None for types not checked."""
    kind = entity.dxftype()
    if kind == "LINE":
        a, b = Vec3(entity.dxf.start), Vec3(entity.dxf.end)
        return (a - b).magnitude, 0.0, (a + b) / 2
    if kind == "LWPOLYLINE":
        points = [Vec3(p) for p in entity.vertices_in_wcs()]
        if not points:
            return None
        xyb = [(x, y, b) for x, y, b in entity.get_points("xyb")]
        area = closed_bulged_area(xyb) if entity.closed else bulged_area(xyb)
        if len(points) < 2:
            return None
        centre = mean_of_outline(points) if entity.closed else halfway(points)
        return chord_length(points, entity.closed), abs(area), centre
    if kind == "POLYLINE" and entity.is_3d_polyline:
        points = [Vec3(p) for p in entity.points()]
        if len(points) < 2:
            return None
        closed = entity.is_closed
        area = abs(shoelace(points)) if closed else 0.0
        centre = mean_of_outline(points) if closed else halfway(points)
        return chord_length(points, closed), area, centre
    return None


def rounded(value, decimals):
    """What the command writes for a measure: nothing (0) unless positive after rounding."""
    value = float(f"{value:.{decimals}f}")
    return value if value > 0 else 0.0


def main():
    with open(sys.argv[1], encoding="utf-8") as f:
        values = json.load(f)
    doc = ezdxf.readfile(values["drawing"])
    compared = {}
    for written in values["entities"]:
        entity = doc.entitydb.get(written["handle"])
        if entity is None:
            print(f"{written['handle']}: not found by ezdxf")
            return 1
        want = expected(entity)
        if want is None:
            continue
        length, area, centre = want
        checks = [("length", rounded(length, 8), written["len"], 2e-8),
                  ("area", rounded(area, 8), written["area"], 2e-8 + 1e-9 * area),
                  ("centre x", centre.x, written["x"], 1e-6),
                  ("centre y", centre.y, written["y"], 1e-6)]
        for what, ours_expected, ours, tolerance in checks:
            if abs(ours_expected - ours) > tolerance + 1e-12 * abs(ours_expected):
                print(f"{entity.dxftype()} {written['handle']}: {what} {ours}, ezdxf gives "
                      f"{ours_expected}")
                return 1
        compared[entity.dxftype()] = compared.get(entity.dxftype(), 0) + 1
    if not compared:
        print("no line or polyline to compare")
        return 1
    print(", ".join(f"{kind}: {n}" for kind, n in sorted(compared.items())) + " compared")
    return 0


if __name__ == "__main__":
    sys.exit(main())
