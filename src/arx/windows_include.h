// windows.h as the plug-in's Win32 sources include it: without the min/max macros (they
// break std::min) and without the MessageBox macro, which would rename od::UiHost::MessageBox
// in the files that see it and not in the others.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#undef MessageBox
