#include "drawing/gis/output_target.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <vector>

namespace veltor::gis {

namespace fs = std::filesystem;

namespace {

// The files and folders in `folder` named `stem` or `stem.ANYTHING`.
std::vector<fs::path> NamedAfter(const std::string& folder, const std::string& stem) {
  std::vector<fs::path> found;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string name = it->path().filename().string();
    if (name == stem || (name.size() > stem.size() && name.compare(0, stem.size(), stem) == 0 &&
                         name[stem.size()] == '.'))
      found.push_back(it->path());
  }
  return found;
}

}  // namespace

Result<OutputTarget> OutputTarget::Prepare(const std::string& target) {
  if (target.empty()) return Status::Error("output: no file name given");
  fs::path path(target);
  OutputTarget t;
  t.target_ = target;
  t.folder_ = path.has_parent_path() ? path.parent_path().string() : ".";
  std::error_code ec;
  if (!fs::is_directory(t.folder_, ec))
    return Status::Error(target + ": the folder " + t.folder_ + " does not exist");
  t.stem_ = path.stem().string();
  t.temp_stem_ = t.stem_ + ".veltor-tmp-" + std::to_string(getpid());
  t.write_path_ = (fs::path(t.folder_) / (t.temp_stem_ + path.extension().string())).string();
  t.Discard();  // leftovers of an earlier process with the same id
  return t;
}

Status OutputTarget::Commit() {
  std::error_code ec;
  for (const fs::path& written : NamedAfter(folder_, temp_stem_)) {
    const std::string name = written.filename().string();
    const fs::path final_path = fs::path(folder_) / (stem_ + name.substr(temp_stem_.size()));
    // rename() replaces a file atomically; a folder in the way is moved aside first.
    if (fs::is_directory(final_path, ec)) {
      const fs::path old = final_path.string() + ".veltor-old-" + std::to_string(getpid());
      fs::rename(final_path, old, ec);
      if (ec) return Status::Error(final_path.string() + ": cannot be replaced: " + ec.message());
      fs::rename(written, final_path, ec);
      if (ec) {
        std::error_code ignored;
        fs::rename(old, final_path, ignored);
        return Status::Error(final_path.string() + ": cannot be written: " + ec.message());
      }
      fs::remove_all(old, ec);
      continue;
    }
    fs::rename(written, final_path, ec);
    if (ec) return Status::Error(final_path.string() + ": cannot be written: " + ec.message());
  }
  return Status::Ok();
}

void OutputTarget::Discard() {
  std::error_code ec;
  for (const fs::path& written : NamedAfter(folder_, temp_stem_)) fs::remove_all(written, ec);
}

}  // namespace veltor::gis
