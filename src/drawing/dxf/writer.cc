#include "drawing/dxf/writer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "drawing/dxf/binary_values.h"

namespace veltor::dxf {

namespace {

class Sink {
 public:
  explicit Sink(std::FILE* out) : out_(out) {}
  void Put(const char* data, size_t n) {
    if (n > 0 && std::fwrite(data, 1, n, out_) != n) failed_ = true;
  }
  void Put(const std::string& s) { Put(s.data(), s.size()); }
  bool failed() const { return failed_ || std::ferror(out_) != 0; }

 private:
  std::FILE* out_;
  bool failed_ = false;
};

void AppendAsciiTag(const Tag& tag, const FileFormat& format, std::string& out) {
  std::string code = std::to_string(tag.code);
  if (format.right_aligned_codes && code.size() < 3) out.append(3 - code.size(), ' ');
  out += code;
  out += format.crlf ? "\r\n" : "\n";
  out += tag.value;
  out += format.crlf ? "\r\n" : "\n";
}

}  // namespace

Status WriteDxf(const RecordStore& store, std::FILE* out) {
  Sink sink(out);
  const FileFormat& format = store.format();
  sink.Put(store.prefix);
  std::string buffer;
  for (RecordId id = store.first(); id != kNoRecord; id = store.at(id).next) {
    const Record& r = store.at(id);
    if (!r.tags) {
      sink.Put(store.source().data() + r.begin, static_cast<size_t>(r.end - r.begin));
      continue;
    }
    buffer.clear();
    for (const Tag& tag : *r.tags) {
      if (format.binary) {
        if (!AppendBinaryTag(tag, format.binary_one_byte_codes, buffer))
          return Status::Error("record " + FormatHandle(r.handle) + ": value '" + tag.value +
                               "' cannot be written as group code " + std::to_string(tag.code));
      } else {
        AppendAsciiTag(tag, format, buffer);
      }
    }
    sink.Put(buffer);
  }
  sink.Put(store.trailer);
  if (sink.failed()) return Status::Error(std::string("write failed: ") + std::strerror(errno));
  return Status::Ok();
}

std::string BackupPathFor(const std::string& path) {
  size_t slash = path.find_last_of('/');
  size_t dot = path.find_last_of('.');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return path + ".bak";
  return path.substr(0, dot) + ".bak";
}

Status SaveDxfAtomic(const RecordStore& store, const std::string& path) {
  // Only a file is replaced: renaming a folder to .bak would "succeed" and move it away.
  struct stat target;
  if (stat(path.c_str(), &target) == 0 && !S_ISREG(target.st_mode))
    return Status::Error(path + ": not a regular file");
  std::string tmp = path + ".tmp-XXXXXX";
  std::vector<char> name(tmp.begin(), tmp.end());
  name.push_back('\0');
  int fd = mkstemp(name.data());
  if (fd < 0) return Status::Error(path + ": cannot create a temporary file: " + std::strerror(errno));
  std::string tmp_path(name.data());
  std::FILE* f = fdopen(fd, "wb");
  if (!f) {
    close(fd);
    unlink(tmp_path.c_str());
    return Status::Error(path + ": cannot write: " + std::strerror(errno));
  }
  std::setvbuf(f, nullptr, _IOFBF, 1 << 20);
  Status written = WriteDxf(store, f);
  bool flushed = std::fflush(f) == 0 && fsync(fileno(f)) == 0;
  bool closed = std::fclose(f) == 0;
  if (!written.ok() || !flushed || !closed) {
    unlink(tmp_path.c_str());
    if (!written.ok()) return written.Wrap(path);
    return Status::Error(path + ": cannot write: " + std::strerror(errno));
  }
  // New files get the usual permissions rather than mkstemp's 0600.
  struct stat st;
  mode_t mode = 0644;
  bool had_target = stat(path.c_str(), &st) == 0;
  if (had_target) mode = st.st_mode & 07777;
  chmod(tmp_path.c_str(), mode);
  if (had_target) {
    std::string bak = BackupPathFor(path);
    unlink(bak.c_str());
    if (link(path.c_str(), bak.c_str()) != 0 && rename(path.c_str(), bak.c_str()) != 0) {
      unlink(tmp_path.c_str());
      return Status::Error(path + ": cannot keep the previous file as " + bak + ": " +
                           std::strerror(errno));
    }
  }
  if (rename(tmp_path.c_str(), path.c_str()) != 0) {
    int err = errno;
    unlink(tmp_path.c_str());
    return Status::Error(path + ": cannot replace the file: " + std::strerror(err));
  }
  return Status::Ok();
}

}  // namespace veltor::dxf
