// Entity colors. Reference: "ObjectARX Reference Guide" (AcCm classes),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (members not confirmed).
#pragma once

#include "adesk.h"

struct AcCm {
  enum ColorMethod { kByLayer = 0xC0, kByBlock = 0xC1, kByColor = 0xC2, kByACI = 0xC3 };
};

class AcCmColor {
 public:
  AcCmColor();
  AcCm::ColorMethod colorMethod() const;
  Adesk::UInt8 red() const;
  Adesk::UInt8 green() const;
  Adesk::UInt8 blue() const;
  void setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);
};

class AcCmTransparency {
 public:
  AcCmTransparency();
  bool isByLayer() const;
  bool isByBlock() const;
  Adesk::UInt8 alpha() const;
};
