// The OD table palette: one Object Data table of the active drawing as an editable grid that
// follows the drawing and its selection. This is the toolkit-free model; front ends draw it
// (a Qt table model, a Win32 owner-data list, the console's paged table) and forward the
// user's gestures to it.
//
// The grid is virtual: rows name their records (GridRow) and cell texts are read from the
// drawing when asked for, so a table of a million records costs a few bytes a row.
//
// There is one view per process; its current table, Synchronize flag and sort state live as
// long as it does, also while it is hidden.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "od/application.h"
#include "od/host.h"
#include "od/object_data.h"
#include "od/palette.h"
#include "ui/od_table_rows.h"

namespace veltor::ui {

// What changed in the view, for the front end to redraw.
enum class TableViewChange {
  kLayout,     // columns and rows were replaced (a reload)
  kRows,       // rows were removed or reordered
  kCells,      // cell texts changed
  kSelection,  // row selection changed
  kTables,     // the table choices were refilled
};

// The Edit menu, in menu order.
enum class TableEditEntry {
  kUndo,
  kRedo,
  kInputCoordinates,
  kInputGraphicalProperties,
  kInputText,
  kCreateIds,
  kReplaceValues,
  kCopyValues,
  kRenameFields,
};

// The View menu, in menu order.
enum class TableViewEntry { kSelectAll, kFindValues, kInvertSelection, kSortSelection, kShowSelection };

// The keys the grid acts on; every other key does nothing.
enum class TableKey { kDelete, kCtrlA, kCtrlC, kCtrlF, kCtrlZ, kCtrlY, kOther };

// The editing workers the Edit menu calls, each on a list of entity ids.
enum class TableWorker { kSetXyz, kSetProp, kSetText, kSetId, kReplace, kAddValue };
inline constexpr size_t kTableWorkerCount = 6;

// The menu labels, as the palette shows them.
const std::vector<std::string>& TableFileMenu();
const std::vector<std::string>& TableEditMenu();
const std::vector<std::string>& TableViewMenu();

class OdTableView : public od::Palette, public od::Reactor {
 public:
  using Worker = std::function<void(od::EntityList)>;
  using Listener = std::function<void(TableViewChange)>;

  // Registers itself as a reactor of `host`'s application; `host` must outlive the view.
  explicit OdTableView(od::Host& host);
  ~OdTableView() override;
  OdTableView(const OdTableView&) = delete;
  OdTableView& operator=(const OdTableView&) = delete;

  std::string Name() const override { return "VELTOR_TABLE"; }

  // --- wiring by the command and the front end ---
  void SetWorker(TableWorker slot, Worker worker);
  void SetListener(Listener listener) { listener_ = std::move(listener); }
  // Where Ctrl+C puts its text (a front end without a clipboard may leave it unset).
  void SetClipboard(std::function<void(const std::string&)> clipboard) {
    clipboard_ = std::move(clipboard);
  }
  // Gives the keyboard focus to the drawing (the host's main window).
  void SetFocusDrawing(std::function<void()> focus) { focus_drawing_ = std::move(focus); }
  // Tells the view whether its grid has the keyboard focus: synchronising pushes the grid's
  // selection into the drawing when it has, and pulls the drawing's when it has not.
  void SetGridFocused(bool focused) { grid_focused_ = focused; }
  bool grid_focused() const { return grid_focused_; }

  // --- showing ---
  void Show() { visible_ = true; }
  // Hides the view; `cancel` (Esc, the hidden Cancel button) first deselects every row and
  // clears the drawing's pickfirst set.
  void Hide(bool cancel);
  bool visible() const { return visible_; }

  // --- the table combo ---
  // Refills the choices: an empty entry, then every non-system table in catalogue order.
  // Without a project nothing changes; with no tables the current table becomes empty.
  void FillTableChoices();
  const std::vector<std::string>& table_choices() const { return table_choices_; }
  // The choice showing the current table (0, the empty entry, when none matches).
  size_t chosen_index() const;
  // Shows `table` ("" clears the grid); choosing the current table does nothing.
  void ChooseTable(const std::string& table);
  const std::string& current_table() const { return current_table_; }

  // Rebuilds columns and rows from the drawing (Refresh, document switches, after workers);
  // `refill_tables` refills the combo first. Without a project the grid keeps what it shows.
  void Reload(bool refill_tables);

  // --- the grid ---
  // Grid column 0 is "#", grid column k shows field k-1. No fields, no columns.
  size_t ColumnCount() const;
  std::string ColumnTitle(size_t column) const;
  size_t RowCount() const { return rows_.size(); }
  const GridRow& Row(size_t row) const { return rows_[row]; }
  // The text of a cell: the running number, or the field's value as the commands print it.
  // Empty for a row or column out of range or a record that is gone.
  std::string CellText(size_t row, size_t column) const;

  // A click on a column header: sorts by it (a second click on the same one reverses; "#"
  // restores load order). Selected rows stay selected.
  void SortByColumn(size_t column);
  // The in-place editor finished on a cell; nothing for no text (cancelled) or column 0.
  // The value is parsed by the field's type and written into the first matching record.
  void EditCell(size_t row, size_t column, const std::optional<std::string>& text);
  // A right click on a field column's header: asks for a value and writes it into the
  // selected rows' records, or every record of the table when no row is selected.
  void SetWholeColumn(size_t column);
  // The Delete key: asks, then detaches the selected rows' records.
  void DeleteSelectedRows();

  // --- menus and keys ---
  void RunFileEntry(size_t index);  // "Save As..." does nothing
  void RunEditEntry(TableEditEntry entry);
  void RunViewEntry(TableViewEntry entry);
  void PressKey(TableKey key);
  bool synchronize() const { return synchronize_; }
  void SetSynchronize(bool on) { synchronize_ = on; }

  // --- selection ---
  bool IsSelected(size_t row) const { return row < rows_.size() && rows_[row].selected; }
  // Changes the grid's selection as a front end's grid control does (no synchronising).
  void SetSelected(size_t row, bool selected);
  void SelectOnly(const std::vector<size_t>& rows);
  size_t SelectedCount() const;
  // A click on a row: synchronises when the drawing has a project.
  void ClickRow(size_t row);
  // A double click: "Show Selection" when Synchronize is on.
  void DoubleClickRow(size_t row);
  // Brings grid and drawing selection in step, in the direction the focus says.
  void Synchronise();

  // --- reactions to the drawing ---
  void ObjectModified(od::ObjectId id) override;
  void ObjectErased(od::ObjectId id, bool erased) override;
  void DocumentActivated(const std::string& document) override;
  void PickfirstModified() override;

 private:
  od::ObjectDataContainer* Container() const;
  const std::vector<od::Record>& RecordsOf(od::EntityId entity) const;
  const od::Record* RecordOf(const GridRow& row) const;
  NamedValues BeforeValues(const GridRow& row) const;
  // The text of `field` in every row, in row order, as sort keys.
  std::vector<std::u16string> ColumnKeys(size_t field) const;
  od::Value TemplateValue(size_t field) const;
  void Notify(TableViewChange change) const;
  void Forget(od::EntityId entity) const;
  void ForgetAll() const;
  // Queues a host command for the active drawing with one "\n" added.
  void SendCommand(const std::string& text);
  void RunWorker(TableWorker slot, bool reversed_when_all);
  // Runs `write` as one undo step with the drawing locked and the modification gate down.
  void WriteLocked(const std::function<void(od::ObjectDataContainer&)>& write);
  void SetPickfirst(const od::EntityList& entities);
  std::vector<size_t> SelectedRows() const;
  void SelectAll();
  void InvertSelection();
  void SortSelection();
  void ShowSelection();
  void FindValues();
  // Gives the rows of `entities` their records again after some were detached.
  void RenumberRows(const std::vector<od::EntityId>& entities);

  od::Host& host_;
  std::array<Worker, kTableWorkerCount> workers_;
  Listener listener_;
  std::function<void(const std::string&)> clipboard_;
  std::function<void()> focus_drawing_;

  std::string current_table_;
  std::vector<std::string> table_choices_{""};
  std::vector<std::string> column_names_;
  std::optional<od::TableDefinition> remembered_definition_;
  std::vector<GridRow> rows_;
  bool synchronize_ = true;
  size_t last_sorted_column_ = 0;
  bool descending_next_ = false;
  bool pickfirst_gate_ = true;
  bool modification_gate_ = true;
  bool visible_ = false;
  bool grid_focused_ = false;

  // Records read for cells, by entity; bounded, dropped on every change.
  mutable std::unordered_map<od::EntityId, std::vector<od::Record>> record_cache_;
};

}  // namespace veltor::ui
