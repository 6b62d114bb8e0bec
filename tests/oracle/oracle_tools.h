// What the oracle tests need around the engine: where things are, running the independent
// readers (ezdxf through /usr/bin/python3, GDAL's ogrinfo) and the veltor programs, scratch
// folders and the corpus MANIFEST.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace veltor::oracle {

std::string SourceDir();  // the repository
std::string CorpusDir();  // shared/corpus/dxf
std::string BinDir();     // where veltor and veltor-gen are built
std::string CheckerScript();  // tests/oracle/check_written.py

// The independent readers; a test skips when its reader is missing.
bool HaveEzdxf();
bool HaveOgrinfo();

struct CommandResult {
  int exit_code = -1;  // the command's exit status; -1 when it did not exit normally
  std::string output;  // standard output and standard error together
};
// Runs `command` through /bin/sh.
CommandResult Run(const std::string& command);
// `text` quoted for /bin/sh.
std::string Quote(const std::string& text);

// A fresh folder under $TMPDIR (or /tmp), removed with everything in it on destruction
// (kept, and its path printed, when VELTOR_ORACLE_KEEP is set to anything but 0).
class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  const std::string& path() const { return path_; }
  std::string File(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// Writes `text` to `path`; false when the file cannot be written.
bool WriteFile(const std::string& path, const std::string& text);

// Runs veltor-gen; empty on success, else what it printed.
std::string Generate(size_t entities, unsigned seed, const std::string& version,
                     const std::string& out);
// The model space entity count that `veltor --info` prints, or nothing (the reason in `error`).
std::optional<long> VeltorModelSpaceCount(const std::string& path, std::string& error);
// The feature count of the "entities" layer that `ogrinfo -ro -al -so` reports with block
// references kept as single features (DXF_INLINE_BLOCKS FALSE), or nothing.
std::optional<long> OgrEntityCount(const std::string& path, std::string& error);

// One line of the corpus MANIFEST.tsv (only the columns the oracles use).
struct ManifestRow {
  std::string file;
  std::string version;  // "AC1015", ... or "none"
  bool binary = false;
  long modelspace_entities = -1;
  long ogr_features = -1;  // -1 when ogrinfo could not open the file
};
std::vector<ManifestRow> ReadManifest();
// Test parameters print as their file name.
inline void PrintTo(const ManifestRow& row, std::ostream* out) { *out << row.file; }

}  // namespace veltor::oracle
