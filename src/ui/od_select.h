// "Set OD from text": a table, the field that receives the text's string, and how far from
// an open entity a text may lie.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

class OdSelect : public od::DialogModel {
 public:
  enum : int { kTableList = 101, kFieldList = 106, kTolerance = 130 };

  // The settings kept for the session (never saved).
  struct Memory {
    std::string table;
    std::string column;
  };

  // The tolerance the dialog offers.
  static constexpr double kDefaultTolerance = 1.0;

  // `tables` are shown in the given order.
  OdSelect(std::vector<std::string> tables, Memory& memory,
           const od::ObjectDataContainer& container);

  void OnInit() override;
  // A table chosen refills the fields; OK is available once a field is chosen.
  void OnChanged(int control_id) override;
  Status OnOk() override;

  // The result of OK besides the memory.
  double tolerance() const { return tolerance_; }

 private:
  void ShowFields();

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
  double tolerance_ = kDefaultTolerance;
};

}  // namespace veltor::ui
