#include "commands/edit/add_value_memory.h"

namespace veltor::commands {

DataDialogMemory& ModuleDataDialogMemory() {
  static DataDialogMemory memory;
  return memory;
}

void ResetDataDialogMemory() { ModuleDataDialogMemory() = DataDialogMemory(); }

}  // namespace veltor::commands
