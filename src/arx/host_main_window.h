// The host's main window, the owner of the plug-in's dialogs. The host exports
// adsw_acadMainWnd; which header of the supported release declares it could not be confirmed
// from the reference, so the module declares it itself, as it does acedPostCommand.
#pragma once

#include "arx/windows_include.h"

HWND adsw_acadMainWnd();
