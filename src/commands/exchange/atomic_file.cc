#include "commands/exchange/atomic_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

namespace veltor::commands {

namespace {

namespace fs = std::filesystem;

// A name beside `target` that no file has yet.
fs::path TemporaryBeside(const fs::path& target) {
  std::random_device seed;
  std::mt19937 random(seed());
  for (;;) {
    fs::path candidate = target;
    candidate += ".tmp-" + std::to_string(random() % 1000000);
    std::error_code error;
    if (!fs::exists(candidate, error)) return candidate;
  }
}

}  // namespace

Status WriteFileAtomically(const std::string& path, const std::string& bytes) {
  const fs::path target(path);
  std::error_code error;
  if (fs::is_directory(target, error)) return Status::Error(path + ": is a folder");
  const fs::path temporary = TemporaryBeside(target);
  {
    errno = 0;
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (!out) {
      std::string reason = errno ? std::strerror(errno) : "cannot be created";
      return Status::Error(path + ": " + reason);
    }
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.flush();
    if (!out) {
      std::string reason = errno ? std::strerror(errno) : "write failed";
      out.close();
      fs::remove(temporary, error);
      return Status::Error(path + ": " + reason);
    }
  }
  fs::rename(temporary, target, error);
  if (error) {
    std::string reason = error.message();
    fs::remove(temporary, error);
    return Status::Error(path + ": " + reason);
  }
  return Status::Ok();
}

}  // namespace veltor::commands
