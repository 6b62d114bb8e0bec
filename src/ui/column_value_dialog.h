// "VeltorEdit": the one-line dialog that asks for the value a whole grid column is set to.
// Its caption names the field and its type, for example "DEPTH (real)".
#pragma once

#include <string>

#include "od/dialog_model.h"

namespace veltor::ui {

class ColumnValueDialog : public od::DialogModel {
 public:
  static constexpr int kValueId = 1000;

  ColumnValueDialog(const std::string& field, const std::string& type_name);
  const std::string& value() const { return Text(kValueId); }
};

}  // namespace veltor::ui
