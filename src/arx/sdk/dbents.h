// Entities the adapter reads and creates. Reference: "ObjectARX Reference Guide" (AcDb
// classes), https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (constructors and members not confirmed; tagConst/textStringConst are the non-allocating
// readers).
#pragma once

#include "dbcurve.h"

class AcDbObjectIterator {
 public:
  virtual ~AcDbObjectIterator();
  virtual void start(bool atEnd = false);
  virtual bool done() const;
  virtual void step(bool backwards = false, bool skipErasedObjects = true);
  virtual AcDbObjectId objectId() const;
};

class AcDbPoint : public AcDbEntity {
 public:
  explicit AcDbPoint(const AcGePoint3d& position);
  static AcRxClass* desc();
};

class AcDbLine : public AcDbCurve {
 public:
  AcGePoint3d startPoint() const;
  AcGePoint3d endPoint() const;
  static AcRxClass* desc();
};

class AcDbCircle : public AcDbCurve {
 public:
  AcDbCircle(const AcGePoint3d& cntr, const AcGeVector3d& nrm, double radius);
  static AcRxClass* desc();
};

class AcDbArc : public AcDbCurve {
 public:
  double startAngle() const;
  double endAngle() const;
  static AcRxClass* desc();
};

class AcDb2dVertex : public AcDbEntity {
 public:
  static AcRxClass* desc();
};

class AcDb2dPolyline : public AcDbCurve {
 public:
  AcDbObjectIterator* vertexIterator() const;
  Acad::ErrorStatus openVertex(AcDb2dVertex*& pVertex, AcDbObjectId vertId, AcDb::OpenMode mode,
                               bool openErasedOne = false) const;
  AcGePoint3d vertexPosition(const AcDb2dVertex& vert) const;
  static AcRxClass* desc();
};

class AcDb3dPolylineVertex : public AcDbEntity {
 public:
  AcGePoint3d position() const;
  static AcRxClass* desc();
};

class AcDb3dPolyline : public AcDbCurve {
 public:
  AcDb3dPolyline(AcDb::Poly3dType type, AcGePoint3dArray& vertices, Adesk::Boolean closed = false);
  AcDbObjectIterator* vertexIterator() const;
  Acad::ErrorStatus openVertex(AcDb3dPolylineVertex*& pVertex, AcDbObjectId vertId,
                               AcDb::OpenMode mode, bool openErasedOne = false) const;
  static AcRxClass* desc();
};

class AcDbAttribute : public AcDbEntity {
 public:
  const ACHAR* tagConst() const;
  const ACHAR* textStringConst() const;
  Acad::ErrorStatus setTextString(const ACHAR* val);
  static AcRxClass* desc();
};

class AcDbBlockReference : public AcDbEntity {
 public:
  AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRec);
  AcGePoint3d position() const;
  AcDbObjectId blockTableRecord() const;
  Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
  AcDbObjectIterator* attributeIterator() const;
  static AcRxClass* desc();
};

class AcDbText : public AcDbEntity {
 public:
  AcGePoint3d position() const;
  AcGePoint3d alignmentPoint() const;
  int horizontalMode() const;
  int verticalMode() const;
  const ACHAR* textStringConst() const;
  double height() const;
  static AcRxClass* desc();
};
