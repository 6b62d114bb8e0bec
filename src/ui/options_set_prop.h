// "Set OD from object properties": a table, the columns that receive an entity's length,
// area and volume, and the decimals they are rounded to.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

class OptionsSetProp : public od::DialogModel {
 public:
  enum : int {
    kTableList = 120,
    kLengthCombo = 121,
    kAreaCombo = 122,
    kVolumeCombo = 123,
    kPrecision = 130,
  };

  // The settings the dialog stores (module-wide, never saved). The command sets the
  // precision before every run.
  struct Memory {
    std::string table;
    std::string length_column, area_column, volume_column;  // empty: not written
    int precision = 0;
  };

  // `tables` are shown in the given order.
  OptionsSetProp(std::vector<std::string> tables, Memory& memory,
                 const od::ObjectDataContainer& container);

  void OnInit() override;
  void OnChanged(int control_id) override;
  Status OnOk() override;

 private:
  // Refills the three column lists with the chosen table's columns, none selected.
  void ShowColumns();

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
};

}  // namespace veltor::ui
