#!/usr/bin/python3
"""Checks BREAK's pieces with ezdxf: check_break.py ORIGINAL.dxf BROKEN.dxf CASES.json

CASES.json lists the breaks in the order they were made: {"handle", "first", "second",
"pieces", "closed"}. The new entities of BROKEN (handles ORIGINAL lacks) follow in storage
order, pieces - 1 for each case. For each case ezdxf must find the pieces' lengths adding up to
the original's length minus the gap, the gap measured by ezdxf along the original curve between
the two points (from the first forward to the second on a closed curve), and every piece lying
on the original curve. Exit 77 when ezdxf is missing, 1 on a mismatch."""
import json
import math
import sys

try:
    import ezdxf
    from ezdxf.math import bulge_to_arc
except ImportError:
    sys.exit(77)

FLATTEN = 1e-5  # greatest distance of the flattened path from the curve
TOLERANCE = 1e-4


def polyline(entity):
    """Points along the entity (WCS) from ezdxf's own evaluation of each curve type; ezdxf's
    paths would approximate arcs by Bezier curves, which are not exact enough here."""
    kind = entity.dxftype()
    if kind == "LINE":
        return [tuple(entity.dxf.start), tuple(entity.dxf.end)]
    if kind in ("ARC", "CIRCLE"):
        return [tuple(v) for v in entity.flattening(FLATTEN)]
    if kind == "SPLINE":
        return [tuple(v) for v in entity.construction_tool().flattening(FLATTEN)]
    if kind == "POLYLINE":
        vertices = [tuple(v.dxf.location) for v in entity.vertices]
        return vertices + vertices[:1] if entity.is_closed else vertices
    # LWPOLYLINE (in the XY plane at its elevation): straight and bulged segments.
    z = entity.dxf.elevation
    vertices = list(entity.get_points("xyb"))
    if entity.closed:
        vertices.append(vertices[0])
    points = [(vertices[0][0], vertices[0][1], z)]
    for (x0, y0, bulge), (x1, y1, _) in zip(vertices, vertices[1:]):
        if bulge == 0:
            points.append((x1, y1, z))
            continue
        center, start, end, radius = bulge_to_arc((x0, y0), (x1, y1), bulge)
        sweep = (end - start) % math.tau
        steps = max(1, math.ceil(sweep / (2 * math.acos(1 - FLATTEN / radius))))
        arc = [(center.x + radius * math.cos(start + sweep * i / steps),
                center.y + radius * math.sin(start + sweep * i / steps), z) for i in range(steps + 1)]
        if bulge < 0:  # ezdxf gives the arc counter-clockwise, from the segment's end
            arc.reverse()
        points.extend(arc[1:])
    return points


def length(points):
    return sum(math.dist(points[i], points[i + 1]) for i in range(len(points) - 1))


def nearest(points, p):
    """(distance along the path, distance from it) of the path's point nearest to p."""
    best, along, walked = (math.inf, 0.0), 0.0, 0.0
    for a, b in zip(points, points[1:]):
        d = [b[k] - a[k] for k in range(3)]
        seg2 = sum(c * c for c in d)
        t = 0.0 if seg2 == 0 else max(0.0, min(1.0, sum((p[k] - a[k]) * d[k] for k in range(3)) / seg2))
        q = [a[k] + t * d[k] for k in range(3)]
        off = math.dist(q, p)
        if off < best[0]:
            best, along = (off, walked + t * math.sqrt(seg2)), walked + t * math.sqrt(seg2)
        walked += math.sqrt(seg2)
    return best[1], best[0]


def main():
    original = ezdxf.readfile(sys.argv[1])
    broken = ezdxf.readfile(sys.argv[2])
    cases = json.load(open(sys.argv[3]))
    auditor = broken.audit()
    failures = [f"audit: {e.message}" for e in auditor.errors]
    old = {e.dxf.handle for e in original.modelspace()}
    new = [e for e in broken.modelspace() if e.dxf.handle not in old]
    for case in cases:
        source = original.entitydb[case["handle"]]
        curve = polyline(source)
        total = length(curve)
        first, _ = nearest(curve, case["first"])
        second, _ = nearest(curve, case["second"])
        gap = (second - first) % total if case["closed"] else abs(second - first)
        pieces = [broken.entitydb[case["handle"]]] + new[: case["pieces"] - 1]
        new = new[case["pieces"] - 1 :]
        kept = sum(length(polyline(p)) for p in pieces)
        off_curve = max(nearest(curve, v)[1] for p in pieces for v in polyline(p)[::7])
        line = (f"{case['handle']} {source.dxftype()}: length {total:.6f}, gap {gap:.6f}, "
                f"{len(pieces)} piece(s) {kept:.6f}, farthest from the curve {off_curve:.2g}")
        print(line)
        if abs(kept - (total - gap)) > TOLERANCE * max(1.0, total) or off_curve > TOLERANCE:
            failures.append(line)
    if new:
        failures.append(f"{len(new)} new entities left over")
    for f in failures:
        print("MISMATCH", f)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
