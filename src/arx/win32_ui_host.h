// The user interface of the Windows plug-in: message boxes, file dialogs, dialogs rendered from
// od::DialogModel and the palettes. Defined by the Win32 front end of src/arx.
#pragma once

#include <memory>

#include "od/ui_host.h"

namespace veltor::arx {

std::unique_ptr<od::UiHost> MakeWin32UiHost();

}  // namespace veltor::arx
