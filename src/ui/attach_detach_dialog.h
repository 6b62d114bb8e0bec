// The attach/detach dialog: the user picks a table, sees its columns with their default
// values in a grid whose Value column can be edited, and presses Attach (a record with those
// values) or Detach (every record of the table).
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

class AttachDetachDialog : public od::DialogModel {
 public:
  // The OK button (od::kIdOk) reads "Attach".
  enum : int { kTableCombo = 101, kValueGrid = 102, kDetach = 103 };
  enum Column : size_t { kFieldColumn = 0, kTypeColumn = 1, kValueColumn = 2 };
  enum class Action { kAttach, kDetach };

  // What the dialog remembers between runs (module-wide): the table used last, offered first.
  struct Memory {
    std::string table;
  };

  // `tables` are offered in the given order.
  AttachDetachDialog(std::vector<std::string> tables, Memory& memory,
                     const od::ObjectDataContainer& container);

  void OnInit() override;
  void OnChanged(int control_id) override;
  std::optional<od::DialogResult> OnButton(int button_id) override;
  // Refuses without a table, and - for Attach - a value that does not convert to its column's
  // type (read as typed values are: "*" stands for the default).
  Status OnOk() override;

  // The results of Attach or Detach.
  Action action() const { return action_; }
  const std::string& table() const { return record_.table; }
  // For Attach: the record to attach, one value per column.
  const od::Record& record() const { return record_; }

 private:
  // Shows the columns of the table now chosen with their default values.
  void ShowColumns();

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
  od::TableDefinition shown_;  // the table whose columns the grid shows
  Action action_ = Action::kAttach;
  od::Record record_;
};

}  // namespace veltor::ui
