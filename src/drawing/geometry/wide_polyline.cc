#include "drawing/geometry/wide_polyline.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/conic.h"
#include "drawing/geometry/ocs.h"

namespace veltor::geom {

namespace {

// Edges closer than this to parallel are not mitred: their meeting point would run off far
// away for what is drawn as an almost straight band.
constexpr double kParallelAngle = kPi / 100.0;
// Vertices closer than this are one vertex (a zero-length segment has no direction).
constexpr double kSameVertex = 1e-12;

struct Segment {
  Vec2 a, b;
  double half_a = 0.0;  // half the width at a
  double half_b = 0.0;
  double bulge = 0.0;
  bool straight() const { return std::fabs(bulge) < kStraightBulge; }
};

// One side of a straight segment's band, from its start to its end.
struct Edge {
  Vec2 from, to;
};

void SideEdges(const Segment& s, Edge& left, Edge& right) {
  const Vec2 n = (s.b - s.a).Normalized().Perp();
  left = {s.a + n * s.half_a, s.b + n * s.half_b};
  right = {s.a - n * s.half_a, s.b - n * s.half_b};
}

// Where the lines through two edges meet, or nothing when they are (nearly) parallel.
std::optional<Vec2> Mitre(const Edge& e, const Edge& f) {
  const Vec2 d = e.to - e.from, g = f.to - f.from;
  const double cross = d.Cross(g);
  const double angle = std::atan2(std::fabs(cross), d.Dot(g));
  if (angle < kParallelAngle || std::fabs(cross) <= 1e-12 * d.Length() * g.Length())
    return std::nullopt;
  return e.from + d * ((f.from - e.from).Cross(g) / cross);
}

// Outline points of consecutive straight segments: square ends at both ends of the run
// unless it is cyclic (a closed polyline without arcs), mitred joints in between.
void AddStraightRun(const std::vector<Segment>& run, bool cyclic, std::vector<Vec2>& out) {
  const size_t n = run.size();
  std::vector<Edge> left(n), right(n);
  for (size_t i = 0; i < n; ++i) SideEdges(run[i], left[i], right[i]);
  const size_t joints = cyclic ? n : n - 1;
  for (size_t i = 0; i < joints; ++i) {
    const size_t j = (i + 1) % n;
    for (const auto* side : {&left, &right}) {
      const Edge& e = (*side)[i];
      const Edge& f = (*side)[j];
      if (auto m = Mitre(e, f)) {
        out.push_back(*m);
      } else {
        out.push_back(e.to);
        out.push_back(f.from);
      }
    }
  }
  if (!cyclic) {
    out.push_back(left.front().from);
    out.push_back(right.front().from);
    out.push_back(left.back().to);
    out.push_back(right.back().to);
  }
}

// Golden-section search for the extreme of f on [lo, hi] (sign +1: maximum, -1: minimum),
// where f is known to have a single extreme of that kind.
template <typename F>
double RefineExtreme(F f, double lo, double hi, double sign) {
  constexpr double kInvPhi = 0.6180339887498949;
  double x1 = hi - kInvPhi * (hi - lo), x2 = lo + kInvPhi * (hi - lo);
  double f1 = sign * f(x1), f2 = sign * f(x2);
  for (int it = 0; it < 80 && hi - lo > 1e-15; ++it) {
    if (f1 < f2) {
      lo = x1;
      x1 = x2;
      f1 = f2;
      x2 = lo + kInvPhi * (hi - lo);
      f2 = sign * f(x2);
    } else {
      hi = x2;
      x2 = x1;
      f2 = f1;
      x1 = hi - kInvPhi * (hi - lo);
      f1 = sign * f(x1);
    }
  }
  return 0.5 * (lo + hi);
}

// The two curved sides of a wide arc segment, in WCS.
void AddWideArc(const Segment& s, double elevation, const Matrix3d& to_wcs, Extents& box) {
  const std::optional<BulgeArc> arc = BulgeToArc(s.a, s.b, s.bulge);
  if (!arc) return;
  const ConicArc path = BulgeToConic(s.a, s.b, s.bulge, elevation);
  if (s.half_a == s.half_b) {
    // Constant width: both sides are concentric arcs (the inner one through the centre to
    // the far side when the half width exceeds the radius).
    for (double side : {1.0, -1.0}) {
      ConicArc c = path;
      const double scale = (arc->radius + side * s.half_a) / arc->radius;
      c.u *= scale;
      c.v *= scale;
      box.Add(BoundsOf(c.Transformed(to_wcs)));
    }
    return;
  }
  // Tapered: radius r(t) = R +/- h(t) at angle start + sweep * t, t in [0, 1]. Each WCS
  // coordinate is sampled finely enough that every extreme lies alone between the two
  // neighbours of its best sample, then refined there.
  const Vec3 centre = to_wcs.Apply(Vec3(arc->center, elevation));
  const Vec3 ex = to_wcs.ApplyVector(Vec3(1, 0, 0)), ey = to_wcs.ApplyVector(Vec3(0, 1, 0));
  const int samples =
      std::max(16, static_cast<int>(std::ceil(128.0 * std::fabs(arc->sweep) / kTwoPi)));
  for (double side : {1.0, -1.0}) {
    auto point = [&](double t) {
      const double r = arc->radius + side * (s.half_a + (s.half_b - s.half_a) * t);
      const double angle = arc->start_angle + arc->sweep * t;
      return centre + (ex * std::cos(angle) + ey * std::sin(angle)) * r;
    };
    box.Add(point(0.0));
    box.Add(point(1.0));
    std::vector<Vec3> p(static_cast<size_t>(samples) + 1);
    for (int k = 0; k <= samples; ++k) p[static_cast<size_t>(k)] = point(double(k) / samples);
    for (int axis = 0; axis < 3; ++axis) {
      for (int k = 1; k < samples; ++k) {
        const double prev = p[static_cast<size_t>(k - 1)][axis], here = p[static_cast<size_t>(k)][axis],
                     next = p[static_cast<size_t>(k + 1)][axis];
        double sign = 0.0;
        if (here >= prev && here >= next && (here > prev || here > next)) sign = 1.0;
        if (here <= prev && here <= next && (here < prev || here < next)) sign = -1.0;
        if (sign == 0.0) continue;
        const double t = RefineExtreme([&](double u) { return point(u)[axis]; },
                                       double(k - 1) / samples, double(k + 1) / samples, sign);
        box.Add(point(t));
      }
    }
  }
}

}  // namespace

bool HasWidth(const LwPolyline& p) {
  for (const SegmentWidth& w : p.widths)
    if (w.start != 0.0 || w.end != 0.0) return true;
  return false;
}

Extents WideBandBounds(const LwPolyline& p) {
  Extents box;
  const Matrix3d to_wcs = OcsToWcs(p.normal);
  for (const BulgeVertex& v : p.vertices) box.Add(to_wcs.Apply(Vec3(v.point, p.elevation)));
  const size_t n = p.vertices.size();
  if (n < 2) return box;

  // Segments with a length, in order; the closing one when closed.
  std::vector<Segment> segments;
  const size_t count = p.closed ? n : n - 1;
  for (size_t i = 0; i < count; ++i) {
    Segment s;
    s.a = p.vertices[i].point;
    s.b = p.vertices[(i + 1) % n].point;
    if ((s.b - s.a).Length() <= kSameVertex) continue;
    s.bulge = p.vertices[i].bulge;
    if (i < p.widths.size()) {
      s.half_a = std::fabs(p.widths[i].start) / 2.0;
      s.half_b = std::fabs(p.widths[i].end) / 2.0;
    }
    segments.push_back(s);
  }
  if (segments.empty()) return box;

  const bool all_straight = std::all_of(segments.begin(), segments.end(),
                                        [](const Segment& s) { return s.straight(); });
  // A closed polyline's straight run may pass through its first vertex: start the walk
  // after an arc so that no run wraps around.
  if (p.closed && !all_straight) {
    auto arc = std::find_if(segments.begin(), segments.end(),
                            [](const Segment& s) { return !s.straight(); });
    std::rotate(segments.begin(), arc + 1, segments.end());
  }

  std::vector<Vec2> outline;
  std::vector<Segment> run;
  auto flush = [&](bool cyclic) {
    if (!run.empty()) AddStraightRun(run, cyclic, outline);
    run.clear();
  };
  for (const Segment& s : segments) {
    if (s.straight()) {
      run.push_back(s);
      continue;
    }
    flush(false);
    AddWideArc(s, p.elevation, to_wcs, box);
  }
  flush(p.closed && all_straight);
  for (Vec2 q : outline) box.Add(to_wcs.Apply(Vec3(q, p.elevation)));
  return box;
}

Extents Swept(const Extents& box, const Vec3& offset) {
  Extents out = box;
  if (!box.valid()) return out;
  out.Add(box.min() + offset);
  out.Add(box.max() + offset);
  return out;
}

Vec3 ThicknessOffset(double thickness, const Vec3& normal) {
  return ArbitraryAxes(normal).z * thickness;
}

}  // namespace veltor::geom
