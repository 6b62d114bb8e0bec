// The Map session and project of a drawing, Map values and string arrays.
//
// Reference: "Documentation / AutoCAD Map 3D ObjectARX SDK", https://aps.autodesk.com/node/3113
// (the Map ObjectARX reference ships with the SDK and is not public page by page). Every Map
// declaration here is the adapter's best reading of the API (signatures not confirmed): the
// session from AcMapGetSession, the project of a database, the project's Object Data
// container, drawing set and classification, values of the four column types.
#pragma once

#include "dbmain.h"

class AcMapProject;
class AcMapODContainer;
class AcMapDrawingSet;
class AcMapAliases;
class AcMapObjClassSystem;

struct AcMap {
  enum EErrCode { kOk = 0, kErr = 1 };
  enum EOpenMode { kOpenForRead = 0, kOpenForWrite = 1 };
  enum EValueType { kUnknownType = 0, kInteger = 1, kReal = 2, kCharacter = 3, kPoint = 4 };
  enum EAttachedDrawingStatus { kDwgInactive = 0, kDwgActive = 1, kDwgLocked = 2 };
};

class AcMapStringArray {
 public:
  AcMapStringArray();
  ~AcMapStringArray();
  int Length() const;
  const ACHAR* operator[](int index) const;
};

class AcMapValue {
 public:
  AcMapValue();
  explicit AcMapValue(AcMap::EValueType type);
  ~AcMapValue();
  AcMap::EValueType Type() const;
  operator int() const;
  operator double() const;
  operator const ACHAR*() const;
  operator const AcGePoint3d&() const;
  AcMapValue& operator=(int value);
  AcMapValue& operator=(double value);
  AcMapValue& operator=(const ACHAR* value);
  AcMapValue& operator=(const AcGePoint3d& value);
};

class AcMapSession {
 public:
  Adesk::Boolean GetProject(AcMapProject*& pProj, AcDbDatabase* pDb = nullptr);
  Adesk::Boolean GetAliases(AcMapAliases*& pAliases);
};
AcMapSession* AcMapGetSession();

class AcMapProject {
 public:
  Adesk::Boolean GetODContainer(AcMapODContainer*& pContainer);
  Adesk::Boolean GetDrawingSet(AcMapDrawingSet*& pSet);
  Adesk::Boolean GetClassificationSystem(AcMapObjClassSystem*& pSystem);
};
