// What the Win32 dialog does with the user's gestures, apart from the windows, so that it is
// tested on any system. The contract is every front end's: a change goes into the model
// through its setters, then OnChanged, only when the control really changed; an edit box's
// text is checked against its type and range before it is taken; a button press takes every
// edit box's text first, then runs DialogModel::Press (OnButton, then OnOk); Cancel closes
// with kCancel without pressing anything.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "od/dialog_model.h"

namespace veltor::arx {

// What a button press came to.
struct PressResult {
  bool closes = false;
  od::DialogResult result = od::DialogResult::kCancel;
  std::string refusal;   // shown while the dialog stays open; empty for none
  int refused_edit = 0;  // the edit box whose text was refused (to focus), or 0
};

class DialogDriver {
 public:
  // `model` must outlive the driver.
  explicit DialogDriver(od::DialogModel& model) : model_(model) {}

  void Check(int id, bool checked);
  // A combo box's or list box's selection (item indices).
  void Select(int id, std::vector<int> indices);
  void EditCell(int id, size_t row, size_t column, std::string text);
  // Takes an edit box's text (numbers without their surrounding blanks). Returns the refusal,
  // "<label>: <reason>.", when the text does not fit the box; empty when it was taken or the
  // box is hidden, disabled or unchanged.
  std::string CommitEdit(int id, std::string text);
  // Presses button `id`; `edit_text` gives the text an edit box shows now.
  PressResult Press(int id, const std::function<std::string(int)>& edit_text);

 private:
  // Runs `change` on the model, then OnChanged(id) when control `id` is not as it was.
  void Change(int id, const std::function<void()>& change);

  od::DialogModel& model_;
};

}  // namespace veltor::arx
