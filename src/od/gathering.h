// How a command obtains its entities: the pickfirst selection, else the selection prompt,
// else all of model space; then entities on unusable layers are dropped. And how it hands its
// result back as the pickfirst selection.
#pragma once

#include <string>

#include "od/host.h"

namespace veltor::od {

enum class GatherStatus { kAnswered, kCancelled };

struct PromptOutcome {
  GatherStatus status = GatherStatus::kAnswered;
  EntityList entities;
};

// The pickfirst selection, in selection order; empty when there is none.
EntityList GetImpliedSelection(Host& host);
// The host's object selection prompt: cancelled (with an empty list) when the user cancels,
// otherwise answered with what was selected (possibly nothing).
PromptOutcome PromptSelection(Host& host);
// Every entity of model space that can be opened, in storage order.
EntityList GetModelSpaceEntities(const Database& db);

// Removes, in place, entities that cannot be opened and entities whose layer is frozen,
// hidden, locked or off. A removed entry is replaced by the list's last entry, which is then
// examined in its turn; the list's order is therefore not kept.
void FilterUsable(const Database& db, EntityList& entities);

// The standard gathering: pickfirst, else the prompt (cancel ends here), else - when the
// prompt was answered with nothing - every model space entity; then FilterUsable.
PromptOutcome GatherEntities(Host& host);
// The same gathering for a command that read the pickfirst selection earlier (before its
// dialog): `implied` stands for it, and the prompt is shown only when it is empty.
PromptOutcome GatherEntities(Host& host, EntityList implied);

// Makes `entities` the pickfirst selection; an empty list leaves no selection.
void SetPickfirst(Host& host, const EntityList& entities);
// Prints "Selected: %i\n".
void ReportSelected(Host& host, size_t count);


// The drawing's linear precision (the "LUPREC" system variable); 4 when it cannot be read.
int GetLinearPrecision(Host& host);

}  // namespace veltor::od
