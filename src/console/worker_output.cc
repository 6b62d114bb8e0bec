#include "console/worker_output.h"

namespace veltor::console {

namespace {

template <typename Visit>
void EachLine(const std::string& text, Visit visit) {
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!visit(line)) return;
    start = end + 1;
  }
}

bool StartsWith(const std::string& s, const char* prefix) { return s.rfind(prefix, 0) == 0; }

}  // namespace

std::vector<std::string> ResultLines(const std::string& out) {
  std::vector<std::string> lines;
  EachLine(out, [&](const std::string& line) {
    if (StartsWith(line, "Selected:") || StartsWith(line, "Completed") || StartsWith(line, "Updated"))
      lines.push_back(line);
    return true;
  });
  return lines;
}

std::string FirstError(const std::string& out, const std::string& err) {
  std::string found;
  EachLine(err, [&](const std::string& line) {
    if (line.find_first_not_of(" \t") == std::string::npos || StartsWith(line, "veltor: warning:")) return true;
    found = line;
    return false;
  });
  if (!found.empty()) return found;
  EachLine(out, [&](const std::string& line) {
    if (!StartsWith(line, "Error")) return true;
    found = line;
    return false;
  });
  return found;
}

}  // namespace veltor::console
