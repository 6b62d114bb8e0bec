// "Generate IDs": a table, the field that receives the numbers, a prefix and a suffix for
// character fields, and the first number, proposed from the values already in the drawing.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

class OptionsWild : public od::DialogModel {
 public:
  enum : int { kTableList = 116, kFieldCombo = 117, kPrefix = 118, kSuffix = 119, kFirst = 130 };

  // The settings kept for the session (never saved).
  struct Memory {
    std::string table;
    std::string column;
    int first_number = -1;  // negative: no valid first number
  };

  // What the dialog needs of the command: a line printed on the command line, and the first
  // number proposed for a field (from the values the drawing holds).
  struct Services {
    std::function<void(const std::string&)> print;
    std::function<int(const std::string& table, const std::string& column)> propose_first;
  };

  // The number shown in First when none is remembered.
  static constexpr int kDefaultFirst = 1;

  // `tables` are shown in the given order.
  OptionsWild(std::vector<std::string> tables, Memory& memory,
              const od::ObjectDataContainer& container, Services services);

  void OnInit() override;
  // A table chosen refills the fields; a field chosen puts its default value into Prefix
  // and proposes the first number.
  void OnChanged(int control_id) override;
  // Stores the choice; a First that does not begin with a number stores -1.
  Status OnOk() override;

  // The results of OK besides the memory.
  const std::string& prefix() const { return prefix_; }
  const std::string& suffix() const { return suffix_; }

 private:
  void ShowFields();
  void FieldChosen();

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
  Services services_;
  std::string prefix_, suffix_;
};

// The First text read as a number: blanks, an optional sign and at least one digit, read
// as atoi reads it; -1 for anything else (empty text, leading letters).
int ReadFirstNumber(const std::string& text);

}  // namespace veltor::ui
