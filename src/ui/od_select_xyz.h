// "Set OD from object coordinates": a table, the columns that receive X, Y and Z, how the XY
// point and the Z value are taken from an entity, and the decimals of each.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

// How the X and Y of an entity's point are taken from its geometry.
enum class XyMode { kFirst = 0, kLast = 1, kCenter = 2 };
// How its Z is taken from its extents.
enum class ZMode { kMin = 0, kMax = 1, kAverage = 2 };

class OdSelectXyz : public od::DialogModel {
 public:
  enum : int {
    kTableList = 101,
    kXCombo = 110,
    kYCombo = 111,
    kZCombo = 112,
    kZModeCombo = 124,
    kXyModeCombo = 125,
    kXyPrecision = 130,
    kZPrecision = 131,
  };

  // The settings the dialog shows and stores (module-wide, never saved). The command sets
  // both precisions before every run.
  struct Memory {
    std::string table;
    std::string x_column, y_column, z_column;  // empty: not written
    XyMode xy_mode = XyMode::kFirst;
    ZMode z_mode = ZMode::kMin;
    int xy_precision = 0;
    int z_precision = 0;
  };

  // `tables` are shown in the given order.
  OdSelectXyz(std::vector<std::string> tables, Memory& memory,
              const od::ObjectDataContainer& container);

  void OnInit() override;
  void OnChanged(int control_id) override;
  // Stores the choice; a column chosen twice clears all three columns and stores nothing else.
  Status OnOk() override;

 private:
  // Refills the three column lists with an empty entry and the chosen table's columns.
  void ShowColumns();

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
};

}  // namespace veltor::ui
