// A modal dialog as plain data and behaviour: what front ends render and tests drive.
//
// A model owns an ordered list of controls (ids, labels, texts, items, selections, checked
// states, grid cells) and reacts through four hooks: OnInit fills the controls when the dialog
// opens, OnChanged follows a change the user made, OnButton decides what a button does and
// OnOk checks and stores the result. Front ends change control state only through the setters
// below and then call OnChanged; they never interpret a model's meaning.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "od/status.h"
#include "od/ui_host.h"

namespace veltor::od {

// The button ids every front end knows, numbered as the host numbers them.
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;

enum class ControlKind {
  kStaticText,  // a label; nothing to answer
  kTextBox,     // read-only multi-line text
  kCheckBox,
  kEditBox,     // one line of text, optionally a number within a range
  kComboBox,    // one item of a drop-down list
  kListBox,     // one or several items of a list
  kGrid,        // rows of cells under column titles; some columns editable
  kButton,
};

// What an edit box holds.
enum class EditType { kText, kInteger, kReal };

// How a list box selects.
enum class ListMode { kSingle, kMultiple, kDisplayOnly };

// A requested size in dialog units; front ends may treat it as a hint.
struct DialogSize {
  int width = 0;
  int height = 0;
};

// A grid's cells: rows[row][column].
using GridRows = std::vector<std::vector<std::string>>;

// One control. Each kind uses the fields named for it and leaves the others empty.
struct Control {
  int id = 0;
  ControlKind kind = ControlKind::kStaticText;
  std::string label;  // the caption; for a button its text
  bool enabled = true;
  bool visible = true;

  std::string text;  // kTextBox, kEditBox
  bool checked = false;  // kCheckBox

  EditType edit_type = EditType::kText;  // kEditBox
  std::optional<double> minimum;  // kEditBox numbers: inclusive bounds, when given
  std::optional<double> maximum;

  std::vector<std::string> items;  // kComboBox, kListBox
  ListMode list_mode = ListMode::kSingle;  // kListBox (a combo box always selects one)
  std::vector<int> selection;  // kComboBox, kListBox: selected item indices, ascending

  std::vector<std::string> columns;  // kGrid: column titles
  std::vector<bool> editable;  // kGrid: per column, whether its cells may be edited
  GridRows rows;  // kGrid: one text per column in every row

  // True when the user can change this control now: shown, enabled, and of a kind that holds
  // an answer (a display-only list, a grid without editable cells and a button do not).
  bool Answerable() const;
  bool IsSelected(int index) const;
  // The first selected index, or -1 when nothing is selected.
  int SelectedIndex() const;
};

bool operator==(const Control& a, const Control& b);
inline bool operator!=(const Control& a, const Control& b) { return !(a == b); }

// What an edit box accepts, as users read it: "integer from 0 to 8", "number of at least 0",
// "integer", "number"; empty for a text edit.
std::string EditRule(const Control& edit);

// Checks `text` against an edit box's type and bounds. Text edits take anything. An integer
// edit takes an optional sign and decimal digits, a real edit one number as "%lf" reads it;
// blanks around the number are allowed, nothing else. Fails with "<label>: <reason>", for
// example "Precision: requires an integer from 0 to 8".
Status CheckEditText(const Control& edit, std::string_view text);

// What pressing a button did.
struct PressOutcome {
  bool closes = false;  // the dialog closes with `result`
  DialogResult result = DialogResult::kCancel;
  Status refusal;  // OnOk refused: the dialog stays open and shows this message
};

class DialogModel {
 public:
  DialogModel(std::string title, DialogSize size);
  virtual ~DialogModel() = default;
  DialogModel(const DialogModel&) = delete;
  DialogModel& operator=(const DialogModel&) = delete;

  const std::string& title() const { return title_; }
  void SetTitle(std::string title) { title_ = std::move(title); }
  DialogSize size() const { return size_; }
  void SetSize(DialogSize size) { size_ = size; }

  // --- building (usually in the constructor) ---
  // Each adds a control after the others and returns it; the reference stays valid while the
  // model lives (adding more controls does not move it). Ids are the caller's to keep unique.
  Control& AddStaticText(int id, std::string label);
  Control& AddTextBox(int id, std::string label);
  Control& AddCheckBox(int id, std::string label, bool checked = false);
  Control& AddEditBox(int id, std::string label, EditType type = EditType::kText);
  Control& AddComboBox(int id, std::string label);
  Control& AddListBox(int id, std::string label, ListMode mode);
  Control& AddGrid(int id, std::string label, std::vector<std::string> columns,
                   std::vector<bool> editable);
  Control& AddButton(int id, std::string label);

  // --- controls ---
  // In the order they were added (the order front ends show them in).
  const std::deque<Control>& controls() const { return controls_; }
  std::deque<Control>& controls() { return controls_; }
  // The control with `id`, or nullptr.
  Control* Find(int id);
  const Control* Find(int id) const;

  // Typed access by id. Reading an unknown id gives an empty value; writing to one does
  // nothing. Indices out of range are ignored.
  bool Checked(int id) const;
  void SetChecked(int id, bool checked);
  const std::string& Text(int id) const;
  void SetText(int id, std::string text);
  const std::vector<std::string>& Items(int id) const;
  // Replaces the items and clears the selection.
  void SetItems(int id, std::vector<std::string> items);
  int SelectedIndex(int id) const;  // -1 when nothing is selected
  // Selects one item (-1 clears the selection).
  void SetSelectedIndex(int id, int index);
  std::vector<int> SelectedIndices(int id) const;
  // Selects the given items (sorted and made unique; a single-choice control keeps the first).
  void SetSelectedIndices(int id, std::vector<int> indices);
  // The texts of the selected items, in item order.
  std::vector<std::string> SelectedItems(int id) const;
  const GridRows& Rows(int id) const;
  // Replaces a grid's rows; each row is padded or cut to the number of columns.
  void SetRows(int id, GridRows rows);
  void SetCell(int id, size_t row, size_t column, std::string text);
  void SetEnabled(int id, bool enabled);
  void SetVisible(int id, bool visible);

  // --- behaviour ---
  // Called by the front end once before it shows the dialog.
  virtual void OnInit() {}
  // Called by the front end after the user changed a control's state (selection, check, text
  // or a cell): the model updates what depends on it.
  virtual void OnChanged(int control_id) { (void)control_id; }
  // Decides what a pressed button does: the result the dialog closes with, or nothing to keep
  // it open. The default closes on kIdOk with kOk and on kIdCancel with kCancel.
  virtual std::optional<DialogResult> OnButton(int button_id);
  // Checks and stores the result before the dialog closes with kOk; a failed status keeps it
  // open and its message is shown to the user.
  virtual Status OnOk() { return Status::Ok(); }

  // A button press as every front end runs it: OnButton, then OnOk when that closes with kOk.
  PressOutcome Press(int button_id);

 private:
  Control& Add(int id, ControlKind kind, std::string label);

  std::string title_;
  DialogSize size_;
  std::deque<Control> controls_;
};

}  // namespace veltor::od
