#include "console/batch_progress.h"

#include <cmath>
#include <cstdio>

namespace veltor::console {

namespace {

std::string Duration(double seconds) {
  long s = std::lround(seconds);
  if (s < 60) return std::to_string(s) + " s";
  if (s < 3600) return std::to_string(s / 60) + " min " + std::to_string(s % 60) + " s";
  return std::to_string(s / 3600) + " h " + std::to_string(s % 3600 / 60) + " min";
}

}  // namespace

std::string BatchProgressText(const BatchCounts& c, double elapsed_seconds) {
  std::string text = std::to_string(c.done) + " done, " + std::to_string(c.failed) + " failed, " +
                     std::to_string(c.left) + " left";
  size_t finished = c.done + c.failed;
  if (finished > 0 && c.left > 0)
    text += ", about " + Duration(elapsed_seconds / static_cast<double>(finished) * static_cast<double>(c.left)) +
            " to go";
  return text;
}

void BatchProgress::Show(const BatchCounts& counts, double elapsed_seconds) {
  if (!enabled_) return;
  std::fprintf(stderr, "\r\033[K%s", BatchProgressText(counts, elapsed_seconds).c_str());
  std::fflush(stderr);
  shown_ = true;
}

void BatchProgress::Clear() {
  if (!shown_) return;
  std::fputs("\r\033[K", stderr);
  std::fflush(stderr);
  shown_ = false;
}

}  // namespace veltor::console
