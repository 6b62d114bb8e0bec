// The runtime object root and class descriptions. Reference: "OREFMAC AcRxObject",
// https://help.autodesk.com/cloudhelp/2017/ENU/OARXMAC-RefGuide/files/OREFMAC-AcRxObject.html
// (members not confirmed: isA, desc, isKindOf, AcRxClass::name and dxfName).
#pragma once

#include "adesk.h"

class AcRxClass;

class AcRxObject {
 public:
  virtual ~AcRxObject();
  virtual AcRxClass* isA() const;
  Adesk::Boolean isKindOf(const AcRxClass* aClass) const;
};

class AcRxClass : public AcRxObject {
 public:
  const ACHAR* name() const;
  const ACHAR* dxfName() const;
};
