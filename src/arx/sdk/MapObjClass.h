// Feature classification of entities. Reference: "Documentation / AutoCAD Map 3D ObjectARX
// SDK", https://aps.autodesk.com/node/3113 (class and signatures not confirmed: this is the
// adapter's reading of reading an entity's class name and classifying an entity).
#pragma once

#include "MapArxApi.h"

class AcMapObjClassSystem {
 public:
  AcMap::EErrCode GetClassName(const AcDbObjectId& id, const ACHAR*& className) const;
  AcMap::EErrCode Classify(const AcDbObjectId& id, const ACHAR* className);
};
