// VELTOR_EXPL: the explication report of one table written to a CSV file.
#pragma once

#include "od/command_context.h"
#include "ui/explication_dialog.h"

namespace veltor::commands {

// The dialog (table, optional group-by field), the save-file dialog for the output path,
// then the standard gathering (pickfirst read before the dialogs, else the prompt, else all of
// model space; the usable-entity filter). Writes the file atomically and prints
// "Completed: %i\n" with the record rows written. Cancelling a dialog or the prompt ends the
// command silently; a file that cannot be written is named in an error and left as it was.
void Explication(od::CommandContext& context);

// The dialog's choices for the rest of the session.
ui::ExplicationDialog::Memory& ExplicationMemory();
void ResetExplicationMemory();

}  // namespace veltor::commands
