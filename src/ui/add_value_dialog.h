// The "Add from field in field" dialog: a table, a source field, a target field and how the
// source's value goes into the target: replacing it, appended to its text, or added to its
// number.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

// How a source value goes into a target value; the items of the dialog's "How to add" list,
// in this order.
enum class AddMode { kReplace = 0, kAppend = 1, kAddNumbers = 2 };

// What to add where: in every record of `table`, `source` into `target`.
struct AddValueChoice {
  std::string table;
  std::string source;
  std::string target;
  AddMode mode = AddMode::kReplace;
};

class AddValueDialog : public od::DialogModel {
 public:
  enum : int { kTableCombo = 101, kSourceCombo = 102, kTargetCombo = 103, kModeCombo = 104 };

  // What the dialog remembers between runs (module-wide): the last choice made, offered
  // again as far as the drawing still has its table and fields.
  struct Memory {
    AddValueChoice last;
  };

  // `tables` are offered in the given order.
  AddValueDialog(std::vector<std::string> tables, Memory& memory,
                 const od::ObjectDataContainer& container);

  void OnInit() override;
  void OnChanged(int control_id) override;
  // Refuses without a table or fields, and "Add" into a field that is not Integer or Real.
  Status OnOk() override;

  // The result of OK.
  const AddValueChoice& choice() const { return choice_; }

 private:
  // Fills both field lists with the columns of the table now chosen.
  void ShowFields();

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
  od::TableDefinition shown_;
  AddValueChoice choice_;
};

}  // namespace veltor::ui
