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

// A million-record drawing holds millions of these: the fields are laid out to take 64 bytes.
struct Record {
  Record() : erased(false), paper_space(false), sub_entity(false), packed(false), undo_saved(false) {}

  // Byte range of the record's tags: in the source buffer, or in the arena when `packed`.
  // Not used while `tags` is set.
  uint64_t begin = 0;
  Handle handle = 0;
  Handle owner = 0;  // the first 330 outside application groups
  Handle xdict = 0;  // the extension dictionary (360 inside {ACAD_XDICTIONARY)
  uint32_t size = 0;
  RecordId next = kNoRecord;
  RecordId prev = kNoRecord;
  uint16_t type = 0;  // index into the store's type names
  Section section = Section::kNone;
  bool erased : 1;
  bool paper_space : 1;  // group 67 = 1
  bool sub_entity : 1;   // VERTEX, SEQEND or ATTRIB following its owner in a section
  bool packed : 1;       // changed or created: the byte range is in the store's arena
  bool undo_saved : 1;   // the open undo group holds the record's earlier state, or inserted it
  // The record's tags while it is being edited, or for good when they cannot be packed (an
  // ASCII value with a line break, a binary value its code cannot hold).
  std::unique_ptr<Tags> tags;
};
static_assert(sizeof(Record) <= 64, "a Record should stay within 64 bytes");

// What undo restores of a record a group changed: its tags (as bytes, or for a record that
// cannot be packed as tags), its type and its extension dictionary. The other fields are set
// when the record is read or inserted and are not changed afterwards.
struct RecordState {
  uint64_t begin = 0;
  Handle xdict = 0;
  uint16_t type = 0;
  uint32_t size = 0;
  bool packed = false;
  std::unique_ptr<Tags> tags;
};

}  // namespace veltor::dxf
