// Converting an R12 drawing up to R2000 or a later release.
//
// R12 files have no handles (or handles nothing points to), no owners, no subclass markers,
// no block records and no OBJECTS section; R2000 needs all of them. The conversion starts
// from the blank drawing of the target release and carries over from the R12 drawing:
//   - the header variables both releases know ($ACADVER, $HANDSEED and the handful of
//     variables R2000 dropped are not carried);
//   - the symbol table records (a record the blank drawing already has, such as layer "0"
//     or the STANDARD text style, takes the R12 record's values; dimension styles point to
//     their arrow blocks' records instead of naming them);
//   - every block definition, each with a new block record;
//   - every entity of model and paper space, in storage order;
// each record with a new handle, its owner and the subclass markers of its type. The
// dictionaries and layouts a few R12 writers add in an OBJECTS section, and their block
// records, are not carried: the new drawing has its own.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/model/document.h"
#include "od/status.h"

namespace veltor::model {

struct UpgradedDrawing {
  std::unique_ptr<Document> doc;  // the converted drawing: no path yet, marked modified
  // What could not be carried over, one line each ("2 VIEWPORT entities left out: ..."); an
  // empty list means nothing was lost.
  std::vector<std::string> warnings;
};

// True for drawings the conversion takes: R12 and earlier, and files without a header.
bool IsR12OrEarlier(const Document& doc);

// Converts `source` (R12 or earlier, see IsR12OrEarlier) to `acadver` ("AC1015" to
// "AC1032"). `source` is only read. Fails, with nothing made, for any other pair of releases.
// Entities whose type the conversion does not know are left out and counted in the warnings,
// together with the sub-entities (vertices, attributes) that belong to them.
Result<UpgradedDrawing> UpgradeR12(const Document& source, std::string_view acadver);

}  // namespace veltor::model
