#include "drawing/dxf/record_store.h"

#include <algorithm>
#include <cstring>

#include "drawing/dxf/binary_values.h"

namespace veltor::dxf {

RecordId RecordStore::Append(Record record) {
  RecordId id = static_cast<RecordId>(records_.size());
  records_.push_back(std::move(record));
  Link(id, last_);
  return id;
}

RecordId RecordStore::InsertAfter(RecordId after, Tags tags, Section section) {
  Record record;
  record.section = section;
  record.type = InternType(tags.empty() ? std::string_view() : std::string_view(tags[0].value));
  record.tags = std::make_unique<Tags>(std::move(tags));
  RecordId id = static_cast<RecordId>(records_.size());
  records_.push_back(std::move(record));
  Link(id, after);
  // Callers often edit a record right after creating it: it is packed once they are done.
  KeepEditing(id);
  if (open_group_) {
    // Undoing the insertion takes the record out whatever it holds, and redoing it puts it
    // back as it is then: changes made to it in the same group need no entry of their own.
    records_[id].undo_saved = true;
    if (open_group_->entries.empty()) redo_.clear();
    UndoEntry entry;
    entry.kind = UndoEntry::Kind::kInsert;
    entry.id = id;
    entry.prev = after;
    open_group_->entries.push_back(std::move(entry));
  }
  return id;
}

void RecordStore::Link(RecordId id, RecordId after) {
  Record& r = records_[id];
  r.prev = after;
  if (after == kNoRecord) {
    r.next = first_;
    first_ = id;
  } else {
    r.next = records_[after].next;
    records_[after].next = id;
  }
  if (r.next == kNoRecord)
    last_ = id;
  else
    records_[r.next].prev = id;
}

void RecordStore::Erase(RecordId id) {
  Record& r = records_[id];
  if (r.erased) return;
  if (open_group_) {
    if (open_group_->entries.empty()) redo_.clear();
    UndoEntry entry;
    entry.kind = UndoEntry::Kind::kErase;
    entry.id = id;
    entry.prev = r.prev;
    open_group_->entries.push_back(std::move(entry));
  }
  Unlink(id);
}

void RecordStore::Unlink(RecordId id) {
  Record& r = records_[id];
  r.erased = true;
  if (r.prev == kNoRecord)
    first_ = r.next;
  else
    records_[r.prev].next = r.next;
  if (r.next == kNoRecord)
    last_ = r.prev;
  else
    records_[r.next].prev = r.prev;
}

void RecordStore::ReadTags(RecordId id, Tags& out) const {
  const Record& r = records_[id];
  if (r.tags) {
    out = *r.tags;
    return;
  }
  out.clear();
  if (format_.binary) {
    ReadBinaryTags(r, out);
    return;
  }
  ForEachTag(id, [&out](int code, std::string_view value) {
    out.push_back(Tag{code, std::string(value)});
    return true;
  });
}

Tags RecordStore::TagsOf(RecordId id) const {
  Tags tags;
  ReadTags(id, tags);
  return tags;
}

Tags& RecordStore::MutableTags(RecordId id) {
  if (open_group_) RecordChange(id);
  Record& r = records_[id];
  if (!r.tags) {
    auto tags = std::make_unique<Tags>();
    ReadTags(id, *tags);
    r.tags = std::move(tags);
  }
  KeepEditing(id);
  return *r.tags;
}

void RecordStore::SetType(RecordId id, std::string_view name) {
  Tags& tags = MutableTags(id);
  if (!tags.empty()) tags[0].value = std::string(name);
  records_[id].type = InternType(name);
}

void RecordStore::KeepEditing(RecordId id) {
  auto edited = std::find(edited_.begin(), edited_.end(), id);
  if (edited != edited_.end()) {
    edited_.erase(edited);
  } else if (edited_.size() >= kEditedKept) {
    Pack(edited_.front());
    edited_.erase(edited_.begin());
  }
  edited_.push_back(id);
}

bool RecordStore::Pack(RecordId id) {
  Record& r = records_[id];
  if (!r.tags) return true;
  pack_buffer_.clear();
  for (const Tag& tag : *r.tags)
    if (!AppendTag(tag, format_, pack_buffer_)) return false;
  uint64_t address = arena_.Add(pack_buffer_);
  r.begin = address;
  r.size = static_cast<uint32_t>(pack_buffer_.size());
  r.packed = true;
  r.tags.reset();
  return true;
}

void RecordStore::PackEdited() {
  for (RecordId id : edited_) Pack(id);
  edited_.clear();
}

void RecordStore::RecordChange(RecordId id) {
  Record& r = records_[id];
  if (r.undo_saved) return;
  r.undo_saved = true;
  if (open_group_->entries.empty()) redo_.clear();
  // The state saved is the record's bytes, not a copy of its tags, whenever it can be.
  auto edited = std::find(edited_.begin(), edited_.end(), id);
  if (edited != edited_.end()) {
    Pack(id);
    edited_.erase(edited);
  }
  RecordState saved;
  saved.begin = r.begin;
  saved.size = r.size;
  saved.xdict = r.xdict;
  saved.type = r.type;
  saved.packed = r.packed;
  if (r.tags) saved.tags = std::make_unique<Tags>(*r.tags);
  UndoEntry entry;
  entry.kind = UndoEntry::Kind::kChange;
  entry.id = id;
  entry.saved = static_cast<uint32_t>(open_group_->saved.size());
  open_group_->saved.push_back(std::move(saved));
  open_group_->entries.push_back(entry);
}

void RecordStore::SwapState(Record& r, RecordState& state) {
  std::swap(r.begin, state.begin);
  std::swap(r.size, state.size);
  std::swap(r.xdict, state.xdict);
  std::swap(r.type, state.type);
  bool packed = r.packed;
  r.packed = state.packed;
  state.packed = packed;
  std::swap(r.tags, state.tags);
}

void RecordStore::BeginUndoGroup() {
  PackEdited();
  if (!open_group_) open_group_ = std::make_unique<UndoGroup>();
}

void RecordStore::ForgetSavedMarks(const UndoGroup& group) {
  for (const UndoEntry& e : group.entries)
    if (e.kind != UndoEntry::Kind::kErase) records_[e.id].undo_saved = false;
}

UndoGroup* RecordStore::EndUndoGroup(bool keep_empty) {
  PackEdited();
  if (!open_group_) return nullptr;
  std::unique_ptr<UndoGroup> group = std::move(open_group_);
  ForgetSavedMarks(*group);
  if (group->entries.empty() && !keep_empty) return nullptr;
  // An empty group is still a step the user can undo; what could be redone is gone as after
  // any other command.
  if (group->entries.empty()) redo_.clear();
  undo_.push_back(std::move(group));
  return undo_.back().get();
}

void RecordStore::Replay(UndoGroup& group, bool backwards) {
  auto apply = [this, backwards, &group](UndoEntry& e) {
    Record& r = records_[e.id];
    switch (e.kind) {
      case UndoEntry::Kind::kChange:
        SwapState(r, group.saved[e.saved]);
        break;
      case UndoEntry::Kind::kInsert:
        if (backwards) {
          Unlink(e.id);
        } else {
          r.erased = false;
          Link(e.id, e.prev);
        }
        break;
      case UndoEntry::Kind::kErase:
        if (backwards) {
          r.erased = false;
          Link(e.id, e.prev);
        } else {
          Unlink(e.id);
        }
        break;
    }
  };
  if (backwards) {
    for (auto it = group.entries.rbegin(); it != group.entries.rend(); ++it) apply(*it);
  } else {
    for (UndoEntry& e : group.entries) apply(e);
  }
}

std::unique_ptr<UndoGroup> RecordStore::CancelUndoGroup() {
  PackEdited();
  if (!open_group_) return nullptr;
  std::unique_ptr<UndoGroup> group = std::move(open_group_);
  ForgetSavedMarks(*group);
  Replay(*group, true);
  return group;
}

const UndoGroup* RecordStore::Undo() {
  if (open_group_ || undo_.empty()) return nullptr;
  PackEdited();
  std::unique_ptr<UndoGroup> group = std::move(undo_.back());
  undo_.pop_back();
  Replay(*group, true);
  redo_.push_back(std::move(group));
  return redo_.back().get();
}

const UndoGroup* RecordStore::Redo() {
  if (open_group_ || redo_.empty()) return nullptr;
  PackEdited();
  std::unique_ptr<UndoGroup> group = std::move(redo_.back());
  redo_.pop_back();
  Replay(*group, false);
  undo_.push_back(std::move(group));
  return undo_.back().get();
}

void RecordStore::ClearUndo() {
  if (open_group_) ForgetSavedMarks(*open_group_);
  open_group_.reset();
  undo_.clear();
  redo_.clear();
}

void RecordStore::ReadBinaryTags(const Record& r, Tags& out) const {
  std::string_view bytes = RecordBytes(r);
  BinaryCursor cursor(bytes, 0, bytes.size(), format_.binary_one_byte_codes);
  Tag tag;
  std::string error;
  while (cursor.Next(tag, error)) out.push_back(tag);
}

uint16_t RecordStore::InternType(std::string_view name) {
  auto it = type_ids_.find(name);
  if (it != type_ids_.end()) return it->second;
  type_names_.emplace_back(name);
  uint16_t id = static_cast<uint16_t>(type_names_.size() - 1);
  type_ids_.emplace(type_names_.back(), id);
  return id;
}

RecordId RecordStore::FindHandle(Handle handle) const {
  uint32_t id = handle_index_.Get(handle);
  if (id == HandleIndex::kMissing || records_[id].erased) return kNoRecord;
  return id;
}

void RecordStore::IndexHandle(Handle handle, RecordId id) {
  handle_index_.Put(handle, id);
  if (handle > max_handle_) max_handle_ = handle;
}

bool ParseHandle(std::string_view text, Handle& out) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  if (text.empty() || text.size() > 16) return false;
  Handle value = 0;
  for (char c : text) {
    int digit;
    if (c >= '0' && c <= '9')
      digit = c - '0';
    else if (c >= 'A' && c <= 'F')
      digit = c - 'A' + 10;
    else if (c >= 'a' && c <= 'f')
      digit = c - 'a' + 10;
    else
      return false;
    value = (value << 4) | static_cast<Handle>(digit);
  }
  out = value;
  return true;
}

std::string FormatHandle(Handle handle) {
  static const char kDigits[] = "0123456789ABCDEF";
  char buf[17];
  int n = 0;
  do {
    buf[16 - n++] = kDigits[handle & 15];
    handle >>= 4;
  } while (handle != 0);
  return std::string(buf + 17 - n, static_cast<size_t>(n));
}

}  // namespace veltor::dxf
