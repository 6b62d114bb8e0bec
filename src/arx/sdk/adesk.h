// Basic SDK types. Reference: "ObjectARX Reference Guide" (Global types),
// https://help.autodesk.com/view/OARX/2026/ENU/?guid=OARX-RefGuide-ObjectARX_Reference_Guide
// (signature not confirmed: the widths follow the 64-bit Windows ABI).
#pragma once

#include <cstddef>
#include <cstdint>

struct Adesk {
  typedef int32_t Int32;
  typedef uint8_t UInt8;
  typedef uint16_t UInt16;
  typedef uint32_t UInt32;
  typedef int64_t Int64;
  typedef uint64_t UInt64;
  typedef Int64 IntDbId;
  typedef Int64 LongPtr;
  typedef bool Boolean;
  static constexpr Boolean kFalse = false;
  static constexpr Boolean kTrue = true;
};

// The SDK's character type: wide characters in a Unicode build.
typedef wchar_t ACHAR;
