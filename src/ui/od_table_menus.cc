// The OD table view's menus, keys and selection tools.
#include <algorithm>
#include <unordered_set>

#include "ui/od_table_view.h"

namespace veltor::ui {

const std::vector<std::string>& TableFileMenu() {
  static const std::vector<std::string> menu = {"Save As..."};
  return menu;
}

const std::vector<std::string>& TableEditMenu() {
  static const std::vector<std::string> menu = {
      "Undo",        "Redo",       "Input Coordinates", "Input Graphical Properties",
      "Input Text",  "Create IDs", "Replace Values",    "Copy Values",
      "Rename Fields"};
  return menu;
}

const std::vector<std::string>& TableViewMenu() {
  static const std::vector<std::string> menu = {"Select All", "Find Values", "Invert Selection",
                                                "Sort Selection", "Show Selection"};
  return menu;
}

void OdTableView::RunFileEntry(size_t index) {
  // "Save As..." is offered but writes nothing.
  (void)index;
}

void OdTableView::SendCommand(const std::string& text) {
  host_.Ed().SendStringToExecute(text + "\n");
}

void OdTableView::RunEditEntry(TableEditEntry entry) {
  switch (entry) {
    case TableEditEntry::kUndo: return SendCommand("_UNDO\n");
    case TableEditEntry::kRedo: return SendCommand("_MREDO\n");
    case TableEditEntry::kInputCoordinates: return RunWorker(TableWorker::kSetXyz, false);
    case TableEditEntry::kInputGraphicalProperties: return RunWorker(TableWorker::kSetProp, false);
    case TableEditEntry::kInputText: return RunWorker(TableWorker::kSetText, false);
    case TableEditEntry::kCreateIds: return RunWorker(TableWorker::kSetId, true);
    case TableEditEntry::kReplaceValues: return RunWorker(TableWorker::kReplace, false);
    case TableEditEntry::kCopyValues: return RunWorker(TableWorker::kAddValue, false);
    // A command name no module registers: the host answers with its unknown-command message,
    // and no rename dialog is reachable from the grid.
    case TableEditEntry::kRenameFields: return SendCommand("VELTOR_RENAME_COLUMNS");
  }
}

void OdTableView::RunViewEntry(TableViewEntry entry) {
  switch (entry) {
    case TableViewEntry::kSelectAll: return SelectAll();
    case TableViewEntry::kFindValues: return FindValues();
    case TableViewEntry::kInvertSelection: return InvertSelection();
    case TableViewEntry::kSortSelection: return SortSelection();
    case TableViewEntry::kShowSelection: return ShowSelection();
  }
}

void OdTableView::PressKey(TableKey key) {
  switch (key) {
    case TableKey::kDelete: return DeleteSelectedRows();
    case TableKey::kCtrlA: return SelectAll();
    // Deliberately a single blank, not the selected cells.
    case TableKey::kCtrlC:
      if (clipboard_) clipboard_(" ");
      return;
    case TableKey::kCtrlF: return SendCommand("VELTOR_HAS_SPECIFIC_VALUES");
    case TableKey::kCtrlZ: return SendCommand("_UNDO\n");
    case TableKey::kCtrlY: return SendCommand("_MREDO\n");
    case TableKey::kOther: return;
  }
}

void OdTableView::RunWorker(TableWorker slot, bool reversed_when_all) {
  const Worker& worker = workers_[static_cast<size_t>(slot)];
  if (!worker) return;
  od::EntityList entities;
  for (size_t row : SelectedRows()) entities.push_back(rows_[row].entity);
  if (entities.empty()) {
    for (const GridRow& row : rows_) entities.push_back(row.entity);
    if (reversed_when_all) std::reverse(entities.begin(), entities.end());
  }
  pickfirst_gate_ = false;
  worker(std::move(entities));
  Reload(false);
  pickfirst_gate_ = true;
  modification_gate_ = true;
}

// --- selection ---

std::vector<size_t> OdTableView::SelectedRows() const {
  std::vector<size_t> selected;
  for (size_t i = 0; i < rows_.size(); ++i)
    if (rows_[i].selected) selected.push_back(i);
  return selected;
}

size_t OdTableView::SelectedCount() const {
  return static_cast<size_t>(
      std::count_if(rows_.begin(), rows_.end(), [](const GridRow& row) { return row.selected; }));
}

void OdTableView::SetSelected(size_t row, bool selected) {
  if (row >= rows_.size() || rows_[row].selected == selected) return;
  rows_[row].selected = selected;
  Notify(TableViewChange::kSelection);
}

void OdTableView::SelectOnly(const std::vector<size_t>& rows) {
  for (GridRow& row : rows_) row.selected = false;
  for (size_t row : rows)
    if (row < rows_.size()) rows_[row].selected = true;
  Notify(TableViewChange::kSelection);
}

void OdTableView::ClickRow(size_t row) {
  (void)row;
  grid_focused_ = true;
  Result<od::Project*> project = host_.ActiveProject();
  if (project.ok()) Synchronise();
}

void OdTableView::DoubleClickRow(size_t row) {
  (void)row;
  if (synchronize_) ShowSelection();
}

void OdTableView::Synchronise() {
  if (!grid_focused_) {
    // The change came from the drawing: every row of a selected entity is selected.
    pickfirst_gate_ = false;
    od::EntityList implied = host_.Ed().ImpliedSelection();
    std::unordered_set<od::EntityId> chosen(implied.begin(), implied.end());
    for (GridRow& row : rows_) row.selected = !chosen.empty() && chosen.count(row.entity) > 0;
    pickfirst_gate_ = true;
    Notify(TableViewChange::kSelection);
  } else if (synchronize_) {
    od::EntityList entities;
    for (const GridRow& row : rows_)
      if (row.selected) entities.push_back(row.entity);
    SetPickfirst(entities);
  }
  host_.Ed().UpdateDisplay();
}

void OdTableView::SelectAll() {
  for (GridRow& row : rows_) row.selected = true;
  Notify(TableViewChange::kSelection);
  grid_focused_ = true;
  Synchronise();
}

void OdTableView::InvertSelection() {
  for (GridRow& row : rows_) row.selected = !row.selected;
  Notify(TableViewChange::kSelection);
  grid_focused_ = true;
  Synchronise();
}

void OdTableView::SortSelection() {
  std::vector<GridRow> moved;
  std::vector<GridRow> others;
  for (const GridRow& row : rows_) (row.selected ? moved : others).push_back(row);
  if (moved.empty()) return;
  // The moved rows end up first and stay selected; their running numbers are kept, so "#"
  // still restores load order.
  moved.insert(moved.end(), others.begin(), others.end());
  rows_ = std::move(moved);
  Notify(TableViewChange::kRows);
}

void OdTableView::ShowSelection() {
  grid_focused_ = false;
  if (focus_drawing_) focus_drawing_();
  host_.Ed().SendStringToExecute("_.zoom _o\n");
  host_.Ed().SendStringToExecute("_.select _p\n\n");
}

void OdTableView::FindValues() {
  grid_focused_ = false;
  if (focus_drawing_) focus_drawing_();
  host_.Ed().SendStringToExecute("veltor_has_specific_values\n");
}

}  // namespace veltor::ui
