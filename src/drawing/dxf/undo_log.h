// The undo log of a record store: every change made while a group is open is recorded so the
// group can be undone and redone exactly.
//
// A change is recorded as the record's state before the group first touched it (its tags and
// fields), an insertion, or an erasure with the record's neighbour at that moment. Undo replays
// a group's entries backwards, swapping saved and current state, so the same entries redo it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "drawing/dxf/tag.h"

namespace veltor::dxf {

using RecordId = uint32_t;
struct Record;

struct UndoEntry {
  enum class Kind : uint8_t { kChange, kInsert, kErase };
  Kind kind = Kind::kChange;
  RecordId id = 0;
  RecordId prev = 0;              // kErase: the neighbour before the record when erased
  std::unique_ptr<Record> saved;  // kChange: the other state (before on undo, after on redo)
};

struct UndoGroup {
  std::string label;  // what the group did (the command's name)
  std::vector<UndoEntry> entries;
  std::unordered_set<RecordId> saved;  // records with a kChange entry in this group
  // State the store's owner keeps beside the records, before and after the group.
  std::vector<uint64_t> owner_before;
  std::vector<uint64_t> owner_after;
};

}  // namespace veltor::dxf
