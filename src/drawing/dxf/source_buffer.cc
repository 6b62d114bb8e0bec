#include "drawing/dxf/source_buffer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace veltor::dxf {

SourceBuffer& SourceBuffer::operator=(SourceBuffer&& other) noexcept {
  if (this == &other) return *this;
  bool in_text = other.raw_ == nullptr;
  raw_ = std::move(other.raw_);
  size_t size = other.view_.size();
  text_ = std::move(other.text_);
  view_ = in_text ? std::string_view(text_) : std::string_view(raw_.get(), size);
  other.view_ = std::string_view();
  return *this;
}

Result<SourceBuffer> SourceBuffer::FromFile(const std::string& path) {
  int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return Status::Error(path + ": cannot open: " + std::strerror(errno));
  struct stat st;
  if (fstat(fd, &st) != 0 || S_ISDIR(st.st_mode)) {
    close(fd);
    return Status::Error(path + ": is not a file");
  }
  // Regular files are read straight into an array of their size; pipes grow a string.
  if (S_ISREG(st.st_mode) && st.st_size > 0) {
    size_t size = static_cast<size_t>(st.st_size);
    std::unique_ptr<char[]> raw(new (std::nothrow) char[size]);
    if (!raw) {
      close(fd);
      return Status::Error(path + ": not enough memory to read " + std::to_string(size) + " bytes");
    }
    size_t got = 0;
    while (got < size) {
      ssize_t n = read(fd, raw.get() + got, size - got);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) break;
      got += static_cast<size_t>(n);
    }
    close(fd);
    if (got != size) return Status::Error(path + ": read error (the file changed while reading?)");
    SourceBuffer buffer;
    buffer.raw_ = std::move(raw);
    buffer.view_ = std::string_view(buffer.raw_.get(), size);
    return buffer;
  }
  std::string bytes;
  char chunk[1 << 16];
  for (;;) {
    ssize_t n = read(fd, chunk, sizeof(chunk));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      int err = errno;
      close(fd);
      return Status::Error(path + ": read error: " + std::strerror(err));
    }
    if (n == 0) break;
    bytes.append(chunk, static_cast<size_t>(n));
  }
  close(fd);
  return SourceBuffer(std::move(bytes));
}

}  // namespace veltor::dxf
