// The value-query dialog: tables on the left, a grid of the columns they share on the right,
// each with a value pattern, and the "Extended (>, <, <>, *)" switch.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

// A column and the pattern its values must match.
struct Condition {
  std::string column;
  std::string pattern;
};

class SelectByOd : public od::DialogModel {
 public:
  enum : int { kConditionGrid = 101, kTableList = 106, kExtended = 134 };

  // What the dialog remembers between runs (module-wide).
  struct Memory {
    bool extended = true;
    od::DialogSize size{800, 300};  // pixels; follows the user's resizing
  };

  SelectByOd(std::vector<std::string> tables, bool show_extended, Memory& memory,
             const od::ObjectDataContainer& container);

  void OnInit() override;
  void OnChanged(int control_id) override;
  Status OnOk() override;
  // The front end reports a resize; the next dialog opens at this size.
  void Resized(od::DialogSize size);

  // The results of OK.
  const std::vector<std::string>& selected_tables() const { return selected_tables_; }
  const std::vector<Condition>& conditions() const { return conditions_; }

 private:
  std::vector<std::string> tables_;
  bool show_extended_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
  std::vector<std::string> selected_tables_;
  std::vector<Condition> conditions_;
};

}  // namespace veltor::ui
