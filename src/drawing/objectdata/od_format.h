// The tags of Object Data in a DXF file (see docs/object-data-format.md).
#pragma once

#include <string_view>

#include "drawing/dxf/tag.h"
#include "drawing/model/document.h"
#include "drawing/objectdata/od_types.h"

namespace veltor::objectdata {

inline constexpr char kCatalogueKey[] = "VELTOR_OBJECT_DATA";  // in the root dictionary
inline constexpr char kRecordsKey[] = "VELTOR_OBJECT_DATA";    // in an extension dictionary
inline constexpr char kTableMarker[] = "VELTOR_OD_TABLE";
inline constexpr char kRecordsMarker[] = "VELTOR_OD_RECORDS";
inline constexpr int kFormatVersion = 1;
// Character values are cut into chunks of at most this many bytes of file text.
inline constexpr size_t kTextChunk = 250;

// Appends the tags of one value (text encoded for the file).
void AppendValueTags(const model::Document& doc, const FieldValue& value, dxf::Tags& out);
// Reads one value starting at tags[i]; advances i past it. Returns false if tags[i] does
// not start a value.
bool ReadValueTags(const model::Document& doc, const dxf::Tags& tags, size_t& i, FieldValue& out);

dxf::Tags TableDefTags(const model::Document& doc, const TableDef& def);
bool ParseTableDef(const model::Document& doc, const dxf::Tags& data, TableDef& out);

// Converts a value to another column type: numbers between each other (reals truncated
// toward zero), anything to text in its usual text form, text to numbers by its leading
// number, text to a point when it reads "x,y,z"; what cannot convert becomes the zero value.
FieldValue ConvertValue(const FieldValue& value, ColumnType to);

}  // namespace veltor::objectdata
