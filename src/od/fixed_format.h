// Fixed-notation formatting of a double with an exact decimal expansion, for toolchains whose
// standard library lacks the fixed-precision overload of std::to_chars for doubles (the Windows
// plug-in's toolset, before VS2019 16.2). Where the overload exists, the module uses it; both
// give the same text.
#pragma once

#include <string>

// 1 when std::to_chars formats a double with a given fixed precision (a build may set it to 0
// to run the exact expansion everywhere).
#ifndef VELTOR_HAS_FIXED_TO_CHARS
#if defined(_MSC_VER) && _MSC_VER < 1922
#define VELTOR_HAS_FIXED_TO_CHARS 0
#else
#define VELTOR_HAS_FIXED_TO_CHARS 1
#endif
#endif

namespace veltor::od {

// `number` with exactly `precision` (>= 0) decimals, correctly rounded from its exact binary
// value with ties to even, no point when `precision` is 0, "-" for every negative number
// (also -0.0 and one that rounds to zero). "nan", "-nan", "inf", "-inf" for those values.
std::string FormatFixedExact(double number, int precision);

}  // namespace veltor::od
