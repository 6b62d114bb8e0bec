#include "drawing/dxf/source_buffer.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace veltor::dxf {

SourceBuffer::~SourceBuffer() { Release(); }

void SourceBuffer::Release() {
  if (map_) munmap(map_, map_size_);
  map_ = nullptr;
  map_size_ = 0;
}

SourceBuffer& SourceBuffer::operator=(SourceBuffer&& other) noexcept {
  if (this == &other) return *this;
  Release();
  bool owned = other.map_ == nullptr;
  owned_ = std::move(other.owned_);
  map_ = other.map_;
  map_size_ = other.map_size_;
  view_ = owned ? std::string_view(owned_) : other.view_;
  other.map_ = nullptr;
  other.map_size_ = 0;
  other.view_ = std::string_view();
  return *this;
}

Result<SourceBuffer> SourceBuffer::FromFile(const std::string& path) {
  int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return Status::Error(path + ": cannot open: " + std::strerror(errno));
  struct stat st;
  if (fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size > 0) {
    size_t size = static_cast<size_t>(st.st_size);
    void* map = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, fd, 0);
    if (map != MAP_FAILED) {
      close(fd);
      madvise(map, size, MADV_SEQUENTIAL);
      SourceBuffer buffer;
      buffer.map_ = map;
      buffer.map_size_ = size;
      buffer.view_ = std::string_view(static_cast<const char*>(map), size);
      return buffer;
    }
  }
  if (fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
    close(fd);
    return Status::Error(path + ": is a directory");
  }
  std::string bytes;
  char chunk[1 << 16];
  for (;;) {
    ssize_t n = read(fd, chunk, sizeof(chunk));
    if (n < 0) {
      if (errno == EINTR) continue;
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
