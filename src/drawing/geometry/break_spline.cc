#include "drawing/geometry/break_spline.h"

#include <cmath>
#include <limits>

#include "drawing/geometry/break_stretches.h"
#include "drawing/geometry/spline_split.h"

namespace veltor::geom {

namespace {

constexpr int kSamplesPerSpan = 32;

// Golden-section search for the minimum of the distance to p on [lo, hi].
double Narrow(const NurbsCurve& curve, const Vec3& p, double lo, double hi, double tolerance) {
  const double ratio = 0.5 * (std::sqrt(5.0) - 1.0);
  auto distance = [&](double t) { return (curve.PointAt(t) - p).LengthSquared(); };
  double x1 = hi - ratio * (hi - lo), x2 = lo + ratio * (hi - lo);
  double f1 = distance(x1), f2 = distance(x2);
  // The iteration cap ends the search where the tolerance is below the parameters' spacing.
  for (int i = 0; i < 200 && hi - lo > tolerance; ++i) {
    if (f1 <= f2) {
      hi = x2;
      x2 = x1;
      f2 = f1;
      x1 = hi - ratio * (hi - lo);
      f1 = distance(x1);
    } else {
      lo = x1;
      x1 = x2;
      f1 = f2;
      x2 = lo + ratio * (hi - lo);
      f2 = distance(x2);
    }
  }
  return 0.5 * (lo + hi);
}

// The distance is flat at its minimum, so the search above finds it only to about the square
// root of the rounding error; the root of (C(t) - p) . C'(t) is found to full precision by
// secant steps that stay within [lo, hi] and do not move away from p.
double Polish(const NurbsCurve& curve, const Vec3& p, double t, double lo, double hi) {
  auto slope = [&](double u) { return (curve.PointAt(u) - p).Dot(curve.DerivativeAt(u)); };
  auto distance = [&](double u) { return (curve.PointAt(u) - p).LengthSquared(); };
  double t0 = t, t1 = std::min(hi, t + 1e-6 * (hi - lo));
  if (t1 == t0) t1 = std::max(lo, t - 1e-6 * (hi - lo));
  double f0 = slope(t0), f1 = slope(t1);
  for (int i = 0; i < 8 && f1 != f0; ++i) {
    const double next = t1 - f1 * (t1 - t0) / (f1 - f0);
    if (!(next >= lo && next <= hi)) break;
    t0 = t1;
    f0 = f1;
    t1 = next;
    f1 = slope(t1);
  }
  return distance(t1) <= distance(t) ? t1 : t;
}

}  // namespace

double NearestSplineParam(const NurbsCurve& curve, const Vec3& p) {
  const std::vector<double> breaks = curve.SpanBreaks();
  double best = curve.StartParam(), best_distance = std::numeric_limits<double>::infinity();
  double step = 0.0;
  for (size_t s = 1; s < breaks.size(); ++s) {
    const double h = (breaks[s] - breaks[s - 1]) / kSamplesPerSpan;
    for (int i = 0; i <= kSamplesPerSpan; ++i) {
      const double t = breaks[s - 1] + h * i;
      const double d = (curve.PointAt(t) - p).LengthSquared();
      if (d < best_distance) {
        best_distance = d;
        best = t;
        step = h;
      }
    }
  }
  const double start = curve.StartParam(), end = curve.EndParam();
  const double lo = std::max(start, best - step), hi = std::min(end, best + step);
  const double narrowed = Polish(curve, p, Narrow(curve, p, lo, hi, 1e-12 * (end - start)), lo, hi);
  // The search cannot reach the ends exactly; an end that is as near wins.
  for (double t : {start, end})
    if ((curve.PointAt(t) - p).LengthSquared() <= (curve.PointAt(narrowed) - p).LengthSquared()) return t;
  return narrowed;
}

Result<std::vector<SplineData>> BreakSpline(const NurbsCurve& curve, const Vec3& a, const Vec3& b) {
  const double start = curve.StartParam(), end = curve.EndParam();
  const bool closed = curve.IsClosed();
  Result<std::vector<Stretch>> kept =
      RemainingStretches(start, end, closed, NearestSplineParam(curve, a),
                         NearestSplineParam(curve, b), 1e-10 * (end - start));
  if (!kept.ok()) return kept.status();
  const SplineData whole = ExplicitSpline(curve);
  std::vector<SplineData> pieces;
  for (const Stretch& s : *kept) {
    if (s.to <= end) {
      pieces.push_back(SplinePiece(whole, s.from, s.to));
      continue;
    }
    // Through the start of a closed curve: the tail and then the head, joined where they meet.
    const double head_end = s.to - (end - start);
    if (end - s.from <= 0.0) pieces.push_back(SplinePiece(whole, start, head_end));
    else if (head_end - start <= 0.0) pieces.push_back(SplinePiece(whole, s.from, end));
    else pieces.push_back(JoinSplines(SplinePiece(whole, s.from, end), SplinePiece(whole, start, head_end)));
  }
  return pieces;
}

}  // namespace veltor::geom
