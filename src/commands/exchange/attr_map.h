// The attribute map: which attribute of which block corresponds to which column of which
// table, read from a tab-separated map file.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "od/host.h"
#include "od/object_data.h"
#include "od/text.h"

namespace veltor::commands {

// Where one attribute's text goes: the table and column as the drawing spells them (the map
// file's names match them without regard to case).
struct AttributeTarget {
  std::string table;
  std::string column;
};

// Block name, lower-cased -> attribute tag, exactly as written -> target. Keys are compared
// by ordinal order, so tags match with regard to case.
using TagTargets = std::map<std::string, AttributeTarget, od::LessOrdinalUtf16>;
using AttributeMap = std::map<std::string, TagTargets, od::LessOrdinalUtf16>;

// What reading the map's lines gave: the map, how many lines were accepted, and whether any
// line had a number of fields other than four (which makes the whole map unusable).
struct MapReading {
  AttributeMap map;
  int accepted = 0;
  bool malformed = false;
};

// Reads map lines: "?" starts a comment, trailing blanks are cut, empty lines are skipped, the
// rest splits at runs of tabs into block, tag, table and column. Prints
// "Error: invalid mapping '%s'\n" for a line without exactly four fields, and
// "Error: table %s not found\n" / "Error: column %s not found in table %s\n" for a line
// naming what the drawing lacks (such lines are dropped). The first line for a block and tag
// wins.
MapReading ReadAttributeMap(od::Host& host, const od::ObjectDataContainer& container,
                            const std::vector<std::string>& lines);

// Asks for the map file (a file-open dialog), reads it and prints
// "%i attribute mappings loaded\n". Nothing when the dialog is cancelled (then `cancelled`
// is set), when the file cannot be read ("Error: unable to read '%s'\n"), when no mapping
// was accepted or when a line was malformed: the command then stops without changing
// anything.
std::optional<AttributeMap> AskAttributeMap(od::Host& host, bool& cancelled);

// The block's entry for a block reference's effective name, or nullptr.
const TagTargets* FindBlock(const AttributeMap& map, const std::string& block_name);

}  // namespace veltor::commands
