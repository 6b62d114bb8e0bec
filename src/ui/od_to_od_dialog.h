// The "Add values from OD to OD" dialog: a source table, a target table, which source field
// fills each target field (a grid that proposes the source field of the same name), and
// whether entities without a target record get one.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

// A target field and the source field whose value it takes.
struct FieldPair {
  std::string source;
  std::string target;
};

struct OdToOdChoice {
  std::string source_table;
  std::string target_table;
  std::vector<FieldPair> pairs;  // in the target table's column order
  bool attach_missing = false;   // attach a target record where an entity has none
};

class OdToOdDialog : public od::DialogModel {
 public:
  enum : int { kSourceCombo = 101, kTargetCombo = 102, kFieldGrid = 103, kAttachMissing = 104 };
  enum Column : size_t { kTargetColumn = 0, kTypeColumn = 1, kSourceColumn = 2 };

  // What the dialog remembers between runs (module-wide): the tables chosen last and the
  // attach switch.
  struct Memory {
    std::string source_table;
    std::string target_table;
    bool attach_missing = false;
  };

  // `tables` are offered in the given order, in both lists.
  OdToOdDialog(std::vector<std::string> tables, Memory& memory,
               const od::ObjectDataContainer& container);

  void OnInit() override;
  void OnChanged(int control_id) override;
  // Refuses the same table twice, a source field the source table lacks (names match
  // exactly, else without regard to case) and a grid that pairs no field.
  Status OnOk() override;

  // The result of OK.
  const OdToOdChoice& choice() const { return choice_; }

 private:
  od::TableDefinition Chosen(int combo) const;
  // One row per target field, proposing the source field of the same name.
  void ProposePairs();

  std::vector<std::string> tables_;
  Memory& memory_;
  const od::ObjectDataContainer& container_;
  OdToOdChoice choice_;
};

}  // namespace veltor::ui
