// Splines. Reference: "ObjectARX Reference Guide" (AcDbSpline),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed).
#pragma once

#include "dbcurve.h"

class AcDbSpline : public AcDbCurve {
 public:
  int numControlPoints() const;
  int degree() const;
  static AcRxClass* desc();
};
