// Where a break splits a curve and which pieces it keeps, in the curve's parameters. The host
// splits a curve at ascending parameters into pieces: an open curve into one more piece than
// parameters, a closed one into as many pieces as parameters (the last running round from the
// highest parameter to the lowest). Portable: no host header.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace veltor::arx {

struct BreakPlan {
  std::vector<double> params;  // ascending
  std::vector<size_t> kept;    // indexes of the pieces kept, the one that stays the entity first
  size_t pieces = 0;           // how many pieces the split gives
};

// The break between the curve's points at parameters `a` (first) and `b` (second) of a curve
// running from `start` to `end`: the part between them goes; on a closed curve the part from
// `a` forward to `b`. Equal parameters split the curve there. Nothing when the break would
// leave the curve whole or remove all of it.
std::optional<BreakPlan> PlanBreak(bool closed, double start, double end, double a, double b);

}  // namespace veltor::arx
