// One record of a DXF file as the tag store keeps it. See record_store.h.
#pragma once

#include <cstdint>
#include <memory>

#include "drawing/dxf/tag.h"

namespace veltor::dxf {

using Handle = uint64_t;  // 0 is "no handle"
using RecordId = uint32_t;
inline constexpr RecordId kNoRecord = 0xFFFFFFFFu;

enum class Section : uint8_t {
  kNone,  // before the first section, or a headerless file's loose records
  kHeader,
  kClasses,
  kTables,
  kBlocks,
  kEntities,
  kObjects,
  kThumbnail,
  kAcdsData,
  kOther,
};

struct Record {
  // Byte range of the record's tags: in the source buffer, or in the arena when `packed`.
  // Not used while `tags` is set.
  uint64_t begin = 0;
  uint64_t end = 0;
  Handle handle = 0;
  Handle owner = 0;  // the first 330 outside application groups
  Handle xdict = 0;  // the extension dictionary (360 inside {ACAD_XDICTIONARY)
  RecordId next = kNoRecord;
  RecordId prev = kNoRecord;
  uint32_t line = 0;  // 1-based line (ASCII) or byte offset (binary) of the first tag
  uint16_t type = 0;  // index into the store's type names
  Section section = Section::kNone;
  bool erased = false;
  bool paper_space = false;  // group 67 = 1
  bool sub_entity = false;   // VERTEX, SEQEND or ATTRIB following its owner in a section
  bool packed = false;       // changed or created: the byte range is in the store's arena
  bool undo_saved = false;   // the open undo group holds the record's earlier state
  // The record's tags while it is being edited, or for good when they cannot be packed (an
  // ASCII value with a line break, a binary value its code cannot hold).
  std::unique_ptr<Tags> tags;
};

}  // namespace veltor::dxf
