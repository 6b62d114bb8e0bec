// Circles, arcs and ellipses, exact where a closed form exists.
//
// All three become a ConicArc: P(t) = center + u cos t + v sin t for t in [start, start+sweep].
// The form stays exact under any affine transform (block references with non-uniform scale
// turn circles into ellipses), so extents, flattening and ray tests work on it alone.
#pragma once

#include "drawing/geometry/extents.h"
#include "drawing/geometry/matrix.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

struct ConicArc {
  Vec3 center;
  Vec3 u{1, 0, 0};
  Vec3 v{0, 1, 0};
  double start = 0.0;     // radians
  double sweep = kTwoPi;  // radians, in (0, 2*pi]; 2*pi is a closed curve

  bool IsClosed() const;
  Vec3 PointAt(double t) const;
  Vec3 DerivativeAt(double t) const;
  Vec3 StartPoint() const { return PointAt(start); }
  Vec3 EndPoint() const { return PointAt(start + sweep); }
  // True when the angle t (any multiple of 2*pi) falls within [start, start+sweep], allowing
  // 1e-12 radians at both ends.
  bool ContainsParam(double t) const;
  // True when u and v are perpendicular and of equal length (within 1e-12 relative).
  bool IsCircular() const;
  ConicArc Transformed(const Matrix3d& m) const;
};

// Entity parameters as DXF stores them. Circle and arc centres are in the OCS of `normal`,
// angles are degrees counter-clockwise about the normal from the OCS X axis. Ellipse centre
// and major axis are in WCS; the minor axis is ratio * |major| along normal x major; start and
// end are parameters in radians (0 and 2*pi for a whole ellipse).
struct Circle {
  Vec3 center;
  double radius = 0.0;
  Vec3 normal{0, 0, 1};
};

struct Arc {
  Vec3 center;
  double radius = 0.0;
  double start_deg = 0.0;
  double end_deg = 360.0;
  Vec3 normal{0, 0, 1};
};

struct Ellipse {
  Vec3 center;
  Vec3 major_axis{1, 0, 0};
  double ratio = 1.0;
  double start_param = 0.0;
  double end_param = kTwoPi;
  Vec3 normal{0, 0, 1};
};

// Counter-clockwise sweep from start to end (radians), in (0, 2*pi]. Equal angles (modulo
// 2*pi) give a full turn, which is how a whole ellipse is stored.
double SweepBetween(double start, double end);

ConicArc ToConic(const Circle& c);
ConicArc ToConic(const Arc& a);
ConicArc ToConic(const Ellipse& e);

// Curve length: |u| * sweep when circular, otherwise adaptive Gauss-Legendre integration of
// |P'(t)| with an absolute tolerance of 1e-11 * (|u| + |v|) (relative error well below 1e-10).
double LengthOf(const ConicArc& c);
double LengthOf(const Circle& c);
double LengthOf(const Arc& a);
double LengthOf(const Ellipse& e);

// Exact WCS extents: each coordinate x_i(t) = c_i + u_i cos t + v_i sin t is extreme at
// t = atan2(v_i, u_i) and that + pi; those inside the range are added with the end points.
Extents BoundsOf(const ConicArc& c);
Extents BoundsOf(const Circle& c);
Extents BoundsOf(const Arc& a);
Extents BoundsOf(const Ellipse& e);

}  // namespace veltor::geom
