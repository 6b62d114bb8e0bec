#include "drawing/geometry/nurbs.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "drawing/geometry/integrate.h"

namespace veltor::geom {

namespace {

Status Fail(const std::string& reason) { return Status::Error("spline: " + reason); }

// Clamped uniform knots for n control points of degree p.
std::vector<double> ClampedUniformKnots(size_t n, int p) {
  std::vector<double> knots;
  const size_t interior = n - static_cast<size_t>(p) - 1;
  for (int i = 0; i <= p; ++i) knots.push_back(0.0);
  for (size_t i = 1; i <= interior; ++i) knots.push_back(static_cast<double>(i));
  for (int i = 0; i <= p; ++i) knots.push_back(static_cast<double>(interior + 1));
  return knots;
}

// Value of the i-th B-spline basis function of degree p at t (Cox-de Boor). Used only to
// fill the interpolation matrix, so clarity beats speed. At the last knot the last basis
// function is 1.
double Basis(const std::vector<double>& u, size_t i, int p, double t) {
  if (p == 0) {
    if (u[i] <= t && t < u[i + 1]) return 1.0;
    return (t == u.back() && u[i] < t && t == u[i + 1]) ? 1.0 : 0.0;
  }
  double value = 0.0;
  const size_t ip = i + static_cast<size_t>(p);
  if (u[ip] > u[i]) value += (t - u[i]) / (u[ip] - u[i]) * Basis(u, i, p - 1, t);
  if (u[ip + 1] > u[i + 1]) {
    value += (u[ip + 1] - t) / (u[ip + 1] - u[i + 1]) * Basis(u, i + 1, p - 1, t);
  }
  return value;
}

// Global interpolation through fit points: chord-length parameters, knots by averaging,
// then the banded system N * P = Q solved by Gaussian elimination without pivoting (the
// collocation matrix is totally positive, for which this is stable).
Result<SplineData> InterpolateFitPoints(const SplineData& in) {
  std::vector<Vec3> q = in.fit_points;
  if (in.closed && q.size() >= 2 && q.front() != q.back()) q.push_back(q.front());
  const size_t n = q.size();
  if (n < 2) return Fail("fewer than 2 fit points and no control points");
  const int p = static_cast<int>(std::min<size_t>(static_cast<size_t>(in.degree), n - 1));
  std::vector<double> params(n, 0.0);
  double total = 0.0;
  for (size_t i = 1; i < n; ++i) total += Distance(q[i], q[i - 1]);
  if (total == 0.0) return Fail("fit points are all equal");
  for (size_t i = 1; i < n; ++i) params[i] = params[i - 1] + Distance(q[i], q[i - 1]) / total;
  params[n - 1] = 1.0;

  std::vector<double> knots(n + static_cast<size_t>(p) + 1, 0.0);
  for (size_t j = 1; j + static_cast<size_t>(p) < n; ++j) {
    double sum = 0.0;
    for (size_t i = j; i < j + static_cast<size_t>(p); ++i) sum += params[i];
    knots[j + static_cast<size_t>(p)] = sum / p;
  }
  for (size_t i = n; i < knots.size(); ++i) knots[i] = 1.0;

  // Band storage: row i keeps columns i - p .. i + p at offset (col - i + p).
  const size_t width = 2 * static_cast<size_t>(p) + 1;
  std::vector<double> band(n * width, 0.0);
  auto at = [&](size_t r, size_t c) -> double& { return band[r * width + (c + p - r)]; };
  auto in_band = [&](size_t r, size_t c) {
    return c + static_cast<size_t>(p) >= r && c <= r + static_cast<size_t>(p) && c < n;
  };
  for (size_t r = 0; r < n; ++r) {
    for (size_t c = (r > static_cast<size_t>(p) ? r - p : 0); c < n && in_band(r, c); ++c) {
      at(r, c) = Basis(knots, c, p, params[r]);
    }
  }
  for (size_t k = 0; k < n; ++k) {
    const double pivot = at(k, k);
    if (std::fabs(pivot) < 1e-14) return Fail("fit points give a singular interpolation");
    for (size_t r = k + 1; r < n && in_band(r, k); ++r) {
      const double f = at(r, k) / pivot;
      if (f == 0.0) continue;
      for (size_t c = k; c < n && in_band(k, c); ++c) at(r, c) -= f * at(k, c);
      q[r] -= q[k] * f;
    }
  }
  std::vector<Vec3> ctrl(n);
  for (size_t k = n; k-- > 0;) {
    Vec3 sum = q[k];
    for (size_t c = k + 1; c < n && in_band(k, c); ++c) sum -= ctrl[c] * at(k, c);
    ctrl[k] = sum / at(k, k);
  }
  SplineData out;
  out.degree = p;
  out.knots = std::move(knots);
  out.control_points = std::move(ctrl);
  return out;
}

}  // namespace

Result<NurbsCurve> NurbsCurve::Make(const SplineData& input) {
  if (input.degree < 1) return Fail("degree " + std::to_string(input.degree) + " is below 1");
  SplineData data = input;
  if (data.control_points.empty()) {
    if (!data.weights.empty()) return Fail("weights without control points");
    Result<SplineData> fitted = InterpolateFitPoints(input);
    if (!fitted.ok()) return fitted.status();
    data = std::move(fitted.value());
  }
  const int p = data.degree;
  const size_t pu = static_cast<size_t>(p);
  if (!data.weights.empty() && data.weights.size() != data.control_points.size()) {
    return Fail(std::to_string(data.weights.size()) + " weights for " +
                std::to_string(data.control_points.size()) + " control points");
  }
  for (double w : data.weights) {
    if (!(w > 0.0) || !std::isfinite(w)) {
      return Fail("weight " + std::to_string(w) + " is not positive");
    }
  }
  size_t n = data.control_points.size();
  if (n < pu + 1) {
    return Fail(std::to_string(n) + " control points for degree " + std::to_string(p));
  }
  if (data.knots.empty()) {
    data.knots = ClampedUniformKnots(n, p);
  } else if ((data.closed || data.periodic) && data.knots.size() == n + 1 &&
             data.knots.size() != n + pu + 1) {
    // One period given: wrap the control points and extend the knots periodically.
    const double period = data.knots[n] - data.knots[0];
    std::vector<double> knots;
    for (int i = -p; i <= static_cast<int>(n) + p; ++i) {
      const int nn = static_cast<int>(n);
      const int wrap = (i < 0) ? -1 : (i >= nn ? 1 : 0);
      knots.push_back(data.knots[static_cast<size_t>(i - wrap * nn)] + wrap * period);
    }
    for (size_t i = 0; i < pu; ++i) {
      data.control_points.push_back(data.control_points[i]);
      if (!data.weights.empty()) data.weights.push_back(data.weights[i]);
    }
    data.knots = std::move(knots);
    n = data.control_points.size();
  }
  if (data.knots.size() != n + pu + 1) {
    return Fail(std::to_string(data.knots.size()) + " knots for " + std::to_string(n) +
                " control points of degree " + std::to_string(p) + " (need " +
                std::to_string(n + pu + 1) + ")");
  }
  for (size_t i = 0; i < data.knots.size(); ++i) {
    if (!std::isfinite(data.knots[i])) return Fail("knot is not a number");
    if (i > 0 && data.knots[i] < data.knots[i - 1]) return Fail("knots decrease");
  }
  if (!(data.knots[pu] < data.knots[n])) return Fail("empty parameter range");

  NurbsCurve curve;
  curve.degree_ = p;
  curve.knots_ = std::move(data.knots);
  curve.hom_.resize(n);
  for (size_t i = 0; i < n; ++i) {
    const double w = data.weights.empty() ? 1.0 : data.weights[i];
    curve.hom_[i] = {data.control_points[i] * w, w};
  }
  curve.BuildDerivative();
  return curve;
}

void NurbsCurve::BuildDerivative() {
  // Q_i = p (P_{i+1} - P_i) / (u_{i+p+1} - u_{i+1}) for the homogeneous points.
  dhom_.assign(hom_.size() - 1, Homogeneous{Vec3(), 0.0});
  for (size_t i = 0; i + 1 < hom_.size(); ++i) {
    const double du = knots_[i + degree_ + 1] - knots_[i + 1];
    if (du <= 0.0) continue;
    const double f = degree_ / du;
    dhom_[i] = {(hom_[i + 1].wp - hom_[i].wp) * f, (hom_[i + 1].w - hom_[i].w) * f};
  }
}

std::vector<double> NurbsCurve::SpanBreaks() const {
  std::vector<double> breaks;
  for (size_t i = static_cast<size_t>(degree_); i <= hom_.size(); ++i) {
    if (breaks.empty() || knots_[i] > breaks.back()) breaks.push_back(knots_[i]);
  }
  return breaks;
}

size_t NurbsCurve::SpanIndex(double t) const {
  const size_t p = static_cast<size_t>(degree_), n = hom_.size();
  // Last k in [p, n-1] with knots[k] <= t, then stepped back off empty spans.
  auto it = std::upper_bound(knots_.begin() + p, knots_.begin() + n, t);
  size_t k = static_cast<size_t>(it - knots_.begin());
  k = (k == p) ? p : k - 1;
  while (k > p && knots_[k] == knots_[k + 1]) --k;
  return k;
}

NurbsCurve::Homogeneous NurbsCurve::Eval(const std::vector<Homogeneous>& ctrl,
                                         const double* u, int p, size_t span, double t) const {
  // de Boor: d_j = P_{span-p+j}, then p rounds of knot-ratio blending.
  Homogeneous d[32];
  std::vector<Homogeneous> big;
  Homogeneous* dp = d;
  if (p + 1 > 32) {
    big.resize(static_cast<size_t>(p) + 1);
    dp = big.data();
  }
  const size_t first = span - static_cast<size_t>(p);
  for (int j = 0; j <= p; ++j) dp[j] = ctrl[first + static_cast<size_t>(j)];
  for (int r = 1; r <= p; ++r) {
    for (int j = p; j >= r; --j) {
      const double lo = u[first + static_cast<size_t>(j)];
      const double hi = u[first + static_cast<size_t>(j + 1 + p - r)];
      const double a = hi > lo ? (t - lo) / (hi - lo) : 0.0;
      dp[j].wp = dp[j - 1].wp * (1.0 - a) + dp[j].wp * a;
      dp[j].w = dp[j - 1].w * (1.0 - a) + dp[j].w * a;
    }
  }
  return dp[p];
}

Vec3 NurbsCurve::PointAt(double t) const {
  t = std::clamp(t, StartParam(), EndParam());
  const Homogeneous h = Eval(hom_, knots_.data(), degree_, SpanIndex(t), t);
  return h.wp / h.w;
}

Vec3 NurbsCurve::DerivativeAt(double t) const {
  t = std::clamp(t, StartParam(), EndParam());
  const size_t span = SpanIndex(t);
  const Homogeneous h = Eval(hom_, knots_.data(), degree_, span, t);
  // The hodograph lives on knots_[1..], where the same t sits in span - 1.
  const Homogeneous dh = Eval(dhom_, knots_.data() + 1, degree_ - 1, span - 1, t);
  const Vec3 point = h.wp / h.w;
  return (dh.wp - point * dh.w) / h.w;
}

bool NurbsCurve::IsClosed() const {
  Extents box;
  for (const Homogeneous& h : hom_) box.Add(h.wp / h.w);
  const double size = box.Size().Length();
  return Distance(PointAt(StartParam()), PointAt(EndParam())) <= 1e-10 * std::max(size, 1e-300);
}

Extents NurbsCurve::SpanControlBox(double t) const {
  const size_t span = SpanIndex(std::clamp(t, StartParam(), EndParam()));
  Extents box;
  for (size_t i = span - static_cast<size_t>(degree_); i <= span; ++i) box.Add(hom_[i].wp / hom_[i].w);
  return box;
}

std::vector<Vec3> NurbsCurve::ControlPoints() const {
  std::vector<Vec3> points;
  points.reserve(hom_.size());
  for (const Homogeneous& h : hom_) points.push_back(h.wp / h.w);
  return points;
}

std::vector<double> NurbsCurve::Weights() const {
  std::vector<double> weights;
  weights.reserve(hom_.size());
  for (const Homogeneous& h : hom_) weights.push_back(h.w);
  return weights;
}

NurbsCurve NurbsCurve::Transformed(const Matrix3d& m) const {
  NurbsCurve out = *this;
  for (Homogeneous& h : out.hom_) h.wp = m.Apply(h.wp / h.w) * h.w;
  out.BuildDerivative();
  return out;
}

double LengthOf(const NurbsCurve& c) {
  const std::vector<Vec3> ctrl = c.ControlPoints();
  double polygon = 0.0;
  for (size_t i = 1; i < ctrl.size(); ++i) polygon += Distance(ctrl[i], ctrl[i - 1]);
  const std::vector<double> breaks = c.SpanBreaks();
  const double tol = 1e-11 * polygon / static_cast<double>(breaks.size());
  double total = 0.0;
  for (size_t i = 1; i < breaks.size(); ++i) {
    total += IntegrateAdaptive([&c](double t) { return c.DerivativeAt(t).Length(); },
                               breaks[i - 1], breaks[i], tol);
  }
  return total;
}

namespace {

// A root of the axis coordinate's derivative between lo and hi, where it has the signs of
// dlo and dhi (opposite), to within tol: regula falsi with the Illinois step, which keeps
// both ends of the bracket moving and converges in a handful of steps on smooth pieces.
double DerivativeRoot(const NurbsCurve& c, int axis, double lo, double dlo, double hi, double dhi,
                      double tol) {
  double root = lo;
  int kept = 0;  // +1: lo was kept last time, -1: hi was
  for (int it = 0; it < 100 && hi - lo > tol; ++it) {
    root = (lo * dhi - hi * dlo) / (dhi - dlo);
    if (!(root > lo && root < hi)) root = 0.5 * (lo + hi);
    const double d = c.DerivativeAt(root)[axis];
    if (d == 0.0) return root;
    if ((d > 0.0) == (dhi > 0.0)) {
      hi = root;
      dhi = d;
      if (kept == 1) dlo *= 0.5;
      kept = 1;
    } else {
      lo = root;
      dlo = d;
      if (kept == -1) dhi *= 0.5;
      kept = -1;
    }
  }
  return hi - lo <= tol ? 0.5 * (lo + hi) : root;
}

}  // namespace

Extents BoundsOf(const NurbsCurve& c) {
  Extents box;
  const std::vector<double> breaks = c.SpanBreaks();
  for (double t : breaks) box.Add(c.PointAt(t));
  const int samples = std::max(16, 4 * (c.degree() + 1));
  std::vector<double> ts(static_cast<size_t>(samples) + 1);
  std::vector<Vec3> ds(ts.size());
  for (size_t s = 1; s < breaks.size(); ++s) {
    const double a = breaks[s - 1], b = breaks[s];
    const Extents hull = c.SpanControlBox(0.5 * (a + b));
    bool widens[3];
    for (int axis = 0; axis < 3; ++axis)
      widens[axis] = hull.min()[axis] < box.min()[axis] || hull.max()[axis] > box.max()[axis];
    if (!widens[0] && !widens[1] && !widens[2]) continue;
    // Samples of the derivative, slightly inside the span so that each lies in this span's
    // polynomial piece (the derivative may jump at a knot).
    for (int k = 0; k <= samples; ++k) {
      const double f = static_cast<double>(k) / samples;
      ts[static_cast<size_t>(k)] = a + (b - a) * std::clamp(f, 1e-12, 1.0 - 1e-12);
      ds[static_cast<size_t>(k)] = c.DerivativeAt(ts[static_cast<size_t>(k)]);
    }
    for (int axis = 0; axis < 3; ++axis) {
      if (!widens[axis]) continue;
      for (size_t k = 1; k < ts.size(); ++k) {
        const double dlo = ds[k - 1][axis], dhi = ds[k][axis];
        if (dlo == 0.0) { box.Add(c.PointAt(ts[k - 1])); continue; }
        if ((dlo > 0.0) == (dhi > 0.0) || dhi == 0.0) continue;
        box.Add(c.PointAt(DerivativeRoot(c, axis, ts[k - 1], dlo, ts[k], dhi, 1e-10 * (b - a))));
      }
      if (ds.back()[axis] == 0.0) box.Add(c.PointAt(ts.back()));
    }
  }
  return box;
}

}  // namespace veltor::geom
