#include "ui/od_table_view.h"

#include <algorithm>
#include <unordered_set>

#include "od/catalogue.h"
#include "od/command_context.h"
#include "od/string_table.h"
#include "od/text.h"
#include "ui/column_value_dialog.h"
#include "ui/grid_cell_input.h"
#include "ui/natural_compare.h"

namespace veltor::ui {
namespace {

// Cell reads of a screenful of rows touch a few entities; a sort touches them all once.
constexpr size_t kCachedEntities = 4096;

bool SameDefinition(const od::TableDefinition& a, const od::TableDefinition& b) {
  if (a.name != b.name || a.description != b.description || a.columns.size() != b.columns.size())
    return false;
  for (size_t i = 0; i < a.columns.size(); ++i) {
    const od::ColumnDefinition& x = a.columns[i];
    const od::ColumnDefinition& y = b.columns[i];
    if (x.name != y.name || x.type != y.type || x.description != y.description ||
        x.default_value != y.default_value)
      return false;
  }
  return true;
}

}  // namespace

OdTableView::OdTableView(od::Host& host) : host_(host) { host_.App().AddReactor(this); }

OdTableView::~OdTableView() { host_.App().RemoveReactor(this); }

void OdTableView::SetWorker(TableWorker slot, Worker worker) {
  workers_[static_cast<size_t>(slot)] = std::move(worker);
}

void OdTableView::Notify(TableViewChange change) const {
  if (listener_) listener_(change);
}

od::ObjectDataContainer* OdTableView::Container() const {
  Result<od::Project*> project = host_.ActiveProject();
  return project.ok() ? &(*project)->Container() : nullptr;
}

void OdTableView::Hide(bool cancel) {
  if (cancel) {
    for (GridRow& row : rows_) row.selected = false;
    Notify(TableViewChange::kSelection);
    SetPickfirst({});
  }
  visible_ = false;
}

// --- the table combo ---

void OdTableView::FillTableChoices() {
  od::ObjectDataContainer* container = Container();
  if (!container) return;
  std::vector<std::string> names = od::GetAllTableNames(*container);
  if (names.empty()) current_table_.clear();
  table_choices_.assign(1, "");
  for (std::string& name : names)
    if (!od::IsSystemTableName(name)) table_choices_.push_back(std::move(name));
  Notify(TableViewChange::kTables);
}

size_t OdTableView::chosen_index() const {
  auto at = std::find(table_choices_.begin() + 1, table_choices_.end(), current_table_);
  return at == table_choices_.end() ? 0 : static_cast<size_t>(at - table_choices_.begin());
}

void OdTableView::ChooseTable(const std::string& table) {
  if (table == current_table_) return;
  current_table_ = table;
  remembered_definition_.reset();
  if (od::ObjectDataContainer* container = Container()) {
    Result<od::TableDefinition> definition = container->GetTable(table);
    remembered_definition_ = definition.ok() ? *definition : od::TableDefinition{};
  }
  Reload(false);
}

void OdTableView::Reload(bool refill_tables) {
  od::ObjectDataContainer* container = Container();
  od::Database* db = host_.WorkingDatabase();
  if (!container || !db) return;
  if (refill_tables) FillTableChoices();
  ForgetAll();
  rows_.clear();
  column_names_.clear();
  if (!current_table_.empty()) {
    rows_ = LoadGridRows(*db, *container, current_table_);
    Result<od::TableDefinition> definition = container->GetTable(current_table_);
    if (definition.ok())
      for (const od::ColumnDefinition& column : definition->columns)
        column_names_.push_back(column.name);
  }
  descending_next_ = false;
  Notify(TableViewChange::kLayout);
}

// --- cells ---

size_t OdTableView::ColumnCount() const {
  return column_names_.empty() ? 0 : column_names_.size() + 1;
}

std::string OdTableView::ColumnTitle(size_t column) const {
  if (column == 0) return column_names_.empty() ? "" : "#";
  return column <= column_names_.size() ? column_names_[column - 1] : "";
}

void OdTableView::ForgetAll() const { record_cache_.clear(); }

void OdTableView::Forget(od::EntityId entity) const { record_cache_.erase(entity); }

const std::vector<od::Record>& OdTableView::RecordsOf(od::EntityId entity) const {
  auto at = record_cache_.find(entity);
  if (at != record_cache_.end()) return at->second;
  if (record_cache_.size() >= kCachedEntities) record_cache_.clear();
  std::vector<od::Record> records;
  if (od::ObjectDataContainer* container = Container()) {
    size_t damaged = 0;
    records = container->RecordsOf(entity, {current_table_}, damaged);
  }
  return record_cache_.emplace(entity, std::move(records)).first->second;
}

const od::Record* OdTableView::RecordOf(const GridRow& row) const {
  const std::vector<od::Record>& records = RecordsOf(row.entity);
  return row.ordinal < records.size() ? &records[row.ordinal] : nullptr;
}

std::string OdTableView::CellText(size_t row, size_t column) const {
  if (row >= rows_.size() || column >= ColumnCount()) return "";
  if (column == 0) return std::to_string(rows_[row].number);
  const od::Record* record = RecordOf(rows_[row]);
  if (!record || column - 1 >= record->values.size()) return "";
  return od::ValueToText(record->values[column - 1]);
}

NamedValues OdTableView::BeforeValues(const GridRow& row) const {
  const od::Record* record = RecordOf(row);
  return record ? NameValues(column_names_, *record) : NamedValues{};
}

// --- sorting ---

std::vector<std::u16string> OdTableView::ColumnKeys(size_t field) const {
  std::vector<std::u16string> keys(rows_.size());
  od::ObjectDataContainer* container = Container();
  if (!container) return keys;
  // The records are read in load order, which is the drawing's own order: memory is then
  // read front to back, and the rows of one entity follow each other (read once for them).
  std::vector<uint32_t> load_order(rows_.size());
  for (size_t i = 0; i < load_order.size(); ++i) load_order[i] = static_cast<uint32_t>(i);
  std::sort(load_order.begin(), load_order.end(),
            [this](uint32_t a, uint32_t b) { return rows_[a].number < rows_[b].number; });
  od::EntityId read = od::kNullId;
  std::vector<od::Record> records;
  for (uint32_t i : load_order) {
    const GridRow& row = rows_[i];
    if (row.entity != read || records.empty()) {
      size_t damaged = 0;
      records = container->RecordsOf(row.entity, {current_table_}, damaged);
      read = row.entity;
    }
    if (row.ordinal < records.size() && field < records[row.ordinal].values.size())
      keys[i] = od::Utf8ToUtf16(od::ValueToText(records[row.ordinal].values[field]));
  }
  return keys;
}

void OdTableView::SortByColumn(size_t column) {
  if (column >= ColumnCount()) return;
  bool descending = column == last_sorted_column_ ? descending_next_ : false;
  last_sorted_column_ = column;
  if (column == 0) {
    std::stable_sort(rows_.begin(), rows_.end(), [descending](const GridRow& a, const GridRow& b) {
      return descending ? a.number > b.number : a.number < b.number;
    });
  } else {
    // Each text is read and converted once; the comparison then runs on UTF-16 code units,
    // and the sort moves row positions, not texts.
    std::vector<std::u16string> keys = ColumnKeys(column - 1);
    std::vector<uint32_t> order(rows_.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<uint32_t>(i);
    // The natural comparison is not a strict order (a prefix equals the longer text, and an
    // empty text is "before" another empty one), so the sort is a merge sort, which stays
    // within the sequence whatever the comparison answers; two empty texts count as equal.
    std::stable_sort(order.begin(), order.end(), [&keys, descending](uint32_t a, uint32_t b) {
      if (keys[a].empty() && keys[b].empty()) return false;
      int comparison = NaturalCompare(keys[a], keys[b]);
      return descending ? comparison > 0 : comparison < 0;
    });
    std::vector<GridRow> sorted;
    sorted.reserve(rows_.size());
    for (uint32_t i : order) sorted.push_back(rows_[i]);
    rows_ = std::move(sorted);
  }
  descending_next_ = !descending;
  Notify(TableViewChange::kRows);
}

// --- writing ---

void OdTableView::WriteLocked(const std::function<void(od::ObjectDataContainer&)>& write) {
  od::ObjectDataContainer* container = Container();
  if (!container) return;
  modification_gate_ = false;
  od::RunCommand(host_, Name(), [&](od::CommandContext& context) {
    // A drawing another holder has locked is not written; the edit is dropped.
    if (!context.LockForWrite().ok()) return;
    write(*container);
  });
  modification_gate_ = true;
}

void OdTableView::SetPickfirst(const od::EntityList& entities) {
  pickfirst_gate_ = false;
  host_.Ed().SetPickfirst({});
  if (!entities.empty()) host_.Ed().SetPickfirst(entities);
  pickfirst_gate_ = true;
}

void OdTableView::EditCell(size_t row, size_t column, const std::optional<std::string>& text) {
  if (!text || column == 0 || row >= rows_.size() || column >= ColumnCount()) return;
  if (*text == CellText(row, column)) return;
  const GridRow target = rows_[row];
  const od::Record* record = RecordOf(target);
  if (!record || column - 1 >= record->values.size()) return;
  NamedValues before = BeforeValues(target);
  od::Value value = record->values[column - 1];
  ParseCellInput(value, *text);
  WriteLocked([&](od::ObjectDataContainer& container) {
    WriteBackValue(container, target.entity, current_table_, column - 1, value, before);
  });
  Forget(target.entity);
  // The edited entity becomes the drawing's selection; the grid hears of it as any other
  // pickfirst change.
  host_.Ed().SetPickfirst({});
  host_.Ed().SetPickfirst({target.entity});
  Notify(TableViewChange::kCells);
}

od::Value OdTableView::TemplateValue(size_t field) const {
  if (const od::Record* record = RecordOf(rows_.front()))
    if (field < record->values.size()) return record->values[field];
  if (remembered_definition_ && field < remembered_definition_->columns.size())
    return od::Value(remembered_definition_->columns[field].type);
  return od::Value();
}

void OdTableView::SetWholeColumn(size_t column) {
  if (column == 0 || column >= ColumnCount() || rows_.empty()) return;
  const size_t field = column - 1;
  od::Value value = TemplateValue(field);
  ColumnValueDialog dialog(ColumnTitle(column), CellTypeName(value));
  if (host_.Ui().ShowModal(dialog) != od::DialogResult::kOk) return;
  ParseCellInput(value, dialog.value());
  std::vector<size_t> selected = SelectedRows();
  WriteLocked([&](od::ObjectDataContainer& container) {
    if (!selected.empty()) {
      for (size_t row : selected) {
        NamedValues before = BeforeValues(rows_[row]);
        WriteBackValue(container, rows_[row].entity, current_table_, field, value, before);
        Forget(rows_[row].entity);
      }
      return;
    }
    // Every record of the table on each row's entity (an entity with several rows is written
    // once per row, with the same result).
    for (const GridRow& row : rows_)
      for (IndexedRecord& r : TableRecordsOf(container, row.entity, current_table_)) {
        if (field >= r.record.values.size()) continue;
        r.record.values[field] = value;
        (void)container.UpdateRecord(row.entity, r.index, r.record);
      }
  });
  if (selected.empty()) {
    Reload(false);
  } else {
    ForgetAll();
    Notify(TableViewChange::kCells);
  }
}

void OdTableView::DeleteSelectedRows() {
  std::vector<size_t> selected = SelectedRows();
  std::vector<od::EntityId> entities;
  std::unordered_set<od::EntityId> seen;
  for (size_t row : selected)
    if (seen.insert(rows_[row].entity).second) entities.push_back(rows_[row].entity);
  od::MessageAnswer answer = host_.Ui().MessageBox(
      od::Str(od::kStrTableTitle), od::Str(od::kStrDetachSelectedOd), od::MessageButtons::kOkCancel);
  if (answer != od::MessageAnswer::kOk || selected.empty()) return;
  // Every row's values are read before the first record goes.
  std::vector<NamedValues> befores;
  for (size_t row : selected) befores.push_back(BeforeValues(rows_[row]));
  bool refused = true;  // stays so when the drawing could not be locked
  WriteLocked([&](od::ObjectDataContainer& container) {
    refused = false;
    for (const NamedValues& before : befores)
      for (od::EntityId entity : entities)
        if (RemoveMatchingRecord(container, entity, current_table_, before) ==
            RemoveOutcome::kFailed)
          refused = true;
  });
  if (refused) {
    // A record the drawing kept (a refused write or lock) keeps its row: the grid shows what
    // the drawing holds.
    Reload(false);
    SetPickfirst({});
    return;
  }
  for (auto row = selected.rbegin(); row != selected.rend(); ++row)
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(*row));
  RenumberRows(entities);
  Notify(TableViewChange::kRows);
  SetPickfirst({});
  if (focus_drawing_) focus_drawing_();
}

void OdTableView::RenumberRows(const std::vector<od::EntityId>& entities) {
  // Records keep their order when one of them is detached, so the rows left of an entity,
  // in their old order, take the records left.
  for (od::EntityId entity : entities) {
    Forget(entity);
    std::vector<GridRow*> left;
    for (GridRow& row : rows_)
      if (row.entity == entity) left.push_back(&row);
    std::sort(left.begin(), left.end(),
              [](const GridRow* a, const GridRow* b) { return a->ordinal < b->ordinal; });
    for (size_t i = 0; i < left.size(); ++i) left[i]->ordinal = static_cast<uint32_t>(i);
  }
}

// --- reactions ---

void OdTableView::ObjectModified(od::ObjectId id) {
  if (!modification_gate_) return;
  Forget(id);
  for (const GridRow& row : rows_)
    if (row.entity == id) return Notify(TableViewChange::kCells);
}

void OdTableView::ObjectErased(od::ObjectId id, bool erased) {
  Forget(id);
  if (!erased) return;
  size_t before = rows_.size();
  rows_.erase(std::remove_if(rows_.begin(), rows_.end(),
                             [id](const GridRow& row) { return row.entity == id; }),
              rows_.end());
  if (rows_.size() != before) Notify(TableViewChange::kRows);
}

void OdTableView::DocumentActivated(const std::string& document) {
  (void)document;
  Reload(true);
}

void OdTableView::PickfirstModified() {
  if (!pickfirst_gate_ || !visible_ || current_table_.empty()) return;
  od::ObjectDataContainer* container = Container();
  if (!container) return;
  Result<od::TableDefinition> read = container->GetTable(current_table_);
  od::TableDefinition definition = read.ok() ? *read : od::TableDefinition{};
  if (!read.ok()) current_table_.clear();
  if (!remembered_definition_ || !SameDefinition(definition, *remembered_definition_)) {
    remembered_definition_ = definition;
    Reload(true);
    return;
  }
  Synchronise();
}

}  // namespace veltor::ui
