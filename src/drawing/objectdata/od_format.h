// The tags of Object Data in a DXF file (see docs/object-data-format.md).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "drawing/dxf/tag.h"
#include "drawing/model/document.h"
#include "od/object_data.h"
#include "od/status.h"
#include "od/value.h"
#include "od/value_convert.h"

namespace veltor::objectdata {

inline constexpr char kCatalogueKey[] = "VELTOR_OBJECT_DATA";  // in the root dictionary
inline constexpr char kRecordsKey[] = "VELTOR_OBJECT_DATA";    // in an extension dictionary
inline constexpr char kTableMarker[] = "VELTOR_OD_TABLE";
inline constexpr char kRecordsMarker[] = "VELTOR_OD_RECORDS";
inline constexpr int kFormatVersion = 1;
// Character values are cut into chunks of at most this many bytes of file text.
inline constexpr size_t kTextChunk = 250;

// Groups that continue a text: 3 goes on directly; 300, 301 and 302 go on after a line
// break (LF, CR LF and CR). Only R2007+ drawings write line breaks this way; older ones
// write every control character as a "\U+XXXX" escape.
inline constexpr int kTextMore = 3;
inline constexpr int kTextAfterLf = 300;
inline constexpr int kTextAfterCrLf = 301;
inline constexpr int kTextAfterCr = 302;

// A name for the file: UTF-8 as it stands in R2007+ drawings, the code page with escapes
// before. Names hold no control characters, so they are one tag.
std::string EncodeName(const model::Document& doc, const std::string& name);
std::string DecodeName(const model::Document& doc, std::string_view raw);
// Appends a text (a description or a Character value) as a tag of `first_code` and the
// continuation groups above: pieces of at most kTextChunk bytes, never cut inside a
// character or an escape.
void AppendTextTags(const model::Document& doc, int first_code, const std::string& text,
                    dxf::Tags& out);
// Reads the text starting at tags[i] (any group) with its continuations; advances i.
std::string ReadTextTags(const model::Document& doc, const dxf::Tags& tags, size_t& i);

// Appends the tags of one value (text encoded for the file).
void AppendValueTags(const model::Document& doc, const od::Value& value, dxf::Tags& out);
enum class ValueRead { kValue, kNoValue, kDamaged };
// Reads one value starting at tags[i] and advances i past it. kNoValue when tags[i] does not
// start a value (i unchanged); kDamaged, with `why` said, when it does but a number in it is
// not one.
ValueRead ReadValueTags(const model::Document& doc, const dxf::Tags& tags, size_t& i,
                        od::Value& out, std::string& why);

// The whole text (blanks around it and a leading "+" allowed) as a number; false when any of
// it is not part of the number, or an integer does not fit 32 bits.
bool ParseWholeInt32(std::string_view text, int32_t& out);
bool ParseWholeDouble(std::string_view text, double& out);

dxf::Tags TableDefTags(const model::Document& doc, const od::TableDefinition& def);
// Reads a table definition. On failure says what is wrong; out.name then holds the table's
// name when it could be read, else is empty.
Status ParseTableDef(const model::Document& doc, const dxf::Tags& data,
                     od::TableDefinition& out);

// Converting a value to another column type (od/value_convert.h).
using od::ConvertValue;

}  // namespace veltor::objectdata
