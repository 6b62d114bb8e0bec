// The host registers a command with a plain function pointer and calls it without arguments,
// so each registered command needs a function of its own. This is a fixed table of such
// functions, one per command the module registers (the rows of the command table and the
// inert commands of the application base); a slot is bound to the command's handler, which runs
// the module's command context (od::RunCommand), so no exception reaches the host.
// Portable: no host header.
#pragma once

#include <cstddef>

#include "od/application.h"

namespace veltor::arx {

using CommandThunk = void (*)();

// 38 commands of the group VELTOR and 3 of MyGroup.
inline constexpr size_t kCommandThunkCount = 41;

// The function of `slot` (< kCommandThunkCount): it runs whatever handler the slot is bound to
// and does nothing while the slot is free.
CommandThunk ThunkAt(size_t slot);
// Binds the first free slot to `handler` and returns its function; nullptr when every slot is
// taken.
CommandThunk BindFreeThunk(od::CommandHandler handler);
// Frees the slot of `thunk` (a function ThunkAt gave); nothing for any other pointer.
void UnbindThunk(CommandThunk thunk);
// Frees every slot (at unload, after the command groups were removed).
void UnbindAllThunks();
// How many slots are bound.
size_t BoundThunkCount();

}  // namespace veltor::arx
