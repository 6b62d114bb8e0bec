// The command stack. Reference: "Command Stack" (addCommand's parameters),
// https://help.autodesk.com/cloudhelp/2025/ESP/OARXMAC-DevGuide/files/GUID-3AD35E70-ECDE-4042-B27B-2C9269996015.htm
// and "OREFMAC AcEdCommandStack" (one instance reached through acedRegCmds),
// https://help.autodesk.com/cloudhelp/2017/ENU/OARXMAC-RefGuide/files/OREFMAC-AcEdCommandStack.html
// The page shows the narrow-character form; the Unicode build's ACHAR form is assumed.
// The flag values are those of the command table (modal 0, transparent 1, use pickset 2,
// redraw 4, session 0x200000).
#pragma once

#include <windows.h>

#include "acadstrc.h"
#include "rxobject.h"

typedef void (*AcRxFunctionPtr)();
class AcEdUIContext;
class AcEdCommand;

#define ACRX_CMD_MODAL 0x00000000
#define ACRX_CMD_TRANSPARENT 0x00000001
#define ACRX_CMD_USEPICKSET 0x00000002
#define ACRX_CMD_REDRAW 0x00000004
#define ACRX_CMD_SESSION 0x00200000

class AcEdCommandStack : public AcRxObject {
 public:
  virtual Acad::ErrorStatus addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                                       const ACHAR* cmdLocalName, Adesk::Int32 commandFlags,
                                       AcRxFunctionPtr functionAddr,
                                       AcEdUIContext* UIContext = nullptr, int fcode = -1,
                                       HINSTANCE hResourceHandle = nullptr,
                                       AcEdCommand** cmdPtrRet = nullptr);
  virtual Acad::ErrorStatus removeGroup(const ACHAR* groupName);
};
// The real header defines acedRegCmds as a macro giving the stack; declared the same way.
AcEdCommandStack* acedRegCmdsPtr();
#define acedRegCmds (acedRegCmdsPtr())
