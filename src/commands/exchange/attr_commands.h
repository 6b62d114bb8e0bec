// VELTOR_LOAD_ATTRS, VELTOR_STORE_ATTRS and VELTOR_ATTR_TEMPLATE: moving data between block
// references' attributes and their OD records, steered by an attribute map file.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// Attributes to OD. Asks for the map file and loads it (a malformed map or one without a
// usable line stops here), then the standard gathering (pickfirst read first). For each block
// reference whose block the map names, the mapped attributes' texts are written into the
// first record of each mapped table, a record with default values being attached where the
// reference has none. Prints "Loaded %i definition(s) for %i block reference(s)\n".
void LoadAttrs(od::CommandContext& context);

// OD to attributes. The same map and gathering; every mapped attribute of a reference that
// has a record of the mapped table gets the value of the first such record as its text.
// Prints "Loaded %i attribute(s) for %i block reference(s)\n".
void StoreAttrs(od::CommandContext& context);

// Writes a map template for the gathered block references and the drawing's tables, in the
// drawing's ANSI code page, to a file chosen in a file-save dialog. Prints
// "No valid entities selected\n" when no gathered block reference has an attribute, else
// "Generated template for %i block(s), %i table(s)\n".
void AttrTemplate(od::CommandContext& context);

}  // namespace veltor::commands
