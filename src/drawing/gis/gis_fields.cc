#include "drawing/gis/gis_fields.h"

#include <strings.h>

namespace veltor::gis {

namespace {

Status AddField(OGRLayerH layer, const std::string& name, OGRFieldType type) {
  OGRFieldDefnH field = OGR_Fld_Create(name.c_str(), type);
  OGRErr err = OGR_L_CreateField(layer, field, TRUE);
  OGR_Fld_Destroy(field);
  if (err != OGRERR_NONE) return Status::Error("field '" + name + "': cannot be created");
  return Status::Ok();
}

}  // namespace

bool IsEntityField(const std::string& name) {
  for (const char* f : {kHandleField, kTypeField, kLayerField, kDrawingField})
    if (strcasecmp(name.c_str(), f) == 0) return true;
  return false;
}

Status CreateFields(OGRLayerH layer, const od::TableDefinition* table) {
  for (const char* f : {kHandleField, kTypeField, kLayerField, kDrawingField})
    if (Status s = AddField(layer, f, OFTString); !s.ok()) return s;
  if (!table) return Status::Ok();
  for (const od::ColumnDefinition& c : table->columns) {
    Status s;
    switch (c.type) {
      case od::ValueType::kInteger:
        s = AddField(layer, c.name, OFTInteger);
        break;
      case od::ValueType::kReal:
        s = AddField(layer, c.name, OFTReal);
        break;
      case od::ValueType::kPoint:
        for (const char* suffix : kPointSuffixes)
          if (s.ok()) s = AddField(layer, c.name + suffix, OFTReal);
        break;
      default:
        s = AddField(layer, c.name, OFTString);
        break;
    }
    if (!s.ok()) return s;
  }
  return Status::Ok();
}

void SetFields(OGRFeatureH feature, const EntityFacts& entity, const od::Record* record) {
  OGR_F_SetFieldString(feature, 0, entity.handle.c_str());
  OGR_F_SetFieldString(feature, 1, entity.type.c_str());
  OGR_F_SetFieldString(feature, 2, entity.layer.c_str());
  OGR_F_SetFieldString(feature, 3, entity.drawing.c_str());
  if (!record) return;
  int field = kEntityFieldCount;
  for (const od::Value& v : record->values) {
    switch (v.type()) {
      case od::ValueType::kInteger:
        OGR_F_SetFieldInteger(feature, field++, v.integer());
        break;
      case od::ValueType::kReal:
        OGR_F_SetFieldDouble(feature, field++, v.real());
        break;
      case od::ValueType::kPoint: {
        const od::Point3 p = v.point();
        OGR_F_SetFieldDouble(feature, field++, p.x);
        OGR_F_SetFieldDouble(feature, field++, p.y);
        OGR_F_SetFieldDouble(feature, field++, p.z);
        break;
      }
      default:
        OGR_F_SetFieldString(feature, field++, v.text().c_str());
        break;
    }
  }
}

}  // namespace veltor::gis
