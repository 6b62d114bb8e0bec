// How the value of a DXF group code is typed. ASCII DXF stores every value as text; binary
// DXF stores it in the native form this kind names.
#pragma once

namespace veltor::dxf {

enum class ValueKind { kString, kDouble, kInt16, kInt32, kInt64, kBool, kBinary };

ValueKind KindOfCode(int code);

}  // namespace veltor::dxf
