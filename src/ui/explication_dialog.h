// The explication report's dialog: the table whose records are reported and, optionally, a
// field of it to group a summary by.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

class ExplicationDialog : public od::DialogModel {
 public:
  enum : int { kTableCombo = 101, kGroupByCombo = 102 };

  // What the dialog remembers between runs (module-wide): the table and field used last.
  struct Memory {
    std::string table;
    std::string group_by;
  };

  // `tables` are offered in the given order; the group-by list offers "(none)" and the
  // chosen table's fields in definition order.
  ExplicationDialog(std::vector<std::string> tables, Memory& memory,
                    const od::ObjectDataContainer& container);

  void OnInit() override;
  void OnChanged(int control_id) override;
  // Refuses without a table.
  Status OnOk() override;

  const std::string& table() const { return table_; }
  // The field to group by; "" for no grouping.
  const std::string& group_by() const { return group_by_; }

 private:
  // Offers the fields of the table now chosen, keeping `keep` chosen when it is one of them.
  void ShowFields(const std::string& keep);

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
  std::string table_;
  std::string group_by_;
};

}  // namespace veltor::ui
