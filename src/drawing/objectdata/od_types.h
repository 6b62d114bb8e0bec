// Object Data as the drawing stores it: table definitions and the records attached to
// entities. Text is UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veltor::objectdata {

// Numbered as the file format (and the CAD host) number them.
enum class ColumnType : int { kInteger = 1, kReal = 2, kCharacter = 3, kPoint = 4 };

struct FieldValue {
  ColumnType type = ColumnType::kCharacter;
  int32_t integer = 0;
  double real = 0.0;
  std::string text;
  double x = 0.0, y = 0.0, z = 0.0;

  static FieldValue Integer(int32_t v) {
    FieldValue f;
    f.type = ColumnType::kInteger;
    f.integer = v;
    return f;
  }
  static FieldValue Real(double v) {
    FieldValue f;
    f.type = ColumnType::kReal;
    f.real = v;
    return f;
  }
  static FieldValue Text(std::string v) {
    FieldValue f;
    f.type = ColumnType::kCharacter;
    f.text = std::move(v);
    return f;
  }
  static FieldValue Point(double px, double py, double pz) {
    FieldValue f;
    f.type = ColumnType::kPoint;
    f.x = px;
    f.y = py;
    f.z = pz;
    return f;
  }
  // The zero value of a type: 0, 0.0, "" or the origin.
  static FieldValue Zero(ColumnType type) {
    FieldValue f;
    f.type = type;
    return f;
  }

  bool operator==(const FieldValue& o) const {
    if (type != o.type) return false;
    switch (type) {
      case ColumnType::kInteger: return integer == o.integer;
      case ColumnType::kReal: return real == o.real;
      case ColumnType::kCharacter: return text == o.text;
      case ColumnType::kPoint: return x == o.x && y == o.y && z == o.z;
    }
    return false;
  }
  bool operator!=(const FieldValue& o) const { return !(*this == o); }
};

struct ColumnDef {
  std::string name;
  ColumnType type = ColumnType::kCharacter;
  std::string description;
  FieldValue default_value;  // of `type`
};

struct TableDef {
  std::string name;
  std::string description;
  std::vector<ColumnDef> columns;
};

struct OdRecord {
  std::string table;
  std::vector<FieldValue> values;  // one per column, in definition order
};

}  // namespace veltor::objectdata
