// The undo log of a record store: every change made while a group is open is recorded so the
// group can be undone and redone exactly.
//
// A change is recorded as the record's state before the group first touched it (its tags and
// fields), an insertion, or an erasure with the record's neighbour at that moment. Undo replays
// a group's entries backwards, swapping saved and current state, so the same entries redo it.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "drawing/dxf/record.h"

namespace veltor::dxf {

struct UndoEntry {
  enum class Kind : uint8_t { kChange, kInsert, kErase };
  Kind kind = Kind::kChange;
  RecordId id = 0;
  RecordId prev = 0;   // kErase: the neighbour before the record when erased
  uint32_t saved = 0;  // kChange: index in UndoGroup::saved of the other state
};

struct UndoGroup {
  std::string label;  // what the group did (the command's name)
  // Deques grow without copying what they hold: a command changing a million records
  // does not need twice their size while its group grows.
  std::deque<UndoEntry> entries;
  // kChange: the record's other state (before on undo, after on redo). A changed record's
  // bytes are in the store's arena, so this is a byte range, not a copy of its tags.
  std::deque<RecordState> saved;
  // State the store's owner keeps beside the records, before and after the group.
  std::vector<uint64_t> owner_before;
  std::vector<uint64_t> owner_after;
};

}  // namespace veltor::dxf
