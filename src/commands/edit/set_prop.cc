#include "commands/edit/set_prop.h"

#include <array>
#include <cmath>
#include <limits>

#include "commands/edit/copy_reference.h"
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

// Writes the measures into the first record of the chosen table, raising `counts` for each
// value written.
void WriteMeasures(od::ObjectDataContainer& container, od::EntityId entity,
                   const ui::OptionsSetProp::Memory& choice, const Triple& values,
                   std::array<size_t, 3>& counts) {
  int index = FirstRecordOf(container, entity, choice.table);
  if (index < 0) return;
  od::Record record = std::move(container.Records(entity)[static_cast<size_t>(index)]);
  Result<od::TableDefinition> def = container.GetTable(choice.table);
  if (!def.ok()) return;
  const std::array<const std::string*, 3> columns = {&choice.length_column, &choice.area_column,
                                                     &choice.volume_column};
  for (size_t i = 0; i < def->columns.size() && i < record.values.size(); ++i) {
    for (size_t p = 0; p < 3; ++p) {
      if (columns[p]->empty() || def->columns[i].name != *columns[p]) continue;
      if (Store(record.values[i], values[p], choice.precision) &&
          container.UpdateRecord(entity, static_cast<size_t>(index), record).ok())
        ++counts[p];
      break;
    }
  }
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

  std::vector<Triple> measured;
  measured.reserve(list->size());
  size_t unmeasured_solids = 0;
  for (od::EntityId entity : *list) {
    Measures m = MeasureEntity(*db, entity);
    if (m.volume_unmeasured) ++unmeasured_solids;
    measured.push_back({RoundByPrinting(m.length, memory.precision),
                        RoundByPrinting(m.area, memory.precision),
                        RoundByPrinting(m.volume, memory.precision)});
  }
  if (!LockForEdits(context)) return;
  std::array<size_t, 3> counts{};
  for (size_t i = 0; i < list->size(); ++i)
    WriteMeasures(container, (*list)[i], memory, measured[i], counts);
  if (!memory.volume_column.empty()) WarnUnmeasuredSolids(host, unmeasured_solids);
  host.Ed().Print(od::Format(od::Str(od::kStrCompletedLengthAreaVolume),
                             static_cast<int>(counts[0]), static_cast<int>(counts[1]),
                             static_cast<int>(counts[2]), static_cast<int>(list->size())));
}

void SetProp(od::CommandContext& context) { SetPropWorker(context, {}); }

}  // namespace veltor::commands
