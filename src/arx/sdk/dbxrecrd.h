// Data records (XRECORD). Reference: "ObjectARX Reference Guide" (AcDbXrecord),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed).
#pragma once

#include "dbmain.h"

class AcDbXrecord : public AcDbObject {
 public:
  static AcRxClass* desc();
};
