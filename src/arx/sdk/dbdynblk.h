// Dynamic block references. Reference: "ObjectARX Reference Guide" (AcDbDynBlockReference),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed).
#pragma once

#include "dbmain.h"

class AcDbDynBlockReference {
 public:
  explicit AcDbDynBlockReference(AcDbObjectId blockRefId);
  ~AcDbDynBlockReference();
  bool isDynamicBlock() const;
  AcDbObjectId dynamicBlockTableRecord() const;
};
