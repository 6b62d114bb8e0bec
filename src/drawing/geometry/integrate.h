// Adaptive Gauss-Legendre quadrature for smooth integrands (curve lengths).
#pragma once

#include <cmath>

namespace veltor::geom {

namespace integrate_detail {

// 5-point Gauss-Legendre on [a, b]: exact for polynomials up to degree 9.
template <typename F>
double GaussLegendre5(const F& f, double a, double b) {
  static constexpr double kNode[3] = {0.0, 0.5384693101056831, 0.9061798459386640};
  static constexpr double kWeight[3] = {0.5688888888888889, 0.4786286704993665,
                                        0.2369268850561891};
  const double mid = 0.5 * (a + b), half = 0.5 * (b - a);
  double sum = kWeight[0] * f(mid);
  for (int i = 1; i < 3; ++i) {
    sum += kWeight[i] * (f(mid - half * kNode[i]) + f(mid + half * kNode[i]));
  }
  return sum * half;
}

template <typename F>
double Adaptive(const F& f, double a, double b, double whole, double tol, int depth) {
  const double mid = 0.5 * (a + b);
  const double left = GaussLegendre5(f, a, mid);
  const double right = GaussLegendre5(f, mid, b);
  const double split = left + right;
  if (depth <= 0 || std::fabs(split - whole) <= tol) return split;
  return Adaptive(f, a, mid, left, 0.5 * tol, depth - 1) +
         Adaptive(f, mid, b, right, 0.5 * tol, depth - 1);
}

}  // namespace integrate_detail

// Integral of f over [a, b]. The interval is halved until the two halves agree with the whole
// to within abs_tol (shared between halves), down to 2^-max_depth of the interval. For the
// smooth speed functions of conics and splines this reaches abs_tol in a few levels; the
// error actually left is usually far below abs_tol because each accepted piece is a
// degree-9-exact rule compared against a finer one.
template <typename F>
double IntegrateAdaptive(const F& f, double a, double b, double abs_tol, int max_depth = 24) {
  if (!(b > a)) return 0.0;
  return integrate_detail::Adaptive(f, a, b, integrate_detail::GaussLegendre5(f, a, b), abs_tol,
                                    max_depth);
}

}  // namespace veltor::geom
