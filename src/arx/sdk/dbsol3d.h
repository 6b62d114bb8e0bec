// 3D solids' mass properties. Reference: "ObjectARX Reference Guide" (AcDb3dSolid),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (signature of getMassProp not confirmed).
#pragma once

#include "dbmain.h"

class AcGeVector3d;

class AcDb3dSolid : public AcDbEntity {
 public:
  Acad::ErrorStatus getMassProp(double& volume, AcGePoint3d& centroid, double momInertia[3],
                                double prodInertia[3], double prinMoments[3],
                                AcGeVector3d prinAxes[3], double radiiGyration[3],
                                AcDbExtents& extents) const;
  static AcRxClass* desc();
};
