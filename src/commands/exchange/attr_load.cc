// VELTOR_LOAD_ATTRS: attribute texts into OD values.
#include <set>

#include "commands/edit/write_tally.h"
#include "commands/exchange/attr_commands.h"
#include "commands/exchange/attr_run.h"
#include "commands/exchange/attr_values.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

// One mapped attribute of a block reference: where its text goes, and the text.
struct NotedText {
  AttributeTarget target;
  std::string text;
};

std::vector<NotedText> NoteMappedTexts(const od::Database& db, od::EntityId reference,
                                       const TagTargets& tags) {
  std::vector<NotedText> noted;
  for (const od::AttributeFacts& attribute : db.Attributes(reference)) {
    auto it = tags.find(attribute.tag);
    if (it != tags.end()) noted.push_back({it->second, attribute.text});
  }
  return noted;
}

// The index of the entity's first record of `table`, or -1.
int FirstRecordOf(const std::vector<od::Record>& records, const std::string& table) {
  for (size_t i = 0; i < records.size(); ++i)
    if (records[i].table == table) return static_cast<int>(i);
  return -1;
}

// Attaches a record with default values for every noted table the reference has none of.
void AttachMissingRecords(od::ObjectDataContainer& container, od::EntityId reference,
                          const std::vector<NotedText>& noted, WriteTally& tally) {
  std::set<std::string> attached;
  for (const od::Record& record : container.Records(reference)) attached.insert(record.table);
  for (const NotedText& n : noted) {
    if (!attached.insert(n.target.table).second) continue;
    Result<od::Record> fresh = container.NewRecord(n.target.table);
    tally.Count(fresh.ok() ? container.AddRecord(reference, *fresh) : Status(fresh.status()));
  }
}

// Writes one noted text into the first record of its table on the reference.
void WriteNotedText(od::ObjectDataContainer& container, od::EntityId reference,
                    const NotedText& noted, WriteTally& tally) {
  std::vector<od::Record> records = container.Records(reference);
  int index = FirstRecordOf(records, noted.target.table);
  if (index < 0) return;
  Result<od::TableDefinition> table = container.GetTable(noted.target.table);
  if (!table.ok()) return;
  int column = table->ColumnIndex(noted.target.column);
  od::Record& record = records[static_cast<size_t>(index)];
  if (column < 0 || static_cast<size_t>(column) >= record.values.size()) return;
  SetValueFromAttributeText(record.values[static_cast<size_t>(column)], noted.text);
  tally.Count(container.UpdateRecord(reference, static_cast<size_t>(index), record));
}

}  // namespace

void LoadAttrs(od::CommandContext& context) {
  std::optional<AttributeRun> run = StartAttributeRun(context);
  if (!run) return;
  od::Host& host = context.host();
  od::Database& db = *run->db;
  od::ObjectDataContainer& container = *run->container;
  const std::vector<BlockReference>& references = run->references;
  int loaded = 0;
  WriteTally tally;
  for (const BlockReference& reference : references) {
    const TagTargets* tags = FindBlock(run->map, reference.block);
    if (!tags) continue;
    std::vector<NotedText> noted = NoteMappedTexts(db, reference.id, *tags);
    if (noted.empty()) continue;
    AttachMissingRecords(container, reference.id, noted, tally);
    for (const NotedText& n : noted) WriteNotedText(container, reference.id, n, tally);
    ++loaded;
  }
  ReportRefused(host, tally);
  host.Ed().Print(od::Format(od::Str(od::kStrDefinitionsLoaded), loaded,
                             static_cast<int>(references.size())));
}

}  // namespace veltor::commands
