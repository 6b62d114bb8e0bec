// The host's own commands of the embedded session, registered in the group "ACAD".
#pragma once

#include <functional>
#include <string>

#include "drawing/session/session.h"

namespace veltor::session {

inline constexpr char kHostGroup[] = "ACAD";

void AddHostCommand(Session& s, const std::string& name, int flags, std::function<void()> handler);

// UNDO, U, MREDO, REDO, SELECT, ZOOM.
void RegisterUndoCommands(Session& s);

}  // namespace veltor::session
