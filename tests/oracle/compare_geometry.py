#!/usr/bin/python3
"""Compares veltor's entity geometry with ezdxf's on real drawings.

usage: compare_geometry.py VELTOR_MEASURE DRAWING... [--check]

For every model space entity veltor measures, ezdxf's bounding box (ezdxf.bbox; for
circles, arcs and ellipses the box of 20001 points ezdxf computes on the curve) and the
length and area (exact for circles and arcs, from ezdxf's path flattened to 1e-6 otherwise,
areas in the entity's own plane) are compared.
Prints, per entity type, how many entities were compared and the worst relative difference:
extents relative to the box diagonal, lengths and areas relative to their value. With
--check, exits 1 when a type goes past its tolerance.
"""
import math
import subprocess
import sys
from collections import defaultdict

import ezdxf
from ezdxf import bbox, path as ezpath
from ezdxf.math import area as ring_area

# Text boxes are estimates on both sides (ezdxf measures with font metrics when it has
# fonts); every other type is exact geometry.
TOLERANCE = {"TEXT": 1.0, "MTEXT": 1.0, "ATTRIB": 1.0, "ATTDEF": 1.0, "INSERT": 1.0}
DEFAULT_TOLERANCE = 1e-6
MEASURED_LENGTH = {"LINE", "LWPOLYLINE", "POLYLINE", "ARC", "CIRCLE", "ELLIPSE", "SPLINE"}
MEASURED_AREA = {"LWPOLYLINE", "CIRCLE"}


def load(name):
    try:
        return ezdxf.readfile(name)
    except Exception:
        from ezdxf import recover
        doc, _ = recover.readfile(name)
        return doc


SAMPLES = 20000


def conic_points(entity):
    """Dense WCS points of ezdxf's own circle, arc or ellipse (chord error ~1e-9)."""
    kind = entity.dxftype()
    if kind == "ELLIPSE":
        start, end = entity.dxf.start_param, entity.dxf.end_param
        if end <= start:
            end += 2 * math.pi
        return list(entity.vertices(start + (end - start) * i / SAMPLES for i in range(SAMPLES + 1)))
    if kind == "ARC":
        start, end = entity.dxf.start_angle, entity.dxf.end_angle
        if end <= start:
            end += 360.0
    else:
        start, end = 0.0, 360.0
    return list(entity.vertices(start + (end - start) * i / SAMPLES for i in range(SAMPLES + 1)))


def ezdxf_extents(entity, cache):
    if entity.dxftype() in ("CIRCLE", "ARC", "ELLIPSE"):
        pts = conic_points(entity)
        return ([min(p[i] for p in pts) for i in range(3)] +
                [max(p[i] for p in pts) for i in range(3)])
    box = bbox.extents([entity], cache=cache)
    if not box.has_data:
        return None
    return list(box.extmin) + list(box.extmax)


def ezdxf_length(entity):
    kind = entity.dxftype()
    if kind == "CIRCLE":
        return 2 * math.pi * entity.dxf.radius
    if kind == "ARC":
        sweep = (entity.dxf.end_angle - entity.dxf.start_angle) % 360.0 or 360.0
        return math.radians(sweep) * entity.dxf.radius
    pts = conic_points(entity) if kind == "ELLIPSE" else list(ezpath.make_path(entity).flattening(1e-6))
    return sum((b - a).magnitude for a, b in zip(pts, pts[1:]))


def ezdxf_area(entity):
    if entity.dxftype() == "CIRCLE":
        return math.pi * entity.dxf.radius ** 2
    pts = list(ezpath.make_path(entity).flattening(1e-7))
    # The area of a polyline is measured in its own plane (its OCS).
    pts = list(entity.ocs().points_from_wcs(pts))
    return abs(ring_area(pts))


def main():
    args = [a for a in sys.argv[1:] if a != "--check"]
    check = "--check" in sys.argv
    measure, files = args[0], args[1:]
    worst = defaultdict(lambda: [0, 0.0, "", 0.0, "", 0.0, ""])  # n, ext, where, len, where, area, where
    for name in files:
        out = subprocess.run([measure, name], capture_output=True, text=True)
        if out.returncode != 0:
            print(f"{name}: veltor-measure failed: {out.stderr.strip()}")
            continue
        doc = load(name)
        cache = bbox.Cache()
        for line in out.stdout.splitlines():
            f = line.split("\t")
            handle, kind = f[0], f[1]
            entity = doc.entitydb.get(handle)
            if entity is None or f[2] == "-":
                continue
            try:
                theirs = ezdxf_extents(entity, cache)
            except Exception:
                continue
            if theirs is None:
                continue
            ours = [float(v) for v in f[2:8]]
            diag = max(math.dist(theirs[:3], theirs[3:]), 1e-9)
            diff = max(abs(a - b) for a, b in zip(ours, theirs)) / diag
            w = worst[kind]
            w[0] += 1
            where = f"{name.split('/')[-1]}:{handle}"
            if diff > w[1]:
                w[1], w[2] = diff, where
            try:
                if kind in MEASURED_LENGTH and f[8] != "-":
                    ref = ezdxf_length(entity)
                    if ref > 1e-9:
                        d = abs(float(f[8]) - ref) / ref
                        if d > w[3]:
                            w[3], w[4] = d, where
                if kind in MEASURED_AREA and f[10] == "1" and f[9] != "-":
                    ref = ezdxf_area(entity)
                    if ref > 1e-9:
                        d = abs(float(f[9]) - ref) / ref
                        if d > w[5]:
                            w[5], w[6] = d, where
            except Exception:
                pass
    failed = False
    print(f"{'type':12} {'n':>6} {'extents':>10} {'length':>10} {'area':>10}  worst extents at")
    for kind in sorted(worst):
        n, e, ew, l, lw, a, aw = worst[kind]
        print(f"{kind:12} {n:6d} {e:10.2e} {l:10.2e} {a:10.2e}  {ew}")
        tol = TOLERANCE.get(kind, DEFAULT_TOLERANCE)
        # Lengths and areas of polylines and splines come from ezdxf's flattening at 1e-6.
        if e > tol or l > 1e-5 or a > 1e-5:
            failed = True
            print(f"  ^ beyond tolerance ({tol:g} extents, 1e-5 length/area)")
    return 1 if (check and failed) else 0


if __name__ == "__main__":
    sys.exit(main())
