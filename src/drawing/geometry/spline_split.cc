#include "drawing/geometry/spline_split.h"

#include <algorithm>
#include <cmath>

namespace veltor::geom {

namespace {

// Control points in homogeneous form (weight * point, weight) for knot insertion.
struct Homogeneous {
  Vec3 wp;
  double w = 1.0;
};

size_t Multiplicity(const std::vector<double>& knots, double u) {
  return static_cast<size_t>(std::count(knots.begin(), knots.end(), u));
}

// Inserts knot u once (Boehm): the curve is unchanged, one control point is added.
void InsertKnot(int degree, std::vector<double>& knots, std::vector<Homogeneous>& points, double u) {
  const size_t p = static_cast<size_t>(degree), n = points.size() - 1;
  size_t k = static_cast<size_t>(std::upper_bound(knots.begin(), knots.end(), u) - knots.begin());
  k = std::clamp(k == 0 ? size_t{0} : k - 1, p, n);
  std::vector<Homogeneous> out;
  out.reserve(points.size() + 1);
  for (size_t i = 0; i <= k - p; ++i) out.push_back(points[i]);
  for (size_t i = k - p + 1; i <= k; ++i) {
    const double span = knots[i + p] - knots[i];
    const double alpha = span > 0.0 ? (u - knots[i]) / span : 0.0;
    out.push_back({points[i].wp * alpha + points[i - 1].wp * (1.0 - alpha),
                   points[i].w * alpha + points[i - 1].w * (1.0 - alpha)});
  }
  for (size_t i = k; i <= n; ++i) out.push_back(points[i]);
  knots.insert(knots.begin() + static_cast<long>(k) + 1, u);
  points = std::move(out);
}

// u itself, or the existing knot it is within `tolerance` of.
double SnapToKnot(const std::vector<double>& knots, double u, double tolerance) {
  for (double k : knots)
    if (std::fabs(k - u) <= tolerance) return k;
  return u;
}

}  // namespace

SplineData ExplicitSpline(const NurbsCurve& curve) {
  SplineData data;
  data.degree = curve.degree();
  data.knots = curve.Knots();
  data.control_points = curve.ControlPoints();
  data.weights = curve.Weights();
  return data;
}

SplineData SplinePiece(const SplineData& spline, double from, double to) {
  const int p = spline.degree;
  const size_t pu = static_cast<size_t>(p);
  std::vector<double> knots = spline.knots;
  std::vector<Homogeneous> points;
  for (size_t i = 0; i < spline.control_points.size(); ++i) {
    const double w = spline.weights.empty() ? 1.0 : spline.weights[i];
    points.push_back({spline.control_points[i] * w, w});
  }
  const double domain = knots[points.size()] - knots[pu];
  from = SnapToKnot(knots, from, 1e-12 * domain);
  to = SnapToKnot(knots, to, 1e-12 * domain);
  for (double u : {from, to})
    while (Multiplicity(knots, u) < pu) InsertKnot(p, knots, points, u);
  // With `from` of multiplicity >= p ending at index r, the curve passes through point r - p
  // there; with `to` starting at index s, through point s - 1.
  const size_t r = static_cast<size_t>(std::upper_bound(knots.begin(), knots.end(), from) - knots.begin()) - 1;
  const size_t s = static_cast<size_t>(std::lower_bound(knots.begin(), knots.end(), to) - knots.begin());
  SplineData piece;
  piece.degree = p;
  piece.knots.assign(pu + 1, from);
  for (size_t i = r + 1; i < s; ++i) piece.knots.push_back(knots[i]);
  piece.knots.insert(piece.knots.end(), pu + 1, to);
  for (size_t i = r - pu; i <= s - 1; ++i) {
    piece.control_points.push_back(points[i].wp / points[i].w);
    piece.weights.push_back(points[i].w);
  }
  return piece;
}

SplineData JoinSplines(const SplineData& first, const SplineData& second) {
  const size_t p = static_cast<size_t>(first.degree);
  SplineData joined = first;
  const double shift = first.knots.back() - second.knots.front();
  joined.knots.pop_back();  // the shared knot keeps multiplicity p: the curve meets itself there
  for (size_t i = p + 1; i < second.knots.size(); ++i) joined.knots.push_back(second.knots[i] + shift);
  const double scale = first.weights.back() / second.weights.front();
  for (size_t i = 1; i < second.control_points.size(); ++i) {
    joined.control_points.push_back(second.control_points[i]);
    joined.weights.push_back(second.weights[i] * scale);
  }
  return joined;
}

}  // namespace veltor::geom
