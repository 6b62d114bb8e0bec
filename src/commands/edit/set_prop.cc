#include "commands/edit/set_prop.h"

#include <array>
#include <cmath>
#include <limits>

#include "commands/edit/copy_reference.h"
#include "commands/edit/edit_lock.h"
#include "commands/edit/set_measure.h"
#include "commands/edit/set_memory.h"
#include "commands/edit/set_steps.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

// Length, area and volume, in this order.
using Triple = std::array<double, 3>;

// The number an integer column receives: truncated toward zero, held within 32 bits.
int32_t Truncated(double value) {
  if (value >= 2147483647.0) return std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(std::trunc(value));
}

// Stores a positive `value` in `column` by the column's type; false when it is not written.
bool Store(od::Value& column, double value, int precision) {
  if (!(value > 0)) return false;
  switch (column.type()) {
    case od::ValueType::kCharacter:
      column.SetCharacter(od::FormatNumberWithPrecision(value, precision));
      return true;
    case od::ValueType::kReal:
      column.SetReal(value);
      return true;
    case od::ValueType::kInteger:
      column.SetInteger(Truncated(value));
      return true;
    default:
      return false;
  }
}

// The chosen columns' positions in the table: length, area and volume, -1 where none.
std::array<int, 3> ChosenColumns(const od::TableDefinition& def,
                                 const ui::OptionsSetProp::Memory& choice) {
  const std::array<const std::string*, 3> names = {&choice.length_column, &choice.area_column,
                                                   &choice.volume_column};
  std::array<int, 3> at{-1, -1, -1};
  // Walking the columns in order, a column takes the first property that names it.
  for (size_t i = 0; i < def.columns.size(); ++i)
    for (size_t p = 0; p < 3; ++p)
      if (at[p] < 0 && !names[p]->empty() && def.columns[i].name == *names[p]) {
        at[p] = static_cast<int>(i);
        break;
      }
  return at;
}

// Writes the measures into `record` (the entity's record at `index`), raising `counts` for
// each value written.
void WriteMeasures(od::ObjectDataContainer& container, od::EntityId entity, size_t index,
                   od::Record record, const std::array<int, 3>& columns, int precision,
                   const Triple& values, std::array<size_t, 3>& counts) {
  std::array<bool, 3> stored{};
  for (size_t p = 0; p < 3; ++p) {
    if (columns[p] < 0 || static_cast<size_t>(columns[p]) >= record.values.size()) continue;
    stored[p] = Store(record.values[static_cast<size_t>(columns[p])], values[p], precision);
  }
  if (!stored[0] && !stored[1] && !stored[2]) return;
  if (!container.UpdateRecord(entity, index, record).ok()) return;
  for (size_t p = 0; p < 3; ++p)
    if (stored[p]) ++counts[p];
}

void WarnUnmeasuredSolids(od::Host& host, size_t solids) {
  if (solids == 1) host.Ed().Print(od::Str(od::kStrSolidNotMeasured));
  if (solids > 1)
    host.Ed().Print(od::Format(od::Str(od::kStrSolidsNotMeasured), static_cast<int>(solids)));
}

}  // namespace

void SetPropWorker(od::CommandContext& context, const od::EntityList& entities) {
  od::Host& host = context.host();
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return;
  od::ObjectDataContainer& container = (*project)->Container();

  ui::OptionsSetProp::Memory& memory = ModuleSetDialogMemory().prop;
  const int luprec = od::GetLinearPrecision(host);
  od::LuprecBracket bracket(host);
  memory.precision = luprec;

  ui::OptionsSetProp dialog(TablesInUse(host, entities), memory, container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  if (memory.table.empty() || (memory.length_column.empty() && memory.area_column.empty() &&
                               memory.volume_column.empty()))
    return;
  std::optional<od::EntityList> list = GatherAfterDialog(context, entities);
  if (!list || list->empty()) return;

  Result<od::TableDefinition> def = container.GetTable(memory.table);
  const std::array<int, 3> columns =
      def.ok() ? ChosenColumns(*def, memory) : std::array<int, 3>{-1, -1, -1};

  // Only entities with a record of the table are written, so only they are measured - and
  // solids, which are counted for the warning.
  struct Target {
    od::EntityId entity;
    size_t index;
    od::Record record;
    Triple values;
  };
  std::vector<Target> targets;
  size_t unmeasured_solids = 0;
  for (od::EntityId entity : *list) {
    // The table names first: most entities of a large drawing have no record of the table.
    const int index = FirstRecordOf(container, entity, memory.table);
    if (index < 0 && db->EntityClass(entity) != "AcDb3dSolid") continue;
    Measures m = MeasureEntity(*db, entity);
    if (m.volume_unmeasured) ++unmeasured_solids;
    if (index < 0) continue;
    std::vector<od::Record> records = container.Records(entity);
    if (static_cast<size_t>(index) >= records.size()) continue;
    targets.push_back({entity, static_cast<size_t>(index),
                       std::move(records[static_cast<size_t>(index)]),
                       {RoundByPrinting(m.length, memory.precision),
                        RoundByPrinting(m.area, memory.precision),
                        RoundByPrinting(m.volume, memory.precision)}});
  }
  if (!LockForEdits(context)) return;
  std::array<size_t, 3> counts{};
  for (Target& t : targets)
    WriteMeasures(container, t.entity, t.index, std::move(t.record), columns, memory.precision,
                  t.values, counts);
  if (!memory.volume_column.empty()) WarnUnmeasuredSolids(host, unmeasured_solids);
  host.Ed().Print(od::Format(od::Str(od::kStrCompletedLengthAreaVolume),
                             static_cast<int>(counts[0]), static_cast<int>(counts[1]),
                             static_cast<int>(counts[2]), static_cast<int>(list->size())));
}

void SetProp(od::CommandContext& context) { SetPropWorker(context, {}); }

}  // namespace veltor::commands
