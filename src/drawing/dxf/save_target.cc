#include "drawing/dxf/save_target.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

namespace veltor::dxf {

namespace {

constexpr int kMaxLinks = 40;  // as the kernel's own limit on links followed in one lookup
const char kTemporaryInfix[] = ".tmp-";
constexpr size_t kTemporarySuffixLength = 6;  // mkstemp's XXXXXX

std::string DirectoryOf(const std::string& path) {
  size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string BaseNameOf(const std::string& path) {
  size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool EndsWith(const std::string& text, const std::string& suffix) {
  return text.size() >= suffix.size() &&
         text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

// The target of the symbolic link `link`, relative targets taken from the link's folder.
Result<std::string> ReadLink(const std::string& link) {
  std::vector<char> buffer(256);
  for (;;) {
    ssize_t n = readlink(link.c_str(), buffer.data(), buffer.size());
    if (n < 0) return Status::Error(link + ": cannot read the link: " + std::strerror(errno));
    if (static_cast<size_t>(n) < buffer.size()) {
      std::string target(buffer.data(), static_cast<size_t>(n));
      if (!target.empty() && target[0] == '/') return target;
      return DirectoryOf(link) + target;
    }
    buffer.resize(buffer.size() * 2);
  }
}

}  // namespace

std::string BackupPathFor(const std::string& path) {
  if (EndsWith(path, ".bak")) return path + ".bak";
  size_t slash = path.find_last_of('/');
  size_t name_start = slash == std::string::npos ? 0 : slash + 1;
  size_t dot = path.find_last_of('.');
  // A leading dot (".profile") starts a name, not an extension.
  if (dot == std::string::npos || dot <= name_start) return path + ".bak";
  return path.substr(0, dot) + ".bak";
}

Result<std::string> ResolveSaveTarget(const std::string& path) {
  std::string current = path;
  for (int followed = 0; followed <= kMaxLinks; ++followed) {
    struct stat st;
    if (lstat(current.c_str(), &st) != 0) {
      if (errno == ENOENT) return current;  // a new file (or a link to one not yet made)
      return Status::Error(path + ": " + std::strerror(errno));
    }
    if (S_ISLNK(st.st_mode)) {
      Result<std::string> next = ReadLink(current);
      if (!next.ok()) return next.status();
      current = std::move(next).value();
      continue;
    }
    // Only a file is replaced: renaming a folder to .bak would "succeed" and move it away.
    if (!S_ISREG(st.st_mode)) return Status::Error(path + ": not a regular file");
    if ((st.st_mode & S_IWUSR) == 0 || access(current.c_str(), W_OK) != 0)
      return Status::Error(path + ": the file is read-only; it was not replaced");
    return current;
  }
  return Status::Error(path + ": too many levels of symbolic links");
}

std::string TemporaryPattern(const std::string& target) {
  return target + kTemporaryInfix + std::string(kTemporarySuffixLength, 'X');
}

size_t RemoveStaleTemporaries(const std::string& target) {
  std::string folder = DirectoryOf(target);
  std::string prefix = BaseNameOf(target) + kTemporaryInfix;
  DIR* dir = opendir(folder.empty() ? "." : folder.c_str());
  if (!dir) return 0;
  std::vector<std::string> stale;
  while (dirent* entry = readdir(dir)) {
    std::string name = entry->d_name;
    if (name.size() == prefix.size() + kTemporarySuffixLength &&
        name.compare(0, prefix.size(), prefix) == 0)
      stale.push_back(folder + name);
  }
  closedir(dir);
  size_t removed = 0;
  for (const std::string& file : stale) {
    struct stat st;
    if (lstat(file.c_str(), &st) == 0 && S_ISREG(st.st_mode) && unlink(file.c_str()) == 0)
      ++removed;
  }
  return removed;
}

}  // namespace veltor::dxf
