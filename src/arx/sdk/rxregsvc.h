// Module registration services. Reference: "Implementing an Entry Point for AutoCAD",
// https://help.autodesk.com/cloudhelp/2025/ESP/OARXMAC-DevGuide/files/GUID-EF283E4A-4A67-444C-AD13-F03A2A88A08A.htm
// (acrxEntryPoint, AcRx::AppMsgCode, AcRx::AppRetCode). The dynamic linker's members and
// acrxBuildClassHierarchy are not confirmed there.
#pragma once

#include "rxobject.h"

struct AcRx {
  enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
    kOleUnloadAppMsg = 12,
    kPreQuitMsg = 13,
    kInitDialogMsg = 14,
    kEndDialogMsg = 15,
    kSuspendMsg = 16,
  };
  enum AppRetCode { kRetOK = 0, kRetError = 3 };
};

class AcRxDynamicLinker : public AcRxObject {
 public:
  virtual bool unlockApplication(void* appId) const;
  virtual bool registerAppMDIAware(void* appId) const;
};
AcRxDynamicLinker* acrxDynamicLinkerPtr();
#define acrxDynamicLinker (acrxDynamicLinkerPtr())

void acrxBuildClassHierarchy();
