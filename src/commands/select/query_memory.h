// What the query commands remember for the rest of the session (never written to disk).
#pragma once

#include "ui/object_data_list.h"
#include "ui/select_by_od.h"

namespace veltor::commands {

struct QueryMemory {
  ui::ObjectDataList::Memory tables;  // "Simultaneous" and the tables picked last
  ui::SelectByOd::Memory values;      // "Extended" and the dialog size
};

// The module's memory, as it was at load until commands change it.
QueryMemory& ModuleQueryMemory();
// Back to the state at load (on unload).
void ResetQueryMemory();

}  // namespace veltor::commands
