// Symbol tables: blocks and layers. Reference: "ObjectARX Reference Guide" (AcDb classes),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// and the block table record iterator as "blog.csdn.net acrxEntryPoint.cpp" uses it (newIterator,
// start, done, step, getEntity), https://blog.csdn.net/zzia72/article/details/47273419
// (getAt, has, add, appendAcDbEntity, the layer flags and ACDB_MODEL_SPACE are not confirmed).
#pragma once

#include "dbcolor.h"
#include "dbmain.h"

#define ACDB_MODEL_SPACE L"*Model_Space"

class AcDbSymbolTableRecord : public AcDbObject {
 public:
  Acad::ErrorStatus getName(const ACHAR*& pName) const;
  Acad::ErrorStatus setName(const ACHAR* pName);
  static AcRxClass* desc();
};

class AcDbBlockTableRecordIterator {
 public:
  virtual ~AcDbBlockTableRecordIterator();
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getEntityId(AcDbObjectId& entityId) const;
};

class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
 public:
  AcDbBlockTableRecord();
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& pIterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& pOutputId, AcDbEntity* pEntity);
  Acad::ErrorStatus setOrigin(const AcGePoint3d& pt);
  static AcRxClass* desc();
};

class AcDbSymbolTable : public AcDbObject {
 public:
  Acad::ErrorStatus getAt(const ACHAR* entryName, AcDbObjectId& recordId,
                          bool getErasedRecord = false) const;
  bool has(const ACHAR* name) const;
};

class AcDbBlockTable : public AcDbSymbolTable {
 public:
  Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbBlockTableRecord* pRecord);
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
 public:
  AcDbLayerTableRecord();
  bool isFrozen() const;
  bool isHidden() const;
  bool isLocked() const;
  bool isOff() const;
  void setColor(const AcCmColor& color);
  static AcRxClass* desc();
};

class AcDbLayerTableIterator {
 public:
  virtual ~AcDbLayerTableIterator();
  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);
  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
};

class AcDbLayerTable : public AcDbSymbolTable {
 public:
  Acad::ErrorStatus newIterator(AcDbLayerTableIterator*& pIterator, bool atBeginning = true,
                                bool skipDeleted = true) const;
  Acad::ErrorStatus add(AcDbObjectId& recordId, AcDbLayerTableRecord* pRecord);
};
