#include "arx/command_thunks.h"

#include <array>
#include <utility>

namespace veltor::arx {

namespace {

std::array<od::CommandHandler, kCommandThunkCount>& Slots() {
  static std::array<od::CommandHandler, kCommandThunkCount> slots;
  return slots;
}

template <size_t Slot>
void RunSlot() {
  // A copy: the handler may unload the module's commands while it runs.
  od::CommandHandler handler = Slots()[Slot];
  if (!handler) return;
  try {
    handler();
  } catch (...) {
    // The handler runs inside od::RunCommand, which reports and takes back; this only keeps a
    // failure of the wrapper itself from reaching the host.
  }
}

template <size_t... Slot>
constexpr std::array<CommandThunk, sizeof...(Slot)> MakeTable(std::index_sequence<Slot...>) {
  return {{&RunSlot<Slot>...}};
}

constexpr std::array<CommandThunk, kCommandThunkCount> kThunks =
    MakeTable(std::make_index_sequence<kCommandThunkCount>());

}  // namespace

CommandThunk ThunkAt(size_t slot) { return slot < kThunks.size() ? kThunks[slot] : nullptr; }

CommandThunk BindFreeThunk(od::CommandHandler handler) {
  auto& slots = Slots();
  for (size_t i = 0; i < slots.size(); ++i) {
    if (!slots[i]) {
      slots[i] = handler ? std::move(handler) : od::CommandHandler([] {});
      return kThunks[i];
    }
  }
  return nullptr;
}

void UnbindThunk(CommandThunk thunk) {
  for (size_t i = 0; i < kThunks.size(); ++i)
    if (kThunks[i] == thunk) Slots()[i] = nullptr;
}

void UnbindAllThunks() {
  for (od::CommandHandler& slot : Slots()) slot = nullptr;
}

size_t BoundThunkCount() {
  size_t bound = 0;
  for (const od::CommandHandler& slot : Slots())
    if (slot) ++bound;
  return bound;
}

}  // namespace veltor::arx
