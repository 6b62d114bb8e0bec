// The table-choice dialog of VELTOR_RM ("Detach OD"): a sorted list of tables to pick from.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"

namespace veltor::ui {

class PGUIODList : public od::DialogModel {
 public:
  enum : int { kTableList = 101, kSelectAllNothing = 102 };

  // Offers every name of `tables` except system tables, sorted by the list, none selected.
  // On OK removes from `tables` itself every name whose line is not selected, so that it then
  // holds the chosen names in their original order. `tables` must outlive the dialog.
  explicit PGUIODList(std::vector<std::string>& tables);

  void OnInit() override;
  // "Select all/nothing" selects every line, or clears them all when all are selected.
  std::optional<od::DialogResult> OnButton(int button_id) override;
  Status OnOk() override;

 private:
  std::vector<std::string>& tables_;
};

}  // namespace veltor::ui
