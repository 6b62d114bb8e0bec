// Block definitions and block references with their attributes.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "drawing/model/document.h"

namespace veltor::model {

struct AttributeInfo {
  RecordId id = kNoRecord;
  std::string tag;
  std::string text;
};

struct Point3 {
  double x = 0, y = 0, z = 0;
};

// The block name an INSERT refers to (group 2), decoded.
std::string BlockName(const Document& doc, RecordId insert);
// The name users know a block by: for the anonymous "*U" copies that dynamic blocks make,
// the name of the block they were made from (found through the block record's
// AcDbBlockRepBTag xdata); otherwise the block name itself.
std::string EffectiveBlockName(const Document& doc, RecordId insert);
std::vector<AttributeInfo> Attributes(const Document& doc, RecordId insert);
// Sets an attribute's text (group 1).
void SetAttributeText(Document& doc, RecordId attrib, std::string_view text);

// The BLOCK record of a block definition, and the entities between it and its ENDBLK.
RecordId FindBlockBegin(const Document& doc, std::string_view name);
std::vector<RecordId> BlockEntities(const Document& doc, std::string_view name);

// Defines a block: its BLOCK_RECORD, and BLOCK ... ENDBLK in the BLOCKS section holding the
// given entity bodies (each: type, layer and the tags after the common ones), and attribute
// definitions for `attribute_tags` (each: tag name and default text). Returns the BLOCK_RECORD.
struct BlockEntityBody {
  std::string type;
  std::string layer;
  Tags body;
};
RecordId AddBlockDefinition(Document& doc, std::string_view name, Point3 base,
                            const std::vector<BlockEntityBody>& entities,
                            const std::vector<std::pair<std::string, std::string>>& attribute_tags);

// Inserts a block reference into model space with uniform scale and rotation (degrees),
// layer and ByLayer color, and attributes with the given texts. Returns the INSERT.
RecordId AddBlockReference(Document& doc, std::string_view block, Point3 at, double scale,
                           double rotation, std::string_view layer,
                           const std::vector<std::pair<std::string, std::string>>& attributes);

}  // namespace veltor::model
