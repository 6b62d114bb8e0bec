// The dialog of VELTOR_REPLACE ("Replace OD values"): one table, one or several of its columns,
// the old-value pattern and the new text.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

class OptionsReplace : public od::DialogModel {
 public:
  enum : int {
    kArrow = -1,  // the static "-->" between the two edit boxes
    kColumnList = 101,
    kTableList = 106,
    kOldValue = 127,
    kNewValue = 128,
  };

  // What OK returns.
  struct Choice {
    std::string table;
    std::vector<std::string> columns;  // in definition order
    std::string pattern;               // as typed
    std::string new_text;              // as typed
  };

  // Offers `tables` (system tables left out) in the given order; the first is chosen and its
  // columns, read from `container`, are listed with none selected. `container` may be null
  // (no Object Data: no columns); it must outlive the dialog.
  OptionsReplace(std::vector<std::string> tables, const od::ObjectDataContainer* container);

  void OnInit() override;
  // Choosing a table lists its columns (none selected).
  void OnChanged(int control_id) override;
  // Refuses OK until a table and at least one column are chosen.
  Status OnOk() override;

  const Choice& choice() const { return choice_; }

 private:
  void ListColumns();

  std::vector<std::string> tables_;
  const od::ObjectDataContainer* container_;
  Choice choice_;
};

}  // namespace veltor::ui
