// Multilines. Reference: "ObjectARX Reference Guide" (AcDbMline),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed).
#pragma once

#include "dbmain.h"

class AcDbMline : public AcDbEntity {
 public:
  int numVertices() const;
  AcGePoint3d vertexAt(int index) const;
  bool closedMline() const;
  static AcRxClass* desc();
};
