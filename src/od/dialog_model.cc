#include "od/dialog_model.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "od/format.h"
#include "od/text.h"

namespace veltor::od {

namespace {

const std::string kNoText;
const std::vector<std::string> kNoItems;
const GridRows kNoRows;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }


// A whole 32-bit integer: optional sign and decimal digits, nothing else.
bool ReadInteger(std::string_view text, double* out) {
  size_t i = 0;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  if (i == text.size()) return false;
  for (size_t k = i; k < text.size(); ++k)
    if (text[k] < '0' || text[k] > '9') return false;
  std::string digits(text);
  errno = 0;
  long long value = std::strtoll(digits.c_str(), nullptr, 10);
  if (errno == ERANGE || value < INT32_MIN || value > INT32_MAX) return false;
  *out = static_cast<double>(value);
  return true;
}

// One finite number as "%lf" reads it, nothing after it.
bool ReadReal(std::string_view text, double* out) {
  size_t pos = 0;
  if (!ScanDouble(text, &pos, out) || pos != text.size()) return false;
  return std::isfinite(*out);
}

// The label as the context of a message: without a trailing ":" and blanks.
std::string Context(const Control& control) {
  std::string label = std::string(TrimBlanks(control.label));
  while (!label.empty() && (label.back() == ':' || IsBlank(label.back()))) label.pop_back();
  return label.empty() ? "value" : label;
}

// Bounds read as users typed them: whole numbers without a fraction.
std::string BoundText(double bound) {
  if (bound == std::floor(bound) && std::fabs(bound) < 1e15) return Format("%.0f", bound);
  return Format("%g", bound);
}

bool HasSelection(ControlKind kind) {
  return kind == ControlKind::kComboBox || kind == ControlKind::kListBox;
}

}  // namespace

// --- Control ---------------------------------------------------------------------------------

bool Control::Answerable() const {
  if (!visible || !enabled) return false;
  switch (kind) {
    case ControlKind::kCheckBox:
    case ControlKind::kEditBox:
      return true;
    case ControlKind::kComboBox:
      return !items.empty();
    case ControlKind::kListBox:
      return !items.empty() && list_mode != ListMode::kDisplayOnly;
    case ControlKind::kGrid:
      if (rows.empty()) return false;
      for (size_t c = 0; c < columns.size() && c < editable.size(); ++c)
        if (editable[c]) return true;
      return false;
    case ControlKind::kStaticText:
    case ControlKind::kTextBox:
    case ControlKind::kButton:
      return false;
  }
  return false;
}

bool Control::IsSelected(int index) const {
  return std::binary_search(selection.begin(), selection.end(), index);
}

int Control::SelectedIndex() const { return selection.empty() ? -1 : selection.front(); }

bool operator==(const Control& a, const Control& b) {
  return a.id == b.id && a.kind == b.kind && a.label == b.label && a.enabled == b.enabled &&
         a.visible == b.visible && a.text == b.text && a.checked == b.checked &&
         a.edit_type == b.edit_type && a.minimum == b.minimum && a.maximum == b.maximum &&
         a.items == b.items && a.list_mode == b.list_mode && a.selection == b.selection &&
         a.columns == b.columns && a.editable == b.editable && a.rows == b.rows;
}

std::string EditRule(const Control& edit) {
  if (edit.kind != ControlKind::kEditBox || edit.edit_type == EditType::kText) return "";
  std::string rule = edit.edit_type == EditType::kInteger ? "integer" : "number";
  if (edit.minimum && edit.maximum)
    return rule + " from " + BoundText(*edit.minimum) + " to " + BoundText(*edit.maximum);
  if (edit.minimum) return rule + " of at least " + BoundText(*edit.minimum);
  if (edit.maximum) return rule + " of at most " + BoundText(*edit.maximum);
  return rule;
}

Status CheckEditText(const Control& edit, std::string_view text) {
  if (edit.kind != ControlKind::kEditBox || edit.edit_type == EditType::kText) return Status::Ok();
  text = TrimBlanks(text);
  const bool integer = edit.edit_type == EditType::kInteger;
  double value = 0;
  bool read = integer ? ReadInteger(text, &value) : ReadReal(text, &value);
  if (read && edit.minimum && value < *edit.minimum) read = false;
  if (read && edit.maximum && value > *edit.maximum) read = false;
  if (read) return Status::Ok();
  return Status::Error(Context(edit) + ": requires " + (integer ? "an " : "a ") + EditRule(edit));
}

// --- DialogModel -----------------------------------------------------------------------------

DialogModel::DialogModel(std::string title, DialogSize size)
    : title_(std::move(title)), size_(size) {}

Control& DialogModel::Add(int id, ControlKind kind, std::string label) {
  Control& control = controls_.emplace_back();
  control.id = id;
  control.kind = kind;
  control.label = std::move(label);
  return control;
}

Control& DialogModel::AddStaticText(int id, std::string label) {
  return Add(id, ControlKind::kStaticText, std::move(label));
}

Control& DialogModel::AddTextBox(int id, std::string label) {
  return Add(id, ControlKind::kTextBox, std::move(label));
}

Control& DialogModel::AddCheckBox(int id, std::string label, bool checked) {
  Control& control = Add(id, ControlKind::kCheckBox, std::move(label));
  control.checked = checked;
  return control;
}

Control& DialogModel::AddEditBox(int id, std::string label, EditType type) {
  Control& control = Add(id, ControlKind::kEditBox, std::move(label));
  control.edit_type = type;
  return control;
}

Control& DialogModel::AddComboBox(int id, std::string label) {
  return Add(id, ControlKind::kComboBox, std::move(label));
}

Control& DialogModel::AddListBox(int id, std::string label, ListMode mode) {
  Control& control = Add(id, ControlKind::kListBox, std::move(label));
  control.list_mode = mode;
  return control;
}

Control& DialogModel::AddGrid(int id, std::string label, std::vector<std::string> columns,
                              std::vector<bool> editable) {
  Control& control = Add(id, ControlKind::kGrid, std::move(label));
  editable.resize(columns.size(), false);
  control.columns = std::move(columns);
  control.editable = std::move(editable);
  return control;
}

Control& DialogModel::AddButton(int id, std::string label) {
  return Add(id, ControlKind::kButton, std::move(label));
}

Control* DialogModel::Find(int id) {
  for (Control& control : controls_)
    if (control.id == id) return &control;
  return nullptr;
}

const Control* DialogModel::Find(int id) const {
  for (const Control& control : controls_)
    if (control.id == id) return &control;
  return nullptr;
}

bool DialogModel::Checked(int id) const {
  const Control* control = Find(id);
  return control && control->checked;
}

void DialogModel::SetChecked(int id, bool checked) {
  if (Control* control = Find(id)) control->checked = checked;
}

const std::string& DialogModel::Text(int id) const {
  const Control* control = Find(id);
  return control ? control->text : kNoText;
}

void DialogModel::SetText(int id, std::string text) {
  if (Control* control = Find(id)) control->text = std::move(text);
}

const std::vector<std::string>& DialogModel::Items(int id) const {
  const Control* control = Find(id);
  return control ? control->items : kNoItems;
}

void DialogModel::SetItems(int id, std::vector<std::string> items) {
  if (Control* control = Find(id)) {
    control->items = std::move(items);
    control->selection.clear();
  }
}

int DialogModel::SelectedIndex(int id) const {
  const Control* control = Find(id);
  return control ? control->SelectedIndex() : -1;
}

void DialogModel::SetSelectedIndex(int id, int index) {
  SetSelectedIndices(id, index < 0 ? std::vector<int>{} : std::vector<int>{index});
}

std::vector<int> DialogModel::SelectedIndices(int id) const {
  const Control* control = Find(id);
  return control ? control->selection : std::vector<int>{};
}

void DialogModel::SetSelectedIndices(int id, std::vector<int> indices) {
  Control* control = Find(id);
  if (!control || !HasSelection(control->kind)) return;
  const int count = static_cast<int>(control->items.size());
  indices.erase(std::remove_if(indices.begin(), indices.end(),
                               [count](int i) { return i < 0 || i >= count; }),
                indices.end());
  std::sort(indices.begin(), indices.end());
  indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
  const bool single =
      control->kind == ControlKind::kComboBox || control->list_mode != ListMode::kMultiple;
  if (single && indices.size() > 1) indices.resize(1);
  control->selection = std::move(indices);
}

std::vector<std::string> DialogModel::SelectedItems(int id) const {
  std::vector<std::string> texts;
  if (const Control* control = Find(id))
    for (int index : control->selection)
      if (index >= 0 && static_cast<size_t>(index) < control->items.size())
        texts.push_back(control->items[index]);
  return texts;
}

const GridRows& DialogModel::Rows(int id) const {
  const Control* control = Find(id);
  return control ? control->rows : kNoRows;
}

void DialogModel::SetRows(int id, GridRows rows) {
  Control* control = Find(id);
  if (!control) return;
  for (auto& row : rows) row.resize(control->columns.size());
  control->rows = std::move(rows);
}

void DialogModel::SetCell(int id, size_t row, size_t column, std::string text) {
  Control* control = Find(id);
  if (!control || row >= control->rows.size() || column >= control->rows[row].size()) return;
  control->rows[row][column] = std::move(text);
}

void DialogModel::SetEnabled(int id, bool enabled) {
  if (Control* control = Find(id)) control->enabled = enabled;
}

void DialogModel::SetVisible(int id, bool visible) {
  if (Control* control = Find(id)) control->visible = visible;
}

std::optional<DialogResult> DialogModel::OnButton(int button_id) {
  if (button_id == kIdOk) return DialogResult::kOk;
  if (button_id == kIdCancel) return DialogResult::kCancel;
  return std::nullopt;
}

PressOutcome DialogModel::Press(int button_id) {
  PressOutcome outcome;
  std::optional<DialogResult> result = OnButton(button_id);
  if (!result) return outcome;
  if (*result == DialogResult::kOk) {
    Status stored = OnOk();
    if (!stored.ok()) {
      outcome.refusal = stored;
      return outcome;
    }
  }
  outcome.closes = true;
  outcome.result = *result;
  return outcome;
}

}  // namespace veltor::od
