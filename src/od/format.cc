#include "od/format.h"

#include <cstdarg>
#include <cstdio>
#include <vector>

namespace veltor::od {

std::string Format(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list copy;
  va_copy(copy, args);
  char small[256];
  int needed = std::vsnprintf(small, sizeof small, format, args);
  va_end(args);
  std::string out;
  if (needed < 0) {
    va_end(copy);
    return out;
  }
  if (static_cast<size_t>(needed) < sizeof small) {
    out.assign(small, static_cast<size_t>(needed));
  } else {
    std::vector<char> big(static_cast<size_t>(needed) + 1);
    std::vsnprintf(big.data(), big.size(), format, copy);
    out.assign(big.data(), static_cast<size_t>(needed));
  }
  va_end(copy);
  return out;
}

}  // namespace veltor::od
