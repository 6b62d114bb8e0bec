// Object Data tables as layer fields, and records as feature values.
//
// Every exported feature carries four fields naming its entity, then one field per column in
// table order: Integer -> OFTInteger, Real -> OFTReal, Character -> OFTString, and a Point
// column NAME -> three OFTReal fields NAME_X, NAME_Y, NAME_Z.
#pragma once

#include <string>

#include <ogr_api.h>

#include "od/object_data.h"
#include "od/status.h"

namespace veltor::gis {

inline constexpr char kHandleField[] = "veltor_handle";      // the entity's handle, hex
inline constexpr char kTypeField[] = "veltor_type";          // its DXF type ("LWPOLYLINE")
inline constexpr char kLayerField[] = "veltor_layer";        // its drawing layer
inline constexpr char kDrawingField[] = "veltor_drawing";    // the drawing's file name
inline constexpr int kEntityFieldCount = 4;
// The layer that takes entities without records, when asked for.
inline constexpr char kNoRecordsLayer[] = "veltor_no_records";
// Suffixes of the three fields of a Point column.
inline constexpr const char* kPointSuffixes[3] = {"_X", "_Y", "_Z"};

// True for one of the four entity fields (any case: some drivers fold names).
bool IsEntityField(const std::string& name);

// Creates the entity fields, then the columns' fields of `table` (none when null), on a new
// layer; they are then numbered from 0 in that order.
Status CreateFields(OGRLayerH layer, const od::TableDefinition* table);

struct EntityFacts {
  std::string handle;
  std::string type;
  std::string layer;
  std::string drawing;
};

// Sets a feature's entity fields and, when given, the record's values (fields as above).
void SetFields(OGRFeatureH feature, const EntityFacts& entity, const od::Record* record);

}  // namespace veltor::gis
