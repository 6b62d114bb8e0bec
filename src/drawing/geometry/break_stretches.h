// Which parts of a curve remain when the part between two positions is removed.
//
// A position is any parameter that grows along the curve from `start` to `end` (a polyline's
// segment index plus the fraction of that segment, an arc's angle, a spline's parameter).
#pragma once

#include <vector>

#include "od/status.h"

namespace veltor::geom {

// A remaining stretch from `from` to `to`. On a closed curve `to` may pass `end`: the stretch
// then runs on through the curve's start, so `to - (end - start)` is where it stops.
struct Stretch {
  double from = 0.0;
  double to = 0.0;
};

// The stretches left when the part between positions `a` and `b` goes:
//  - open curve: the part between min(a, b) and max(a, b) goes; what remains before and
//    after it is kept (one stretch when a position is at an end). Equal positions (within
//    `tolerance`) split the curve there without a gap.
//  - closed curve: the part from `a` forward to `b` goes and the rest is one stretch from `b`
//    to `a`; equal positions open the curve at `a`.
// Fails with "break: nothing would be left" when the two positions are the curve's two ends,
// and with "break: a point at the end of the object does not break it" when an open curve
// would be split at one of its ends.
Result<std::vector<Stretch>> RemainingStretches(double start, double end, bool closed, double a,
                                                double b, double tolerance);

}  // namespace veltor::geom
