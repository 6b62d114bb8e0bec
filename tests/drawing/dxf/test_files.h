// Files and folders for the DXF engine tests: the corpus, the fixtures, scratch folders and
// writing a store to memory.
#pragma once

#include <dirent.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "drawing/dxf/record_store.h"
#include "drawing/dxf/writer.h"

namespace veltor::testing {

// The real-drawing corpus: the folder VELTOR_CORPUS names, else ../shared/corpus beside the
// repository. It holds dxf/ and dxf-broken/.
inline std::string CorpusRoot() {
  const char* env = std::getenv("VELTOR_CORPUS");
  return env && *env ? std::string(env) : std::string(VELTOR_CORPUS_DIR);
}
inline std::string CorpusDir() { return CorpusRoot() + "/dxf"; }
inline std::string BrokenCorpusDir() { return CorpusRoot() + "/dxf-broken"; }
inline bool HaveCorpus() {
  struct stat st;
  return stat(CorpusDir().c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}
inline std::string BrokenFixtureDir() { return std::string(VELTOR_SOURCE_DIR) + "/tests/data/broken"; }
inline std::string CorpusFile(const std::string& name) { return CorpusDir() + "/" + name; }

// Names (not paths) of the files in `dir` ending in `suffix`, sorted.
inline std::vector<std::string> FilesIn(const std::string& dir, const std::string& suffix) {
  std::vector<std::string> names;
  if (DIR* d = opendir(dir.c_str())) {
    while (dirent* e = readdir(d)) {
      std::string name = e->d_name;
      if (name.size() > suffix.size() &&
          name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0)
        names.push_back(name);
    }
    closedir(d);
  }
  std::sort(names.begin(), names.end());
  return names;
}

inline std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

inline void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
}

inline bool Exists(const std::string& path) {
  struct stat st;
  return stat(path.c_str(), &st) == 0;
}

// The whole file WriteDxf produces for `store`.
inline std::string WriteToString(const dxf::RecordStore& store) {
  char* data = nullptr;
  size_t size = 0;
  std::FILE* f = open_memstream(&data, &size);
  Status written = dxf::WriteDxf(store, f);
  std::fclose(f);
  std::string bytes(data, size);
  free(data);
  EXPECT_TRUE(written.ok()) << written.message();
  return bytes;
}

// A fresh folder under TMPDIR, removed with its files (not subfolders' content) at the end.
class ScratchDir {
 public:
  ScratchDir() {
    const char* base = getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/veltor-test-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    path_ = mkdtemp(name.data()) ? name.data() : "";
  }
  ~ScratchDir() {
    if (path_.empty()) return;
    chmod(path_.c_str(), 0700);
    for (const std::string& name : Entries()) {
      std::string p = path_ + "/" + name;
      if (rmdir(p.c_str()) != 0) unlink(p.c_str());
    }
    rmdir(path_.c_str());
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

  const std::string& path() const { return path_; }
  std::string File(const std::string& name) const { return path_ + "/" + name; }
  // Every entry but "." and "..", sorted.
  std::vector<std::string> Entries() const {
    std::vector<std::string> names = FilesIn(path_, "");
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const std::string& n) { return n == "." || n == ".."; }),
                names.end());
    return names;
  }

 private:
  std::string path_;
};

}  // namespace veltor::testing

// Skips the test, saying where the corpus was looked for, when the real drawings are absent
// (a clone of the repository alone).
#define VELTOR_NEEDS_CORPUS()                                                                  \
  do {                                                                                       \
    if (!::veltor::testing::HaveCorpus())                                                    \
      GTEST_SKIP() << "no drawing corpus at " << ::veltor::testing::CorpusRoot()             \
                   << "; set VELTOR_CORPUS to the folder that holds dxf/";                   \
  } while (0)
