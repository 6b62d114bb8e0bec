#include "commands/edit/set_memory.h"

namespace veltor::commands {

SetDialogMemory& ModuleSetDialogMemory() {
  static SetDialogMemory memory;
  return memory;
}

void ResetSetDialogMemory() { ModuleSetDialogMemory() = SetDialogMemory(); }

}  // namespace veltor::commands
