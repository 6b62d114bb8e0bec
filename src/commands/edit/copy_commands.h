// The five commands that copy Object Data - and, for two of them, graphic properties - from
// a reference entity picked after the targets.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// VELTOR_COPY_OD: attaches empty records (default values) shaped like the reference's.
void CopyOd(od::CommandContext& context);
// VELTOR_COPY_VALUE: overwrites the targets' records of the reference's tables.
void CopyValue(od::CommandContext& context);
// VELTOR_COPY_OD_VALUE: attaches copies of the reference's records, values included.
void CopyOdValue(od::CommandContext& context);
// VELTOR_COPY_ALL: VELTOR_COPY_OD and the reference's graphic properties.
void CopyAll(od::CommandContext& context);
// VELTOR_COPY_ALL_VALUE: copies of the records, grouped by table, and the graphic properties.
void CopyAllValue(od::CommandContext& context);

}  // namespace veltor::commands
