// Geometry value types: points, vectors, point arrays. Reference: "ObjectARX Reference Guide"
// (AcGe classes), https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed).
#pragma once

#include "adesk.h"

class AcGeVector3d {
 public:
  AcGeVector3d();
  AcGeVector3d(double x, double y, double z);
  double x, y, z;
  static const AcGeVector3d kZAxis;
};

class AcGePoint3d {
 public:
  AcGePoint3d();
  AcGePoint3d(double x, double y, double z);
  double x, y, z;
  static const AcGePoint3d kOrigin;
};

class AcGePoint2d {
 public:
  AcGePoint2d();
  AcGePoint2d(double x, double y);
  double x, y;
};

class AcGeScale3d {
 public:
  AcGeScale3d(double factor);
};

template <typename T>
class AcArray {
 public:
  AcArray(int physicalLength = 0, int growLength = 8);
  int length() const;
  int append(const T& value);
  T& operator[](int index);
  const T& operator[](int index) const;
  T& at(int index);
  const T& at(int index) const;
};

typedef AcArray<AcGePoint3d> AcGePoint3dArray;
typedef AcArray<double> AcGeDoubleArray;
