// printf-style formatting of the module's messages, always in the C locale's number format.
#pragma once

#include <string>

namespace veltor::od {

// Formats like snprintf ("%i", "%s", "%lu", "%.12lf", ...). The decimal separator is always
// ".": the process never leaves the C locale's LC_NUMERIC (front ends must not call
// setlocale(LC_ALL, "") without resetting LC_NUMERIC).
#if defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
std::string Format(const char* format, ...);

}  // namespace veltor::od
