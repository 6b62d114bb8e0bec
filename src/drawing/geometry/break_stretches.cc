#include "drawing/geometry/break_stretches.h"

#include <algorithm>
#include <cmath>

namespace veltor::geom {

Result<std::vector<Stretch>> RemainingStretches(double start, double end, bool closed, double a,
                                                double b, double tolerance) {
  const double period = end - start;
  if (closed) {
    if (std::fabs(a - b) <= tolerance) return std::vector<Stretch>{{a, a + period}};
    // The gap runs from a forward to b; what stays runs from b forward to a.
    return std::vector<Stretch>{{b, a < b ? a + period : a}};
  }
  const double low = std::min(a, b), high = std::max(a, b);
  const bool keeps_head = low - start > tolerance, keeps_tail = end - high > tolerance;
  std::vector<Stretch> kept;
  if (keeps_head) kept.push_back({start, high - low <= tolerance ? high : low});
  if (keeps_tail) kept.push_back({high - low <= tolerance && keeps_head ? kept.back().to : high, end});
  if (kept.empty()) return Status::Error("break: nothing would be left");
  if (kept.size() == 1 && high - low <= tolerance)
    return Status::Error("break: a point at the end of the object does not break it");
  return kept;
}

}  // namespace veltor::geom
