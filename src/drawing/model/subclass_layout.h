// The subclassed record layout of R13 and later, built from the flat tags of an R12 record.
//
// An R12 entity is "0 TYPE" followed by its properties in any order; from R13 on the same
// properties are grouped under subclass markers ("100 AcDbEntity", "100 AcDbLine", ...) and
// readers expect each tag under its own marker. These functions regroup the tags; they
// assign no handles and owners (the caller adds "5" and "330" after "0 TYPE").
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/dxf/tag.h"

namespace veltor::model {

// What an R12 POLYLINE is, from its flags (group 70): its VERTEX records follow suit.
enum class PolylineKind { kNone, k2d, k3d, kPolygonMesh, kPolyfaceMesh };
PolylineKind PolylineKindOf(long long flags);

// The tags after "0 TYPE" (and the handle and owner the caller adds) of an entity of R13 or
// later: "100 AcDbEntity" with the common properties, then the type's subclass markers each
// followed by its tags, then the extended data as it was. `source` is the whole R12 record;
// its handle, owner, pointers, markers and application groups are left out, since they refer
// into the source drawing. `parent` is the polyline a VERTEX belongs to. Returns nothing for
// a type whose layout is not known here: the caller must not write it.
std::optional<dxf::Tags> SubclassEntityTags(std::string_view type, const dxf::Tags& source,
                                            PolylineKind parent = PolylineKind::kNone);

// The same for a symbol table record (LAYER, LTYPE, ...): "100 AcDbSymbolTableRecord",
// "100 AcDb<Table>TableRecord", then the record's data. Linetype dash lengths get the element
// type (74) later releases expect. DIMSTYLE arrow block names (5, 6, 7) are left out: from
// R13 on, arrows are block record pointers and group 5 is not a name.
dxf::Tags SubclassTableRecordTags(std::string_view table, const dxf::Tags& source);

// The arrow blocks an R12 DIMSTYLE record names (groups 5, 6 and 7), each with the group
// code that points to its block record from R13 on (342, 343, 344). Empty names are left out.
std::vector<std::pair<int, std::string>> ArrowBlockNames(const dxf::Tags& dimstyle);

}  // namespace veltor::model
