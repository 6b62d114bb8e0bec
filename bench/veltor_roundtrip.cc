// veltor_roundtrip: the whole-process workload of bench/compare.sh.
//   veltor_roundtrip DRAWING             load, count model space entities with Object Data
//                                        records, save to a temporary file (then removed)
//   veltor_roundtrip --load-only DRAWING load and count model space entities
// Prints one line: "entities N with_records M load S count S save S" (seconds); exit status 1
// with a message on standard error when the drawing cannot be read or written.
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>

#include "drawing/dxf/writer.h"
#include "drawing/model/document.h"
#include "drawing/model/entity.h"
#include "drawing/objectdata/od_store.h"

namespace {

double Seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

int Fail(const std::string& message) {
  std::fprintf(stderr, "veltor_roundtrip: %s\n", message.c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  bool load_only = argc == 3 && std::strcmp(argv[1], "--load-only") == 0;
  if (argc != 2 && !load_only)
    return Fail("usage: veltor_roundtrip [--load-only] DRAWING");
  std::string path = argv[argc - 1];

  auto start = std::chrono::steady_clock::now();
  auto doc = veltor::model::Document::Open(path);
  if (!doc.ok()) return Fail(doc.message());
  double load = Seconds(start);

  start = std::chrono::steady_clock::now();
  auto entities = veltor::model::ModelSpaceEntities(**doc);
  size_t with_records = 0;
  if (!load_only) {
    veltor::objectdata::ObjectDataStore od(**doc);
    for (auto id : entities)
      if (!od.RecordTableNames(id).empty()) ++with_records;
  }
  double count = Seconds(start);

  double save = 0;
  if (!load_only) {
    const char* tmp = std::getenv("TMPDIR");
    std::string dir_template = std::string(tmp && *tmp ? tmp : "/tmp") + "/veltor-rt-XXXXXX";
    if (!mkdtemp(dir_template.data())) return Fail("cannot make a temporary folder");
    std::string out = dir_template + "/out.dxf";
    start = std::chrono::steady_clock::now();
    veltor::Status saved = (*doc)->Save(out);
    save = Seconds(start);
    std::remove(out.c_str());
    std::remove(veltor::dxf::BackupPathFor(out).c_str());
    rmdir(dir_template.c_str());
    if (!saved.ok()) return Fail(saved.message());
  }
  std::printf("entities %zu with_records %zu load %.3f count %.3f save %.3f\n", entities.size(),
              with_records, load, count, save);
  return 0;
}
