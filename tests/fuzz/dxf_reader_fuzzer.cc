// libFuzzer target for the DXF reader and everything that reads a loaded drawing.
//
// Any input must either be rejected with a Status or load into a document that can be
// walked, queried for Object Data and written without a crash, a sanitizer report or a leak.
// Two properties are checked beyond "does not crash":
//   - a loaded, unmodified drawing writes out to bytes that load again;
//   - after adding a table and a record (when the drawing can hold Object Data), the written
//     bytes load again and the record reads back.
// Failures of these checks abort, so libFuzzer keeps the input.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "drawing/dxf/reader.h"
#include "drawing/dxf/writer.h"
#include "write_to_string.h"
#include "drawing/model/blocks.h"
#include "drawing/model/document.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/model/tables.h"
#include "drawing/objectdata/od_store.h"

namespace {

using veltor::fuzz::WriteToString;

using veltor::model::Document;
using veltor::model::RecordId;
namespace dxf = veltor::dxf;
namespace model = veltor::model;
namespace od = veltor::od;
namespace objectdata = veltor::objectdata;

void Fail(const char* what, const std::string& detail) {
  std::fprintf(stderr, "dxf_reader_fuzzer: %s: %s\n", what, detail.c_str());
  std::abort();
}

// Reads everything a command could read from the drawing. Returns a number that depends on
// what was read, so nothing is optimised away.
size_t Walk(Document& doc) {
  size_t sum = 0;
  const dxf::RecordStore& store = doc.store();
  for (RecordId id = store.first(); id != model::kNoRecord; id = store.at(id).next) {
    sum += doc.TagsOf(id).size();
    store.ForEachTag(id, [&](int code, std::string_view value) {
      sum += static_cast<size_t>(code) + value.size();
      return true;
    });
    sum += doc.TypeOf(id).size();
  }
  sum += doc.HeaderInt("$INSUNITS", 0);
  sum += doc.Decode(doc.version()).size();

  for (const auto& layer : model::Layers(doc)) sum += layer.name.size() + layer.frozen;

  objectdata::ObjectDataStore data(doc);
  for (const std::string& name : data.TableNames()) {
    auto def = data.GetTable(name);
    if (def.ok()) sum += def->columns.size();
  }
  for (const auto& [name, count] : data.RecordCounts()) sum += name.size() + count;
  for (const std::string& line : data.DamageReport()) sum += line.size();

  for (RecordId id : model::ModelSpaceEntities(doc)) {
    model::EntityProperties p = model::ReadProperties(doc, id);
    sum += p.layer.size() + p.linetype.size() + p.hyperlinks.size();
    sum += model::SubEntities(doc, id).size();
    RecordId xdict = model::ExtensionDictionary(doc, id);
    if (xdict != model::kNoRecord)
      for (const auto& entry : model::DictionaryEntries(doc, xdict)) sum += entry.key.size();
    if (doc.TypeOf(id) == "INSERT") {
      sum += model::EffectiveBlockName(doc, id).size();
      for (const auto& a : model::Attributes(doc, id)) sum += a.tag.size() + a.text.size();
    }
    // The in-place scan and the full read must agree on which records can be read.
    std::vector<std::string> names = data.RecordTableNames(id);
    std::vector<od::Record> records = data.Records(id);
    if (names.size() != records.size())
      Fail("RecordTableNames and Records disagree", std::to_string(names.size()) + " vs " +
                                                      std::to_string(records.size()));
    sum += names.size() + data.DamagedRecordCount(id);
    for (const auto& record : records) sum += record.values.size();
  }
  sum += model::PaperSpaceEntities(doc).size();
  return sum;
}

// Adds a table with one column of each type and a record on the first model space entity.
// Returns false when the drawing cannot hold Object Data (that is a Status, not a fault).
bool AddObjectData(Document& doc, od::Record& added, RecordId& entity) {
  objectdata::ObjectDataStore data(doc);
  if (!data.CanWrite().ok()) return false;
  auto entities = model::ModelSpaceEntities(doc);
  if (entities.empty()) return false;
  od::TableDefinition def;
  def.name = "Fuzz_Таблица";
  def.columns = {{"I", od::ValueType::kInteger, "", od::Value::Integer(0)},
                 {"R", od::ValueType::kReal, "", od::Value::Real(0)},
                 {"C", od::ValueType::kCharacter, "", od::Value::Character("")},
                 {"P", od::ValueType::kPoint, "", od::Value::Point({0, 0, 0})}};
  if (!data.CreateTable(def).ok()) return false;  // e.g. the name is taken already
  added.table = def.name;
  added.values = {od::Value::Integer(-7), od::Value::Real(2.5),
                  od::Value::Character("Straße"), od::Value::Point({1, 2, 3})};
  entity = entities.front();
  if (!data.AddRecord(entity, added).ok()) return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);

  // The reader alone: a parse either fails with a message or gives a store.
  auto parsed = dxf::ParseDxf(bytes, "fuzz");
  if (!parsed.ok()) {
    if (parsed.message().empty()) Fail("parse failed without a message", "");
    return 0;
  }

  auto opened = Document::FromBytes(std::move(bytes), "fuzz");
  if (!opened.ok()) return 0;
  Document& doc = **opened;
  volatile size_t sink = Walk(doc);
  (void)sink;

  std::string written;
  if (!WriteToString(doc.store(), written)) return 0;
  auto again = Document::FromBytes(written, "fuzz-rewritten");
  if (!again.ok()) Fail("an unmodified drawing wrote bytes that do not load", again.message());

  od::Record added;
  RecordId entity = model::kNoRecord;
  if (!AddObjectData(doc, added, entity)) return 0;
  sink = Walk(doc);
  dxf::Handle handle = doc.store().at(entity).handle;
  if (!WriteToString(doc.store(), written)) return 0;
  auto reloaded = Document::FromBytes(written, "fuzz-with-od");
  if (!reloaded.ok()) Fail("a drawing with added Object Data does not load", reloaded.message());
  if (handle == 0) return 0;  // the entity cannot be found again without a handle
  RecordId found = (*reloaded)->Find(handle);
  if (found == model::kNoRecord) Fail("the entity with Object Data is gone", "");
  objectdata::ObjectDataStore reread(**reloaded);
  auto records = reread.Records(found);
  bool present = false;
  for (const auto& r : records)
    if (r.table == added.table && r.values == added.values) present = true;
  if (!present) Fail("the added record does not read back", std::to_string(records.size()));
  return 0;
}
