#include "commands/edit/set_xyz.h"

#include "commands/edit/copy_reference.h"
#include "commands/edit/edit_lock.h"
#include "commands/edit/set_entity_point.h"
#include "commands/edit/set_memory.h"
#include "commands/edit/set_steps.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

// Writes `point` into the first record of the chosen table; true when a column took a value.
bool WritePoint(od::ObjectDataContainer& container, od::EntityId entity,
                const od::TableDefinition& def, const ui::OdSelectXyz::Memory& choice,
                const od::Point3& point) {
  int index = FirstRecordOf(container, entity, choice.table);
  if (index < 0) return false;
  std::vector<od::Record> records = container.Records(entity);
  if (static_cast<size_t>(index) >= records.size()) return false;
  od::Record record = std::move(records[static_cast<size_t>(index)]);
  bool written = false;
  for (size_t i = 0; i < def.columns.size() && i < record.values.size(); ++i) {
    const std::string& name = def.columns[i].name;
    double number;
    if (name == choice.x_column) number = point.x;
    else if (name == choice.y_column) number = point.y;
    else if (name == choice.z_column) number = point.z;
    else continue;
    // "%lf" keeps six decimals whatever the precision asked for.
    if (!od::SetValueFromText(record.values[i], od::Format("%lf", number))) continue;
    if (container.UpdateRecord(entity, static_cast<size_t>(index), record).ok()) written = true;
  }
  return written;
}

}  // namespace

void SetXyzWorker(od::CommandContext& context, const od::EntityList& entities) {
  od::Host& host = context.host();
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return;
  od::ObjectDataContainer& container = (*project)->Container();

  ui::OdSelectXyz::Memory& memory = ModuleSetDialogMemory().xyz;
  const int luprec = od::GetLinearPrecision(host);
  od::LuprecBracket bracket(host);
  memory.xy_precision = memory.z_precision = luprec;

  ui::OdSelectXyz dialog(TablesInUse(host, entities), memory, container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  if (memory.table.empty() ||
      (memory.x_column.empty() && memory.y_column.empty() && memory.z_column.empty()))
    return;
  std::optional<od::EntityList> gathered = GatherAfterDialog(context, entities);
  if (!gathered || gathered->empty()) return;

  // Entities that cannot be opened leave the list; the others keep their order.
  od::EntityList list;
  std::vector<od::Point3> points;
  for (od::EntityId entity : *gathered) {
    if (!db->CanOpen(entity)) continue;
    od::Point3 p = EntityPoint(*db, entity, memory.xy_mode, memory.z_mode);
    p.x = RoundByPrinting(p.x, memory.xy_precision);
    p.y = RoundByPrinting(p.y, memory.xy_precision);
    p.z = RoundByPrinting(p.z, memory.z_precision);
    list.push_back(entity);
    points.push_back(p);
  }
  if (!LockForEdits(context)) return;
  Result<od::TableDefinition> def = container.GetTable(memory.table);
  size_t completed = 0;
  for (size_t i = 0; def.ok() && i < list.size(); ++i)
    if (WritePoint(container, list[i], *def, memory, points[i])) ++completed;
  host.Ed().Print(od::Format(od::Str(od::kStrCompletedOutOf), static_cast<int>(completed),
                             static_cast<int>(list.size())));
}

void SetXyz(od::CommandContext& context) { SetXyzWorker(context, {}); }

}  // namespace veltor::commands
