#include "drawing/dxf/writer.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

#include "drawing/dxf/tag_encoding.h"
#include "drawing/dxf/save_target.h"

namespace veltor::dxf {

namespace {

class Sink {
 public:
  explicit Sink(std::FILE* out) : out_(out) {}
  void Put(const char* data, size_t n) {
    if (failed_ || n == 0) return;
    at_line_start_ = data[n - 1] == '\n';
    if (std::fwrite(data, 1, n, out_) != n) {
      failed_ = true;
      error_ = errno;
    }
  }
  void Put(std::string_view s) { Put(s.data(), s.size()); }
  // Ends the line when what was written last does not: a file whose last line had no line
  // break gets one before anything is written after it.
  void EndLine() {
    if (!at_line_start_) Put("\n", 1);
  }
  bool failed() const { return failed_ || std::ferror(out_) != 0; }
  // The reason of the first failed write (errno is overwritten by what follows it).
  int error() const { return error_ != 0 ? error_ : EIO; }

 private:
  std::FILE* out_;
  bool failed_ = false;
  int error_ = 0;
  bool at_line_start_ = true;  // nothing written yet, or a line break last
};

}  // namespace

Status WriteDxf(const RecordStore& store, std::FILE* out) {
  Sink sink(out);
  const FileFormat& format = store.format();
  sink.Put(store.prefix);
  std::string buffer;
  for (RecordId id = store.first(); id != kNoRecord; id = store.at(id).next) {
    const Record& r = store.at(id);
    if (!r.tags) {
      sink.Put(store.RecordBytes(r));
      continue;
    }
    buffer.clear();
    for (const Tag& tag : *r.tags) {
      // An ASCII value with a line break is written as it stands (the reader will split it).
      if (!AppendTag(tag, format, buffer) && format.binary)
        return Status::Error("record " + FormatHandle(r.handle) + ": value '" + tag.value +
                             "' cannot be written as group code " + std::to_string(tag.code));
    }
    sink.Put(buffer);
  }
  if (store.append_eof) {
    if (!format.binary) sink.EndLine();
    buffer.clear();
    (void)AppendTag(Tag{0, "EOF"}, format, buffer);  // always writable
    sink.Put(buffer);
  }
  sink.Put(store.trailer);
  if (sink.failed()) return Status::Error(std::string("write failed: ") + std::strerror(sink.error()));
  return Status::Ok();
}

namespace {

// Ignores SIGXFSZ while it lives, so that a write past the file-size limit fails with EFBIG
// (reported like any write error) instead of killing the process.
class FileSizeSignalIgnored {
 public:
  FileSizeSignalIgnored() {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigemptyset(&ignore.sa_mask);
    restore_ = sigaction(SIGXFSZ, &ignore, &previous_) == 0;
  }
  ~FileSizeSignalIgnored() {
    if (restore_) sigaction(SIGXFSZ, &previous_, nullptr);
  }
  FileSizeSignalIgnored(const FileSizeSignalIgnored&) = delete;
  FileSizeSignalIgnored& operator=(const FileSizeSignalIgnored&) = delete;

 private:
  struct sigaction previous_ {};
  bool restore_ = false;
};

std::string ErrorText(int err) { return std::strerror(err); }

// Writes the whole store to a new temporary file beside `target` and flushes it to disk.
// Returns its name; on failure nothing is left behind.
Result<std::string> WriteTemporary(const RecordStore& store, const std::string& target,
                                   const std::string& shown) {
  std::string pattern = TemporaryPattern(target);
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  int fd = mkstemp(name.data());
  if (fd < 0) return Status::Error(shown + ": cannot create a temporary file: " + ErrorText(errno));
  std::string tmp(name.data());
  std::FILE* f = fdopen(fd, "wb");
  if (!f) {
    int err = errno;
    close(fd);
    unlink(tmp.c_str());
    return Status::Error(shown + ": cannot write: " + ErrorText(err));
  }
  std::setvbuf(f, nullptr, _IOFBF, 1 << 20);
  FileSizeSignalIgnored no_sigxfsz;
  Status written = WriteDxf(store, f);
  int err = 0;
  if (std::fflush(f) != 0 || fsync(fileno(f)) != 0) err = errno;
  if (std::fclose(f) != 0 && err == 0) err = errno;
  if (!written.ok() || err != 0) {
    unlink(tmp.c_str());
    if (!written.ok()) return written.Wrap(shown);
    return Status::Error(shown + ": cannot write: " + ErrorText(err));
  }
  return tmp;
}

// Reserves a fresh name beside `target` (an empty file matching the temporary pattern, so a
// save killed later leaves nothing that the next save would not remove).
Result<std::string> ReserveName(const std::string& target, const std::string& shown) {
  std::string pattern = TemporaryPattern(target);
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  int fd = mkstemp(name.data());
  if (fd < 0) return Status::Error(shown + ": cannot create a temporary file: " + ErrorText(errno));
  close(fd);
  return std::string(name.data());
}

bool Exists(const std::string& path) {
  struct stat st;
  return lstat(path.c_str(), &st) == 0;
}

// Moves `tmp` over `target`, keeping the previous `target` as `bak`. Either every step is
// done, or what was done is undone and the files are as they were (`tmp` is then removed).
Status Replace(const std::string& tmp, const std::string& target, const std::string& bak,
               const std::string& shown) {
  auto fail = [&](const std::string& what, int err) {
    unlink(tmp.c_str());
    return Status::Error(shown + ": " + what + ": " + ErrorText(err));
  };
  if (!Exists(target)) {
    if (rename(tmp.c_str(), target.c_str()) != 0) return fail("cannot create the file", errno);
    return Status::Ok();
  }
  // The old backup is moved aside (not deleted) until the new file is in place, so that a
  // failure can put it back.
  std::string aside;
  if (Exists(bak)) {
    Result<std::string> reserved = ReserveName(target, shown);
    if (!reserved.ok()) {
      unlink(tmp.c_str());
      return reserved.status();
    }
    aside = std::move(reserved).value();
    if (rename(bak.c_str(), aside.c_str()) != 0) {
      int err = errno;
      unlink(aside.c_str());
      return fail("cannot replace the old backup " + bak, err);
    }
  }
  auto restore_backup = [&] {
    if (!aside.empty()) rename(aside.c_str(), bak.c_str());
  };
  // A hard link keeps the target in place throughout; where links are not supported the
  // target itself is moved to the backup name and moved back on failure.
  bool linked = link(target.c_str(), bak.c_str()) == 0;
  if (!linked && rename(target.c_str(), bak.c_str()) != 0) {
    int err = errno;
    restore_backup();
    return fail("cannot keep the previous file as " + bak, err);
  }
  if (rename(tmp.c_str(), target.c_str()) != 0) {
    int err = errno;
    if (linked)
      unlink(bak.c_str());
    else
      rename(bak.c_str(), target.c_str());
    restore_backup();
    return fail("cannot replace the file", err);
  }
  if (!aside.empty()) unlink(aside.c_str());
  return Status::Ok();
}

}  // namespace

Status SaveDxfAtomic(const RecordStore& store, const std::string& path) {
  Result<std::string> resolved = ResolveSaveTarget(path);
  if (!resolved.ok()) return resolved.status();
  const std::string& target = resolved.value();
  Result<std::string> tmp = WriteTemporary(store, target, path);
  if (!tmp.ok()) return tmp.status();
  // The file keeps its permissions; a new one gets the usual ones, not mkstemp's 0600.
  struct stat st;
  mode_t mode = stat(target.c_str(), &st) == 0 ? (st.st_mode & 07777) : 0644;
  chmod(tmp->c_str(), mode);
  Status replaced = Replace(*tmp, target, BackupPathFor(target), path);
  // Only once the save succeeded: a failed save leaves every file as it was.
  if (replaced.ok()) RemoveStaleTemporaries(target);
  return replaced;
}

}  // namespace veltor::dxf
