// VELTOR_STORE_ATTRS: OD values into attribute texts.
#include "commands/exchange/attr_commands.h"
#include "commands/exchange/attr_run.h"
#include "commands/exchange/attr_values.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

// The value of the target's column in the first of `records` whose table is the target's
// (table and column names matched without regard to case); nothing when there is none.
std::optional<od::Value> MappedValue(const od::ObjectDataContainer& container,
                                     const std::vector<od::Record>& records,
                                     const AttributeTarget& target) {
  for (const od::Record& record : records) {
    if (!od::EqualsIgnoreCase(record.table, target.table)) continue;
    Result<od::TableDefinition> table = container.GetTable(record.table);
    if (!table.ok()) return std::nullopt;
    for (size_t i = 0; i < table->columns.size() && i < record.values.size(); ++i)
      if (od::EqualsIgnoreCase(table->columns[i].name, target.column)) return record.values[i];
    return std::nullopt;
  }
  return std::nullopt;
}

// Sets the mapped attributes of one reference; returns how many were set.
int StoreReference(od::Database& db, const od::ObjectDataContainer& container,
                   od::EntityId reference, const TagTargets& tags,
                   const std::vector<od::Record>& records) {
  int stored = 0;
  for (const od::AttributeFacts& attribute : db.Attributes(reference)) {
    auto it = tags.find(attribute.tag);
    if (it == tags.end()) continue;
    std::optional<od::Value> value = MappedValue(container, records, it->second);
    if (!value) continue;
    std::optional<std::string> text = AttributeTextOf(*value);
    // An attribute that cannot be opened for writing is skipped.
    if (text && db.SetAttributeText(attribute.id, *text).ok()) ++stored;
  }
  return stored;
}

}  // namespace

void StoreAttrs(od::CommandContext& context) {
  std::optional<AttributeRun> run = StartAttributeRun(context);
  if (!run) return;
  od::Host& host = context.host();
  const od::ObjectDataContainer& container = *run->container;
  const std::vector<BlockReference>& references = run->references;
  int stored = 0;
  for (const BlockReference& reference : references) {
    std::vector<od::Record> records = container.Records(reference.id);
    if (records.empty()) continue;
    if (const TagTargets* tags = FindBlock(run->map, reference.block))
      stored += StoreReference(*run->db, container, reference.id, *tags, records);
  }
  host.Ed().Print(od::Format(od::Str(od::kStrAttributesStored), stored,
                             static_cast<int>(references.size())));
}

}  // namespace veltor::commands
