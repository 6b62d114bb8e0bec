#include "drawing/dxf/group_codes.h"

namespace veltor::dxf {

namespace {
bool In(int code, int first, int last) { return code >= first && code <= last; }
}  // namespace

ValueKind KindOfCode(int code) {
  if (In(code, 310, 319) || code == 1004) return ValueKind::kBinary;
  if (In(code, 10, 59) || In(code, 110, 149) || In(code, 210, 239) || In(code, 460, 469) ||
      In(code, 1010, 1059))
    return ValueKind::kDouble;
  if (In(code, 60, 79) || In(code, 170, 179) || In(code, 270, 289) || In(code, 370, 389) ||
      In(code, 400, 409) || In(code, 1060, 1070))
    return ValueKind::kInt16;
  if (In(code, 90, 99) || In(code, 420, 429) || In(code, 440, 459) || code == 1071)
    return ValueKind::kInt32;
  if (In(code, 160, 169)) return ValueKind::kInt64;
  if (In(code, 290, 299)) return ValueKind::kBool;
  return ValueKind::kString;
}

}  // namespace veltor::dxf
