// Command-line output and result-buffer release. Reference: "Argument Lists in AutoLISP and
// C" (acutPrintf is variadic like printf),
// https://help.autodesk.com/cloudhelp/2025/ESP/OARXMAC-DevGuide/files/GUID-2019A2A3-F090-4DBE-8484-F05E34A0D3F4.htm
// (signature not confirmed: the return type and acutRelRb).
#pragma once

#include "adsdef.h"

int acutPrintf(const ACHAR* format, ...);
int acutRelRb(struct resbuf* rb);
