// Dictionaries (an object's extension dictionary). Reference: "ObjectARX Reference Guide"
// (AcDbDictionary), https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed; setAt is taken to replace an entry under the same key).
#pragma once

#include "dbmain.h"

class AcDbDictionaryIterator {
 public:
  virtual ~AcDbDictionaryIterator();
  virtual const ACHAR* name() const;
  virtual AcDbObjectId objectId() const;
  virtual bool done() const;
  virtual bool next();
};

class AcDbDictionary : public AcDbObject {
 public:
  AcDbDictionaryIterator* newIterator() const;
  Acad::ErrorStatus setAt(const ACHAR* srchKey, AcDbObject* newValue, AcDbObjectId& retObjId);
  static AcRxClass* desc();
};
