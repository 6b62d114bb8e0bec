// Commands of the application shell: the command palette and the About box.
#pragma once

#include "od/host.h"

namespace veltor::app {

void VeltorCtl(od::Host& host);
void VeltorAbout(od::Host& host);

}  // namespace veltor::app
