#include "drawing/geometry/conic.h"

#include <cmath>

#include "drawing/geometry/integrate.h"
#include "drawing/geometry/ocs.h"

namespace veltor::geom {

namespace {

constexpr double kAngleEps = 1e-12;

double Deg2Rad(double deg) { return deg * kPi / 180.0; }

}  // namespace

bool ConicArc::IsClosed() const { return sweep >= kTwoPi - kAngleEps; }

Vec3 ConicArc::PointAt(double t) const { return center + u * std::cos(t) + v * std::sin(t); }

Vec3 ConicArc::DerivativeAt(double t) const { return v * std::cos(t) - u * std::sin(t); }

bool ConicArc::ContainsParam(double t) const {
  if (IsClosed()) return true;
  double d = std::fmod(t - start, kTwoPi);
  if (d < 0.0) d += kTwoPi;
  return d <= sweep + kAngleEps || d >= kTwoPi - kAngleEps;
}

bool ConicArc::IsCircular() const {
  const double lu = u.Length(), lv = v.Length();
  const double scale = std::max(lu, lv);
  if (scale == 0.0) return true;
  return std::fabs(lu - lv) <= 1e-12 * scale && std::fabs(u.Dot(v)) <= 1e-12 * scale * scale;
}

ConicArc ConicArc::Transformed(const Matrix3d& m) const {
  ConicArc out = *this;
  out.center = m.Apply(center);
  out.u = m.ApplyVector(u);
  out.v = m.ApplyVector(v);
  return out;
}

double SweepBetween(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep < 0.0) sweep += kTwoPi;
  if (sweep <= kAngleEps) sweep = kTwoPi;
  return sweep;
}

ConicArc ToConic(const Circle& c) {
  const OcsAxes axes = ArbitraryAxes(c.normal);
  ConicArc out;
  out.center = OcsToWcs(c.normal).Apply(c.center);
  out.u = axes.x * c.radius;
  out.v = axes.y * c.radius;
  return out;
}

ConicArc ToConic(const Arc& a) {
  ConicArc out = ToConic(Circle{a.center, a.radius, a.normal});
  out.start = Deg2Rad(a.start_deg);
  out.sweep = SweepBetween(out.start, Deg2Rad(a.end_deg));
  return out;
}

ConicArc ToConic(const Ellipse& e) {
  ConicArc out;
  out.center = e.center;
  out.u = e.major_axis;
  const Vec3 n = ArbitraryAxes(e.normal).z;
  out.v = n.Cross(e.major_axis) * e.ratio;
  out.start = e.start_param;
  out.sweep = SweepBetween(e.start_param, e.end_param);
  return out;
}

double LengthOf(const ConicArc& c) {
  if (c.IsCircular()) return c.u.Length() * c.sweep;
  const double tol = 1e-11 * (c.u.Length() + c.v.Length());
  return IntegrateAdaptive([&c](double t) { return c.DerivativeAt(t).Length(); }, c.start,
                           c.start + c.sweep, tol);
}

double LengthOf(const Circle& c) { return kTwoPi * std::fabs(c.radius); }
double LengthOf(const Arc& a) { return LengthOf(ToConic(a)); }
double LengthOf(const Ellipse& e) { return LengthOf(ToConic(e)); }

Extents BoundsOf(const ConicArc& c) {
  Extents box;
  const bool closed = c.IsClosed();
  if (!closed) {
    box.Add(c.StartPoint());
    box.Add(c.EndPoint());
  }
  for (int i = 0; i < 3; ++i) {
    const double ui = c.u[i], vi = c.v[i];
    const double amplitude = std::hypot(ui, vi);
    if (amplitude == 0.0) {
      // This coordinate is constant along the curve.
      if (closed) box.Add(c.center);
      continue;
    }
    const double t_max = std::atan2(vi, ui);
    for (double t : {t_max, t_max + kPi}) {
      if (!c.ContainsParam(t)) continue;
      // Add only the extreme coordinate; others come from their own extremes or end points.
      Vec3 p = c.PointAt(t);
      // Evaluate the extreme directly for full accuracy: c_i +/- amplitude.
      p[i] = c.center[i] + (t == t_max ? amplitude : -amplitude);
      box.Add(p);
    }
  }
  return box;
}

Extents BoundsOf(const Circle& c) { return BoundsOf(ToConic(c)); }
Extents BoundsOf(const Arc& a) { return BoundsOf(ToConic(a)); }
Extents BoundsOf(const Ellipse& e) { return BoundsOf(ToConic(e)); }

}  // namespace veltor::geom
