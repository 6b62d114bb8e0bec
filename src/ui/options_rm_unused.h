// The dialog of VELTOR_RMUNUSED ("Remove Unused OD"): the tables in use, shown only, and the
// unused tables to pick for deletion.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"

namespace veltor::ui {

class OptionsRmUnused : public od::DialogModel {
 public:
  enum : int { kUnusedList = 101, kSelectAllNothing = 102, kUsedList = 106 };

  // Both lists are shown sorted and without system tables.
  OptionsRmUnused(std::vector<std::string> unused, std::vector<std::string> used);

  void OnInit() override;
  // "Select all/nothing" selects every unused line when none is selected, otherwise clears
  // them all.
  std::optional<od::DialogResult> OnButton(int button_id) override;
  Status OnOk() override;

  // After OK: the selected unused tables, in the list's order.
  const std::vector<std::string>& result() const { return result_; }

 private:
  std::vector<std::string> unused_;
  std::vector<std::string> used_;
  std::vector<std::string> result_;
};

}  // namespace veltor::ui
