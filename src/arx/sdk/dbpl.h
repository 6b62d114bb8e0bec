// The lightweight polyline. Reference: "ObjectARX Reference Guide" (AcDbPolyline),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed).
#pragma once

#include "dbcurve.h"

class AcDbPolyline : public AcDbCurve {
 public:
  AcDbPolyline(unsigned int num_verts = 0);
  unsigned int numVerts() const;
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& pt) const;
  Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
  Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& pt, double bulge = 0.,
                                double startWidth = -1., double endWidth = -1.);
  void setClosed(Adesk::Boolean closed);
  void setNormal(const AcGeVector3d& normal);
  void setElevation(double elevation);
  static AcRxClass* desc();
};
