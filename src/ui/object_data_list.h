// The table-list dialog: the user picks tables from a list, with a "Simultaneous" switch.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

class ObjectDataList : public od::DialogModel {
 public:
  enum : int { kTableList = 101, kSelectAllNothing = 102, kSimultaneous = 134 };

  // What the dialog remembers between runs (module-wide): the tables picked last and the
  // "Simultaneous" flag. OK stores into it; Cancel leaves it as it was.
  struct Memory {
    bool simultaneous = false;
    std::vector<std::string> picked;
  };

  // `tables` are offered in the given order (system tables left out); when empty, every
  // table of `container` is. `caption` becomes the title when not empty.
  ObjectDataList(std::string caption, std::vector<std::string> tables, Memory& memory,
                 const od::ObjectDataContainer* container);

  void OnInit() override;
  std::optional<od::DialogResult> OnButton(int button_id) override;
  Status OnOk() override;

 private:
  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer* container_;
};

}  // namespace veltor::ui
