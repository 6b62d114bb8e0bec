// Gathering for commands that read the pickfirst selection, then ask their questions, and
// only then prompt for objects.
#pragma once

#include "od/gathering.h"

namespace veltor::commands {

// The standard gathering continued from an implied selection read earlier: when `implied` is
// empty, the selection prompt (cancel ends here), and all of model space when the prompt was
// answered with nothing; then the usable-entity filter (which does not keep the order).
od::PromptOutcome GatherAfterImplied(od::Host& host, od::EntityList implied);

}  // namespace veltor::commands
