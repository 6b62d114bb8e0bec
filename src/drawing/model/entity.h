// Entities of a drawing: the walk of model space, paper space and blocks in storage order,
// and the properties every entity has.
#pragma once

#include <string>
#include <vector>

#include "drawing/model/document.h"

namespace veltor::model {

// Common properties of an entity (group codes in brackets).
struct EntityProperties {
  std::string layer = "0";          // (8)
  int color = 256;                  // ACI (62); 256 = ByLayer, 0 = ByBlock
  long true_color = -1;             // 24-bit RGB (420), -1 when absent
  std::string linetype = "ByLayer";  // (6)
  double linetype_scale = 1.0;      // (48)
  int lineweight = -1;              // (370); -1 ByLayer, -2 ByBlock, -3 default
  long transparency = -1;           // (440), -1 when absent (ByLayer)
  std::string plot_style_name;      // name of the plot style the handle (390) points to
  std::vector<std::string> hyperlinks;  // PE_URL xdata: url, then description if any
};

// Reads the common properties; text is decoded to UTF-8.
EntityProperties ReadProperties(const Document& doc, RecordId entity);
// Writes the common properties onto an entity (layer, color, true color, linetype,
// linetype scale, lineweight, transparency, plot style handle and hyperlink xdata).
void CopyProperties(Document& doc, RecordId from, RecordId to);
// Writes the graphic properties only - color (index, true color, color book name), layer,
// linetype, linetype scale and lineweight - onto an entity and its sub-entities (vertices,
// attributes, SEQEND); a property `from` leaves at its default is removed from them.
void CopyGraphicProperties(Document& doc, RecordId from, RecordId to);

// The main entities (not VERTEX/SEQEND/ATTRIB) of model space in storage order.
std::vector<RecordId> ModelSpaceEntities(const Document& doc);
// True for a main entity of model space: what a selection in model space may pick (not an
// entity of paper space or inside a block definition, not a VERTEX/ATTRIB/SEQEND, not erased).
bool IsModelSpaceEntity(const Document& doc, RecordId id);
// Paper space entities: the active layout's (group 67 = 1) and those of other layouts' blocks.
std::vector<RecordId> PaperSpaceEntities(const Document& doc);
// VERTEX, ATTRIB and SEQEND records that follow an entity.
std::vector<RecordId> SubEntities(const Document& doc, RecordId entity);

// The handle of the model space block record, or 0 in drawings before R13.
Handle ModelSpaceOwner(const Document& doc);

// Appends a new entity at the end of model space. `body` holds the tags after the common
// ones ("100 AcDbLine", "10 x", ...); the entity gets a handle, its owner and `layer`.
// Subclass markers are dropped for R12 drawings. Returns the new record.
RecordId AddModelSpaceEntity(Document& doc, std::string_view type, std::string_view layer,
                             Tags body);

// Erases an entity with its sub-entities and everything it owns (its extension dictionary
// and the objects that dictionary owns, recursively).
void EraseEntity(Document& doc, RecordId entity);
// Erases an object (dictionary, XRECORD, ...) with what it owns through hard-owner pointers.
void EraseOwnedTree(Document& doc, RecordId object);

}  // namespace veltor::model
