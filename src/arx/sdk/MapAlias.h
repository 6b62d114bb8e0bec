// Drive aliases of the Map session. Reference: "Documentation / AutoCAD Map 3D ObjectARX SDK",
// https://aps.autodesk.com/node/3113 (signatures not confirmed).
#pragma once

#include "MapArxApi.h"

class AcMapDriveAlias {
 public:
  const ACHAR* Name() const;
  const ACHAR* Path() const;
};

class AcMapAliases {
 public:
  int CountAliases() const;
  Adesk::Boolean GetAlias(AcMapDriveAlias*& pAlias, int index);
  Adesk::Boolean AddAlias(const ACHAR* name, const ACHAR* path);
  Adesk::Boolean UpdateAlias(const ACHAR* name, const ACHAR* path);
  Adesk::Boolean DeleteAlias(const ACHAR* name);
};
