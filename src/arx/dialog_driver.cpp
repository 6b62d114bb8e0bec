#include "arx/dialog_driver.h"

#include <utility>

#include "od/text.h"

namespace veltor::arx {

void DialogDriver::Change(int id, const std::function<void()>& change) {
  const od::Control* control = model_.Find(id);
  if (!control) return;
  const od::Control before = *control;
  change();
  const od::Control* now = model_.Find(id);
  if (now && *now != before) model_.OnChanged(id);
}

void DialogDriver::Check(int id, bool checked) {
  Change(id, [&] { model_.SetChecked(id, checked); });
}

void DialogDriver::Select(int id, std::vector<int> indices) {
  Change(id, [&] { model_.SetSelectedIndices(id, std::move(indices)); });
}

void DialogDriver::EditCell(int id, size_t row, size_t column, std::string text) {
  Change(id, [&] { model_.SetCell(id, row, column, std::move(text)); });
}

std::string DialogDriver::CommitEdit(int id, std::string text) {
  const od::Control* control = model_.Find(id);
  if (!control || control->kind != od::ControlKind::kEditBox || !control->visible ||
      !control->enabled)
    return std::string();
  if (control->edit_type != od::EditType::kText) text = std::string(od::TrimBlanks(text));
  if (text == control->text) return std::string();
  Status fits = od::CheckEditText(*control, text);
  if (!fits.ok()) return fits.message() + ".";
  Change(id, [&] { model_.SetText(id, std::move(text)); });
  return std::string();
}

PressResult DialogDriver::Press(int id, const std::function<std::string(int)>& edit_text) {
  PressResult outcome;
  if (id == od::kIdCancel) {
    outcome.closes = true;
    outcome.result = od::DialogResult::kCancel;
    return outcome;
  }
  // The ids first: taking a text may run OnChanged, which may add or change controls.
  std::vector<int> edits;
  for (const od::Control& control : model_.controls())
    if (control.kind == od::ControlKind::kEditBox) edits.push_back(control.id);
  for (int edit : edits) {
    std::string refusal = CommitEdit(edit, edit_text(edit));
    if (!refusal.empty()) {
      outcome.refusal = std::move(refusal);
      outcome.refused_edit = edit;
      return outcome;
    }
  }
  od::PressOutcome pressed = model_.Press(id);
  outcome.closes = pressed.closes;
  outcome.result = pressed.result;
  if (!pressed.closes && !pressed.refusal.ok()) outcome.refusal = pressed.refusal.message();
  return outcome;
}

}  // namespace veltor::arx
