#include "oracle_tools.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace veltor::oracle {

std::string SourceDir() { return VELTOR_SOURCE_DIR; }
std::string CorpusDir() {
  const char* env = std::getenv("VELTOR_CORPUS");
  return (env && *env ? std::string(env) : std::string(VELTOR_CORPUS_DIR)) + "/dxf";
}
std::string BinDir() { return VELTOR_BIN_DIR; }
std::string CheckerScript() { return SourceDir() + "/tests/oracle/check_written.py"; }

bool HaveEzdxf() {
  static const bool have =
      Run("/usr/bin/python3 -c 'import ezdxf' >/dev/null 2>&1").exit_code == 0;
  return have;
}

bool HaveOgrinfo() {
  static const bool have = Run("ogrinfo --version >/dev/null 2>&1").exit_code == 0;
  return have;
}

CommandResult Run(const std::string& command) {
  CommandResult result;
  std::FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return result;
  char buffer[4096];
  size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) result.output.append(buffer, n);
  int status = pclose(pipe);
  if (status != -1 && WIFEXITED(status)) result.exit_code = WEXITSTATUS(status);
  return result;
}

std::string Quote(const std::string& text) {
  std::string out = "'";
  for (char c : text) {
    if (c == '\'')
      out += "'\\''";
    else
      out += c;
  }
  return out + "'";
}

ScratchDir::ScratchDir() {
  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/veltor-oracle-XXXXXX";
  if (mkdtemp(pattern.data())) path_ = pattern;
}

ScratchDir::~ScratchDir() {
  if (path_.empty()) return;
  const char* keep = std::getenv("VELTOR_ORACLE_KEEP");
  if (keep && *keep && std::string(keep) != "0") {
    std::fprintf(stderr, "kept %s\n", path_.c_str());
    return;
  }
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

bool WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  return static_cast<bool>(out.flush());
}

std::string Generate(size_t entities, unsigned seed, const std::string& version,
                     const std::string& out) {
  CommandResult r = Run(Quote(BinDir() + "/veltor-gen") + " --entities " +
                        std::to_string(entities) + " --seed " + std::to_string(seed) +
                        " --version " + version + " -o " + Quote(out));
  if (r.exit_code == 0) return "";
  return "veltor-gen failed (" + std::to_string(r.exit_code) + "): " + r.output;
}

std::optional<long> VeltorModelSpaceCount(const std::string& path, std::string& error) {
  CommandResult r = Run(Quote(BinDir() + "/veltor") + " --info " + Quote(path));
  const std::string key = "\nModel space: ";
  size_t at = r.output.find(key);
  if (r.exit_code != 0 || at == std::string::npos) {
    error = "veltor --info failed (" + std::to_string(r.exit_code) + "): " + r.output;
    return std::nullopt;
  }
  return std::strtol(r.output.c_str() + at + key.size(), nullptr, 10);
}

std::optional<long> OgrEntityCount(const std::string& path, std::string& error) {
  CommandResult r =
      Run("ogrinfo --config DXF_INLINE_BLOCKS FALSE -ro -al -so " + Quote(path));
  if (r.exit_code != 0) {
    error = "ogrinfo failed (" + std::to_string(r.exit_code) + "): " + r.output;
    return std::nullopt;
  }
  // "Layer name: entities" is followed (a few lines on) by "Feature Count: N".
  std::istringstream lines(r.output);
  std::string line;
  bool in_entities = false;
  while (std::getline(lines, line)) {
    if (line.rfind("Layer name: ", 0) == 0) in_entities = line == "Layer name: entities";
    if (in_entities && line.rfind("Feature Count: ", 0) == 0)
      return std::strtol(line.c_str() + 15, nullptr, 10);
  }
  error = "ogrinfo reported no \"entities\" layer: " + r.output;
  return std::nullopt;
}

namespace {

long Number(const std::string& text) {
  char* end = nullptr;
  long n = std::strtol(text.c_str(), &end, 10);
  return end != text.c_str() && *end == '\0' ? n : -1;
}

}  // namespace

std::vector<ManifestRow> ReadManifest() {
  std::vector<ManifestRow> rows;
  std::ifstream in(CorpusDir() + "/MANIFEST.tsv");
  std::string line;
  std::vector<std::string> header;
  while (std::getline(in, line)) {
    std::vector<std::string> cells;
    std::istringstream split(line);
    std::string cell;
    while (std::getline(split, cell, '\t')) cells.push_back(cell);
    if (header.empty()) {
      header = cells;
      continue;
    }
    auto column = [&](const std::string& name) -> std::string {
      for (size_t i = 0; i < header.size() && i < cells.size(); ++i)
        if (header[i] == name) return cells[i];
      return "";
    };
    ManifestRow row;
    row.file = column("file");
    row.version = column("dxf_version").substr(0, 6);
    row.binary = column("binary") == "yes";
    row.modelspace_entities = Number(column("modelspace_entity_count"));
    row.ogr_features = Number(column("ogr_feature_count"));
    if (!row.file.empty()) rows.push_back(row);
  }
  return rows;
}

}  // namespace veltor::oracle
