// What the dialogs of the commands that fill columns from geometry, text and numbering
// remember for the rest of the session (never written to disk).
#pragma once

#include "ui/od_select.h"
#include "ui/od_select_xyz.h"
#include "ui/options_set_prop.h"
#include "ui/options_wild.h"

namespace veltor::commands {

struct SetDialogMemory {
  ui::OdSelectXyz::Memory xyz;
  ui::OptionsSetProp::Memory prop;
  ui::OptionsWild::Memory id;
  ui::OdSelect::Memory text;
};

// The module's memory, as it was at load until commands change it.
SetDialogMemory& ModuleSetDialogMemory();
// Back to the state at load (on unload).
void ResetSetDialogMemory();

}  // namespace veltor::commands
