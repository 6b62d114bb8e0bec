// Commands of the application shell: the command palette and the About box.
#pragma once

#include <string>

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::app {

void VeltorCtl(od::CommandContext& context);
void VeltorAbout(od::CommandContext& context);
// What the About box says: name, version, build date, licence, where the documentation is.
std::string AboutText();

}  // namespace veltor::app
