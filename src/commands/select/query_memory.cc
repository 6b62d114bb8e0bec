#include "commands/select/query_memory.h"

namespace veltor::commands {

QueryMemory& ModuleQueryMemory() {
  static QueryMemory memory;
  return memory;
}

void ResetQueryMemory() { ModuleQueryMemory() = QueryMemory(); }

}  // namespace veltor::commands
