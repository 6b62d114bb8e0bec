#include "app/shell_commands.h"

#include "app/veltor_app.h"

namespace veltor::app {

void VeltorCtl(od::Host& host) {
  // The palette model comes with the command palette; until then the tree is unavailable.
  host.Ed().Print("Error: VELTOR_CTL is not available in this build.\n");
}

void VeltorAbout(od::Host& host) {
  host.Ed().Print("Error: VELTOR_ABOUT is not available in this build.\n");
}

}  // namespace veltor::app
