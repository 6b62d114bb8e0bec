// Multi-line text. Reference: "ObjectARX Reference Guide" (AcDbMText),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed; text() returns the string without formatting codes, to be freed).
#pragma once

#include "dbmain.h"

class AcDbMText : public AcDbEntity {
 public:
  AcGePoint3d location() const;
  ACHAR* text() const;
  double textHeight() const;
  static AcRxClass* desc();
};
