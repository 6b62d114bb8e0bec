#include "commands/edit/set_text.h"

#include <cmath>
#include <unordered_map>

#include "commands/edit/copy_reference.h"
#include "commands/edit/edit_lock.h"
#include "commands/edit/set_memory.h"
#include "commands/edit/set_steps.h"
#include "commands/edit/set_text_outline.h"
#include "commands/edit/set_text_samples.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "ui/od_select.h"

namespace veltor::commands {

namespace {

constexpr long kErrorColor = 0xFFFF00;  // yellow: 255, 255, 0

// What was decided for one entity.
struct Decision {
  od::EntityId entity = od::kNullId;
  size_t record = 0;
  const TextSample* chosen = nullptr;  // the text to write
  std::vector<const TextSample*> marked;  // the texts to mark
  bool multiple = false;
  bool out_of_range = false;
};

// Makes sure the marking layer and block exist and returns the layer's name as the drawing
// spells it; nothing, after saying why, when they cannot be made.
std::optional<std::string> EnsureMarkers(od::CommandContext& context, od::Database& db) {
  Status made = Status::Ok();
  od::ObjectId layer = db.FindLayer(kErrorLayer);
  if (layer == od::kNullId) {
    Result<od::ObjectId> added = db.AddLayer(kErrorLayer, kErrorColor);
    made = added.status();
  }
  if (made.ok() && !db.HasBlock(kErrorBlock)) made = db.AddCircleBlock(kErrorBlock, {0, 0, 0}, 1.0);
  if (!made.ok()) {
    context.host().Ed().Print(od::Format(od::Str(od::kStrCommandFailed), context.name().c_str(),
                                         made.message().c_str()));
    context.Cancel();
    return std::nullopt;
  }
  for (const od::LayerInfo& info : db.Layers())
    if (info.id == layer) return info.name;
  return std::string(kErrorLayer);
}

// Finds texts near entities through the drawing's spatial index.
class SampleFinder {
 public:
  SampleFinder(const od::Database& db, const std::vector<TextSample>& samples) : db_(db) {
    for (const TextSample& s : samples) by_id_.emplace(s.id, &s);
  }

  // The samples whose texts' extents meet the XY box around `points` grown by `margin`.
  std::vector<const TextSample*> Near(const std::vector<od::Point3>& points, double margin) const {
    std::vector<const TextSample*> found;
    if (points.empty() || by_id_.empty()) return found;
    od::Box3 box{points[0], points[0]};
    for (const od::Point3& p : points) {
      box.min.x = std::min(box.min.x, p.x), box.min.y = std::min(box.min.y, p.y);
      box.max.x = std::max(box.max.x, p.x), box.max.y = std::max(box.max.y, p.y);
    }
    // A text's estimated box holds its point up to rounding: a little slack keeps it found.
    margin += 1e-9 * (1 + std::fabs(box.max.x) + std::fabs(box.max.y));
    box.min.x -= margin, box.min.y -= margin, box.max.x += margin, box.max.y += margin;
    box.min.z = -1e300, box.max.z = 1e300;
    for (od::EntityId id : db_.EntitiesInBox(box)) {
      auto it = by_id_.find(id);
      if (it != by_id_.end()) found.push_back(it->second);
    }
    return found;
  }

 private:
  const od::Database& db_;
  std::unordered_map<od::EntityId, const TextSample*> by_id_;
};

// The entity's vertices, a closed polyline's ending where it began.
std::vector<od::Point3> PathOf(const od::Database& db, od::EntityId entity) {
  std::optional<od::VertexList> list = db.Vertices(entity);
  if (!list) return {};
  std::vector<od::Point3> points = std::move(list->points);
  if (list->closed && points.size() > 1) points.push_back(points.front());
  return points;
}

bool CountsAsClosed(const std::vector<od::Point3>& points, double closing) {
  if (points.size() < 3) return false;
  const od::Point3& a = points.front();
  const od::Point3& b = points.back();
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                   (a.z - b.z) * (a.z - b.z)) <= closing;
}

void Decide(const od::Database& db, const SampleFinder& finder, double tolerance,
            double closing, Decision& d) {
  std::vector<od::Point3> points = PathOf(db, d.entity);
  if (CountsAsClosed(points, closing)) {
    for (const TextSample* s : finder.Near(points, 0))
      if (InsideOutline(points, s->point)) d.marked.push_back(s);
    if (d.marked.size() == 1) {
      d.chosen = d.marked[0];
      d.marked.clear();
    } else {
      d.multiple = true;  // none inside counts here too, deliberately
    }
    return;
  }
  const TextSample* nearest = nullptr;
  double nearest_distance = 0;
  for (const TextSample* s : finder.Near(points, tolerance)) {
    double distance = DistanceToPath(points, s->point);
    if (distance < tolerance) d.marked.push_back(s);
    if (!nearest || distance < nearest_distance) nearest = s, nearest_distance = distance;
  }
  if (d.marked.size() > 1) {
    d.multiple = true;
    return;
  }
  d.marked.clear();
  if (!nearest || nearest_distance > tolerance) d.out_of_range = true;
  else d.chosen = nearest;
}

void PrintResult(od::Host& host, size_t completed, size_t listed, size_t out_of_range,
                 size_t multiple) {
  const int c = static_cast<int>(completed), n = static_cast<int>(listed);
  const int r = static_cast<int>(out_of_range), m = static_cast<int>(multiple);
  std::string line;
  if (r && m) line = od::Format(od::Str(od::kStrCompletedRangeMultiple), c, n, r, m);
  else if (r) line = od::Format(od::Str(od::kStrCompletedRange), c, n, r);
  else if (m) line = od::Format(od::Str(od::kStrCompletedMultiple), c, n, m);
  else line = od::Format(od::Str(od::kStrCompletedOutOf), c, n);
  host.Ed().Print(line);
}

}  // namespace

void SetTextWorker(od::CommandContext& context, const od::EntityList& entities) {
  od::Host& host = context.host();
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return;
  od::ObjectDataContainer& container = (*project)->Container();

  ui::OdSelect::Memory& memory = ModuleSetDialogMemory().text;
  ui::OdSelect dialog(TablesInUse(host, entities), memory, container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  if (memory.table.empty() || memory.column.empty()) return;
  std::optional<od::EntityList> gathered = GatherAfterDialog(context, entities);
  if (!gathered) return;
  std::optional<std::string> error_layer = EnsureMarkers(context, *db);
  if (!error_layer) return;

  od::EntityList list = std::move(*gathered);
  std::vector<TextSample> samples = SplitTextSamples(*db, list);
  Result<od::TableDefinition> def = container.GetTable(memory.table);
  const int column = def.ok() ? def->ColumnIndex(memory.column) : -1;
  const double closing = std::pow(10.0, -od::GetLinearPrecision(host));

  // Decided first, written after: writing changes the drawing, which the index follows.
  SampleFinder finder(*db, samples);
  std::vector<Decision> decisions;
  for (od::EntityId entity : list) {
    int record = column < 0 ? -1 : FirstRecordOf(container, entity, memory.table);
    if (record < 0) continue;
    Decision d;
    d.entity = entity;
    d.record = static_cast<size_t>(record);
    Decide(*db, finder, dialog.tolerance(), closing, d);
    decisions.push_back(std::move(d));
  }

  if (!LockForEdits(context)) return;
  size_t completed = 0, multiple = 0, out_of_range = 0;
  for (const Decision& d : decisions) {
    if (d.multiple) ++multiple;
    if (d.out_of_range) ++out_of_range;
    for (const TextSample* s : d.marked)
      (void)db->AddBlockReference(kErrorBlock, s->point, s->height, *error_layer);
    if (!d.chosen) continue;
    std::vector<od::Record> records = container.Records(d.entity);
    if (d.record >= records.size() ||
        static_cast<size_t>(column) >= records[d.record].values.size())
      continue;
    od::Record record = std::move(records[d.record]);
    od::Value& value = record.values[static_cast<size_t>(column)];
    if (od::SetValueFromText(value, d.chosen->text) &&
        container.UpdateRecord(d.entity, d.record, record).ok())
      ++completed;
  }
  PrintResult(host, completed, list.size(), out_of_range, multiple);
}

void SetText(od::CommandContext& context) { SetTextWorker(context, {}); }

}  // namespace veltor::commands
