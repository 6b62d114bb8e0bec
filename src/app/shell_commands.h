// Commands of the application shell: the command palette and the About box.
#pragma once

#include <string>

#include "od/host.h"

namespace veltor::app {

void VeltorCtl(od::Host& host);
void VeltorAbout(od::Host& host);
// What the About box says: name, version, build date, licence, where the documentation is.
std::string AboutText();

}  // namespace veltor::app
