#include "arx/alias_paths.h"

#include "od/text.h"

namespace veltor::arx {

namespace {

std::string Normalized(const std::string& path) {
  std::string out = od::ToLowerUnicode(path);
  for (char& c : out)
    if (c == '\\') c = '/';
  return out;
}

}  // namespace

std::string AliasPathOf(const std::string& path) {
  size_t colon = path.find(':');
  if (colon != std::string::npos) return path.substr(0, colon + 1);
  if (!path.empty() && path[0] == '/') return "/";
  return "";
}

std::optional<std::string> ThroughAlias(const std::string& path,
                                        const std::vector<od::DriveAlias>& aliases) {
  std::string full = Normalized(path);
  const od::DriveAlias* best = nullptr;
  size_t best_length = 0;
  for (const od::DriveAlias& alias : aliases) {
    std::string prefix = Normalized(alias.path);
    if (prefix.empty() || prefix.size() > full.size() || full.compare(0, prefix.size(), prefix) != 0)
      continue;
    // The alias must end at a separator of the path, not inside a name ("D:/da" of "D:/data").
    bool at_boundary = prefix.size() == full.size() || prefix.back() == '/' ||
                       prefix.back() == ':' || full[prefix.size()] == '/';
    if (at_boundary && prefix.size() > best_length) {
      best = &alias;
      best_length = prefix.size();
    }
  }
  if (!best) return std::nullopt;
  std::string rest = path.substr(best_length);
  if (!rest.empty() && rest[0] != '\\' && rest[0] != '/') rest = "\\" + rest;
  return best->name + ":" + rest;
}

}  // namespace veltor::arx
