// Curves: parameters, distances, areas, closest points. Reference: "ObjectARX Reference Guide"
// (AcDbCurve), https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (signatures not confirmed).
#pragma once

#include "dbmain.h"

class AcDbCurve : public AcDbEntity {
 public:
  virtual Adesk::Boolean isClosed() const;
  virtual Acad::ErrorStatus getStartParam(double& param) const;
  virtual Acad::ErrorStatus getEndParam(double& param) const;
  virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
  virtual Acad::ErrorStatus getArea(double& area) const;
  virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& givenPnt,
                                              AcGePoint3d& pointOnCurve,
                                              bool extend = false) const;
  virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
  // The pieces are new, not database-resident curves the caller owns.
  virtual Acad::ErrorStatus getSplitCurves(const AcGeDoubleArray& params,
                                           AcDbVoidPtrArray& curveSegments) const;
  static AcRxClass* desc();
};
