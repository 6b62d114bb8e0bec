// veltor_attach_memory: the memory of attaching one Object Data record to every model space
// entity of a drawing and saving it, as ODTABLE then ODATTACH (each one undo group) and SAVE do.
//   veltor_attach_memory DRAWING OUT
// Prints "entities N saved_bytes S peak_rss_bytes P ratio R" where R = P / S; exit status 1
// with a message on standard error when the drawing cannot be read or written. Peak RSS is
// the process's own (getrusage), so run one measurement per process.
#include <sys/resource.h>
#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "drawing/model/document.h"
#include "drawing/model/entity.h"
#include "drawing/objectdata/od_store.h"

namespace {

namespace od = veltor::od;
namespace objectdata = veltor::objectdata;

int Fail(const std::string& message) {
  std::fprintf(stderr, "veltor_attach_memory: %s\n", message.c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return Fail("usage: veltor_attach_memory DRAWING OUT");
  auto doc = veltor::model::Document::Open(argv[1]);
  if (!doc.ok()) return Fail(doc.message());
  objectdata::ObjectDataStore store(**doc);

  od::TableDefinition table;
  table.name = "Mark";
  table.description = "one record on every entity";
  table.columns.push_back({"ID", od::ValueType::kInteger, "", od::Value::Integer(0)});
  (*doc)->BeginUndoGroup("ODTABLE");
  veltor::Status created = store.CreateTable(table);
  (*doc)->EndUndoGroup();
  if (!created.ok()) return Fail(created.message());

  auto entities = veltor::model::ModelSpaceEntities(**doc);
  od::Record record{"Mark", {od::Value::Integer(5)}};
  (*doc)->BeginUndoGroup("ODATTACH");
  for (auto id : entities) {
    veltor::Status added = store.AddRecord(id, record);
    if (!added.ok()) return Fail(added.message());
  }
  (*doc)->EndUndoGroup();

  veltor::Status saved = (*doc)->Save(argv[2]);
  if (!saved.ok()) return Fail(saved.message());
  struct stat st;
  if (stat(argv[2], &st) != 0) return Fail(std::string(argv[2]) + ": not written");
  struct rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  double peak = static_cast<double>(usage.ru_maxrss) * 1024.0;  // ru_maxrss is in KiB
  std::printf("entities %zu saved_bytes %lld peak_rss_bytes %.0f ratio %.2f\n", entities.size(),
              static_cast<long long>(st.st_size), peak, peak / static_cast<double>(st.st_size));
  return 0;
}
