// Database objects, object ids, handles, the database and its reactor.
//
// References: "Opening and Closing Database Objects" (acdbOpenObject, handles, acdbGetAdsName
// and acdbGetObjectId),
// https://help.autodesk.com/cloudhelp/2018/KOR/OARX-DevGuide/files/GUID-0A020C24-EE38-4BDA-8D46-4B326B63F3C6.htm
// "Erasing Objects" (AcDbObject::erase, the openErasedObject flag),
// https://help.autodesk.com/cloudhelp/2018/KOR/OARX-DevGuide/files/GUID-B9E3225A-675F-4802-9DD0-928EA1C7917A.htm
// "Using a Database Reactor" (the AcDbDatabaseReactor callbacks),
// https://help.autodesk.com/cloudhelp/2025/ESP/OARXMAC-DevGuide/files/GUID-6FE448F0-831E-4CF1-AC42-513B4AC69FA0.htm
// and "OREFMAC AcDbDatabaseReactor" (added with AcDbDatabase::addReactor),
// https://help.autodesk.com/cloudhelp/2017/ENU/OARXMAC-RefGuide/files/OREFMAC-AcDbDatabaseReactor.html
// Not confirmed there: AcDbObjectId's members, AcDbHandle's constructor and accessors,
// AcDbDatabase::getAcDbObjectId, the symbol table getters, AcDbEntity's property accessors,
// extensionDictionary, createExtensionDictionary, clone, handOverTo, getGeomExtents, AcDbExtents.
#pragma once

#include "acadstrc.h"
#include "adsdef.h"
#include "dbcolor.h"
#include "gepnt3d.h"
#include "rxobject.h"

class AcDbDatabase;
class AcDbObject;
class AcDbBlockTable;
class AcDbLayerTable;

struct AcDb {
  enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
  enum Poly3dType { k3dSimplePoly = 0 };
  enum LineWeight { kLnWtByLayer = -1 };
};

class AcDbHandle {
 public:
  AcDbHandle();
  AcDbHandle(Adesk::UInt32 lo, Adesk::UInt32 hi);
  Adesk::UInt32 low() const;
  Adesk::UInt32 high() const;
  bool isNull() const;
  // Writes the handle as upper-case hexadecimal; the buffer holds at least 17 characters.
  bool getIntoAsciiBuffer(ACHAR* pBuf, size_t nBufLen) const;
};

class AcDbObjectId {
 public:
  AcDbObjectId();
  bool isNull() const;
  bool isValid() const;
  bool isErased() const;
  AcDbDatabase* database() const;
  AcDbHandle handle() const;
  bool operator==(const AcDbObjectId& other) const;
  bool operator!=(const AcDbObjectId& other) const;
  static const AcDbObjectId kNull;
};

typedef AcArray<AcDbObjectId> AcDbObjectIdArray;
typedef AcArray<void*> AcDbVoidPtrArray;

class AcDbExtents {
 public:
  AcDbExtents();
  const AcGePoint3d& minPoint() const;
  const AcGePoint3d& maxPoint() const;
};

class AcDbObject : public AcRxObject {
 public:
  AcDbObjectId objectId() const;
  AcDbObjectId ownerId() const;
  AcDbDatabase* database() const;
  AcDbObjectId extensionDictionary() const;
  Acad::ErrorStatus close();
  Acad::ErrorStatus erase(Adesk::Boolean erasing = true);
  Acad::ErrorStatus upgradeOpen();
  bool isErased() const;
  // A copy that belongs to no database.
  virtual AcRxObject* clone() const;
  Acad::ErrorStatus createExtensionDictionary();
  // Puts `newObject` in this object's place (same id, handle, extension dictionary); this object
  // leaves the database and belongs to the caller.
  Acad::ErrorStatus handOverTo(AcDbObject* newObject, Adesk::Boolean keepXData = true,
                               Adesk::Boolean keepExtDict = true);
  static AcRxClass* desc();
};

class AcDbEntity : public AcDbObject {
 public:
  AcDbObjectId layerId() const;
  ACHAR* layer() const;
  ACHAR* linetype() const;
  ACHAR* plotStyleName() const;
  AcCmColor color() const;
  AcCmTransparency transparency() const;
  Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true);
  Adesk::UInt16 colorIndex() const;
  double linetypeScale() const;
  AcDb::LineWeight lineWeight() const;
  Acad::ErrorStatus setLayer(const ACHAR* newVal, bool doSubents = true);
  Acad::ErrorStatus setLayer(AcDbObjectId newVal, bool doSubents = true);
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 color, bool doSubents = true);
  Acad::ErrorStatus setLinetype(AcDbObjectId newVal, bool doSubents = true);
  Acad::ErrorStatus setLinetypeScale(double newVal, bool doSubents = true);
  Acad::ErrorStatus setLineWeight(AcDb::LineWeight newVal, bool doSubents = true);
  Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* pEntity, bool doSubents = true);
  AcDbObjectId linetypeId() const;
  virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  static AcRxClass* desc();
};

class AcDbDatabaseReactor : public AcRxObject {
 public:
  virtual void objectAppended(const AcDbDatabase* dwg, const AcDbObject* dbObj);
  virtual void objectModified(const AcDbDatabase* dwg, const AcDbObject* dbObj);
  virtual void objectErased(const AcDbDatabase* dwg, const AcDbObject* dbObj,
                            Adesk::Boolean pErased = true);
};

class AcDbDatabase : public AcRxObject {
 public:
  Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& retId, bool createIfNotFound,
                                    const AcDbHandle& objHandle, Adesk::UInt32 xRefId = 0);
  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& pTable, AcDb::OpenMode mode);
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& pTable, AcDb::OpenMode mode);
  Acad::ErrorStatus addReactor(AcDbDatabaseReactor* pReactor) const;
  Acad::ErrorStatus removeReactor(AcDbDatabaseReactor* pReactor) const;
  AcDbObjectId currentSpaceId() const;
};

Acad::ErrorStatus acdbOpenObject(AcDbObject*& pObj, AcDbObjectId id, AcDb::OpenMode mode,
                                 bool openErased = false);
Acad::ErrorStatus acdbGetAdsName(ads_name& objName, AcDbObjectId objId);
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& objId, const ads_name objName);
// Frees a string the database handed out (layer(), linetype(), ...).
void acutDelString(ACHAR*& pString);
