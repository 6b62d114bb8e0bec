// What the attach/detach and value-addition dialogs remember for the rest of the session
// (never written to disk).
#pragma once

#include "ui/add_value_dialog.h"
#include "ui/attach_detach_dialog.h"
#include "ui/od_to_od_dialog.h"

namespace veltor::commands {

struct DataDialogMemory {
  ui::AttachDetachDialog::Memory attach_detach;
  ui::AddValueDialog::Memory add_value;
  ui::OdToOdDialog::Memory od_to_od;
};

// The module's memory, as it was at load until commands change it.
DataDialogMemory& ModuleDataDialogMemory();
// Back to the state at load (on unload).
void ResetDataDialogMemory();

}  // namespace veltor::commands
