// The ADS library umbrella header. Reference: "Common Characteristics of ObjectARX Library
// Functions", https://help.autodesk.com/cloudhelp/2025/ESP/OARXMAC-DevGuide/files/GUID-D1D45DD1-A172-4F1B-99E7-75B22F0CBC40.htm
#pragma once

#include "adsdef.h"
#include "acedads.h"
#include "acutads.h"
