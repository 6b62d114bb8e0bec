#include "arx/break_plan.h"

#include <cmath>
#include <utility>

namespace veltor::arx {

std::optional<BreakPlan> PlanBreak(bool closed, double start, double end, double a, double b) {
  const double eps = 1e-10 * (1.0 + std::fabs(end - start));
  if (closed) {
    if (std::fabs(a - b) <= eps) return BreakPlan{{a}, {0}, 1};  // opened there
    if (a < b) return BreakPlan{{a, b}, {1}, 2};  // piece 0 runs a..b and goes
    return BreakPlan{{b, a}, {0}, 2};             // piece 1 runs a round to b and goes
  }
  if (a > b) std::swap(a, b);
  bool from_start = a <= start + eps;
  bool to_end = b >= end - eps;
  if (std::fabs(a - b) <= eps) {
    if (from_start || to_end) return std::nullopt;  // a split at an end leaves it whole
    return BreakPlan{{a}, {0, 1}, 2};
  }
  if (from_start && to_end) return std::nullopt;  // nothing would be left
  if (from_start) return BreakPlan{{b}, {1}, 2};
  if (to_end) return BreakPlan{{a}, {0}, 2};
  return BreakPlan{{a, b}, {0, 2}, 3};
}

}  // namespace veltor::arx
