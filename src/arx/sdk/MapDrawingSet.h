// Drawings attached to a project. Reference: "Documentation / AutoCAD Map 3D ObjectARX SDK",
// https://aps.autodesk.com/node/3113 (signatures not confirmed; attached drawing objects the
// set hands out are owned and deleted by the caller).
#pragma once

#include "MapArxApi.h"

class AcMapAttachedDrawing {
 public:
  virtual ~AcMapAttachedDrawing();
  const ACHAR* AliasPath() const;
  AcMap::EAttachedDrawingStatus ActiveStatus() const;
  Adesk::Boolean Activate();
  Adesk::Boolean Deactivate();
  Adesk::Boolean GetTableList(AcMapStringArray& tables) const;
};

class AcMapDrawingSet {
 public:
  int CountDrawings() const;
  Adesk::Boolean GetDrawing(AcMapAttachedDrawing*& pDwg, int index);
  Adesk::Boolean AttachDrawing(AcMapAttachedDrawing*& pDwg, const ACHAR* aliasPath);
  Adesk::Boolean DetachDrawing(const ACHAR* aliasPath);
};
