// The host's own commands of the embedded session, registered in the group "ACAD".
#pragma once

#include <functional>
#include <string>

#include "drawing/session/session.h"

namespace veltor::session {

inline constexpr char kHostGroup[] = "ACAD";

void AddHostCommand(Session& s, const std::string& name, int flags, const std::string& summary,
                    std::function<void()> handler);

// Asks `prompt` until `accept` takes the answer (Enter gives ""). A refused answer prints
// `refusal` and the same prompt is asked again, as the CAD host asks a person; a script stops
// there. Returns false when the prompt was cancelled or the script stopped.
bool AskUntilAccepted(Session& s, const std::string& prompt, bool allow_spaces,
                      const std::string& refusal,
                      const std::function<bool(const std::string&)>& accept);

// Every host command below.
void RegisterHostCommands(Session& s);

// UNDO, U, MREDO, REDO, SELECT, ZOOM.
void RegisterUndoCommands(Session& s);
// OPEN, NEW, SAVE, SAVEAS, CLOSE, QUIT.
void RegisterFileCommands(Session& s);
// ODTABLE, ODATTACH, ODEDIT, ODDETACH: Object Data by hand.
void RegisterObjectDataCommands(Session& s);
// LIST, LAYER, HELP.
void RegisterInfoCommands(Session& s);
// BREAK.
void RegisterEditCommands(Session& s);

}  // namespace veltor::session
