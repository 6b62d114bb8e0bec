// The tag store of a DXF file: the file's bytes and the records cut from them.
//
// A record is the run of tags from one group-code-0 tag to the next ("0 LINE" and its tags,
// "0 SECTION" with its name, "0 ENDSEC", ...); the HEADER and THUMBNAILIMAGE sections are one
// record each. An unchanged record is a byte range of the source buffer and is written back
// byte for byte. A record that was changed or created is held as its tags while it is being
// edited, then packed: its tags written in the file's own style into the store's arena, which
// costs what the saved file will hold rather than a string per tag. Records form a linked
// list in storage order, so inserting into a million-record file costs O(1).
#pragma once

#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/dxf/byte_arena.h"
#include "drawing/dxf/handle_index.h"
#include "drawing/dxf/source_buffer.h"
#include "drawing/dxf/tag.h"
#include "drawing/dxf/tag_encoding.h"
#include "drawing/dxf/record.h"
#include "drawing/dxf/record_table.h"
#include "drawing/dxf/undo_log.h"

namespace veltor::dxf {

class RecordStore {
 public:
  RecordStore() = default;
  RecordStore(const RecordStore&) = delete;
  RecordStore& operator=(const RecordStore&) = delete;

  // --- source and format ---
  void SetSource(SourceBuffer bytes) { source_ = std::move(bytes); }
  std::string_view source() const { return source_.view(); }
  FileFormat& format() { return format_; }
  const FileFormat& format() const { return format_; }
  // Bytes before the first tag (the binary sentinel) and after "0 EOF", written back as they are.
  std::string prefix;
  std::string trailer;
  // The file had no "0 EOF": the writer adds it after the last record (before the trailer).
  bool append_eof = false;

  // --- records ---
  size_t size() const { return records_.size(); }
  Record& at(RecordId id) { return records_[id]; }
  const Record& at(RecordId id) const { return records_[id]; }
  RecordId first() const { return first_; }
  RecordId last() const { return last_; }

  // Appends a record at the end of storage order (used by the readers).
  RecordId Append(Record record);
  // Inserts a new record with the given tags after `after` (kNoRecord: at the front).
  RecordId InsertAfter(RecordId after, Tags tags, Section section);
  // Takes a record out of storage order and marks it erased; its id stays valid.
  void Erase(RecordId id);

  // Tags of a record: parsed from the source for unchanged records. `out` is overwritten.
  void ReadTags(RecordId id, Tags& out) const;
  Tags TagsOf(RecordId id) const;
  // Calls fn(code, value) for each tag until it returns false, without copying the values of
  // unchanged ASCII records. The views are valid during the call only.
  template <typename Fn>
  void ForEachTag(RecordId id, Fn&& fn) const;

  // The record's own tags, for editing; marks the record changed. The reference is valid
  // until the next call of MutableTags (for any record), InsertAfter, Begin/EndUndoGroup,
  // Undo or Redo: edited records are packed again by then.
  Tags& MutableTags(RecordId id);
  // Changes the record's type: its "0 TYPE" tag and the type TypeOf answers (undone with the
  // record's other changes).
  void SetType(RecordId id, std::string_view name);
  bool IsChanged(RecordId id) const { return records_[id].tags != nullptr || records_[id].packed; }
  // The bytes of a record that holds no tags: from the source or the arena.
  std::string_view RecordBytes(const Record& r) const {
    return r.packed ? arena_.View(r.begin, r.size) : source_.view().substr(r.begin, r.size);
  }

  // --- record types ---
  uint16_t InternType(std::string_view name);
  const std::string& TypeName(uint16_t type) const { return type_names_[type]; }
  const std::string& TypeOf(RecordId id) const { return type_names_[records_[id].type]; }

  // --- handles ---
  // Index of every handle; rebuilt by the reader, kept up to date by InsertAfter.
  RecordId FindHandle(Handle handle) const;
  void IndexHandle(Handle handle, RecordId id);
  Handle max_handle() const { return max_handle_; }

  // --- undo ---
  // Opens a group: changes from now on are recorded until EndUndoGroup. Opening a group
  // discards what could be redone. Groups do not nest: a second Begin is ignored.
  void BeginUndoGroup();
  // Closes the open group; a group without changes is dropped unless `keep_empty`. Returns
  // the group or nullptr.
  UndoGroup* EndUndoGroup(bool keep_empty = false);
  // Takes back every change of the open group and closes it without keeping it: the records
  // are as they were at BeginUndoGroup. Returns the group taken back (nullptr when none).
  std::unique_ptr<UndoGroup> CancelUndoGroup();
  bool recording() const { return open_group_ != nullptr; }
  UndoGroup* open_group() { return open_group_.get(); }
  size_t undo_depth() const { return undo_.size(); }
  size_t redo_depth() const { return redo_.size(); }
  // Undoes the newest closed group (or redoes the newest undone one) and returns it, or
  // nullptr when there is none. A group must not be open.
  const UndoGroup* Undo();
  const UndoGroup* Redo();
  // Forgets every recorded group.
  void ClearUndo();

 private:
  void RecordChange(RecordId id);
  // Clears the undo_saved marks of the records a group changed or inserted.
  void ForgetSavedMarks(const UndoGroup& group);
  void Unlink(RecordId id);
  // Swaps what undo restores between a record and a saved state.
  static void SwapState(Record& r, RecordState& state);
  void Replay(UndoGroup& group, bool backwards);

  void ReadBinaryTags(const Record& record, Tags& out) const;
  void Link(RecordId id, RecordId after);
  // Writes the record's tags into the arena and drops them; false (tags kept) when they
  // cannot be packed.
  bool Pack(RecordId id);
  // Packs every record being edited.
  void PackEdited();
  // Makes `id` (which holds tags) the most recently edited record, packing the least
  // recently edited one when more than kEditedKept would be kept.
  void KeepEditing(RecordId id);

  // Records being edited (holding tags), most recent last; a few are kept so that a command
  // editing the same records in turn does not pack them again at every change.
  static constexpr size_t kEditedKept = 8;

  SourceBuffer source_;
  ByteArena arena_;
  std::string pack_buffer_;
  std::vector<RecordId> edited_;
  FileFormat format_;
  RecordTable records_;
  RecordId first_ = kNoRecord;
  RecordId last_ = kNoRecord;
  std::deque<std::string> type_names_;
  std::unordered_map<std::string_view, uint16_t> type_ids_;
  HandleIndex handle_index_;
  Handle max_handle_ = 0;
  std::unique_ptr<UndoGroup> open_group_;
  std::vector<std::unique_ptr<UndoGroup>> undo_;
  std::vector<std::unique_ptr<UndoGroup>> redo_;
};

template <typename Fn>
void RecordStore::ForEachTag(RecordId id, Fn&& fn) const {
  const Record& r = records_[id];
  if (r.tags) {
    for (const Tag& t : *r.tags)
      if (!fn(t.code, std::string_view(t.value))) return;
    return;
  }
  if (format_.binary) {
    Tags tags;
    ReadBinaryTags(r, tags);
    for (const Tag& t : tags)
      if (!fn(t.code, std::string_view(t.value))) return;
    return;
  }
  // Lines of a DXF file are short: an inline scan beats a memchr call per line.
  std::string_view bytes = RecordBytes(r);
  const char* p = bytes.data();
  const char* end = p + bytes.size();
  while (p < end) {
    int code = 0;
    bool negative = false;
    for (; p < end && *p != '\n'; ++p) {
      if (*p >= '0' && *p <= '9') code = code * 10 + (*p - '0');
      else if (*p == '-') negative = true;
    }
    if (p >= end) return;
    const char* value = ++p;
    while (p < end && *p != '\n') ++p;
    const char* text_end = p > value && p[-1] == '\r' ? p - 1 : p;
    if (!fn(negative ? -code : code, std::string_view(value, static_cast<size_t>(text_end - value)))) return;
    if (p < end) ++p;
  }
}

// Parses a hexadecimal handle; returns false for empty text or a non-hex character.
bool ParseHandle(std::string_view text, Handle& out);
std::string FormatHandle(Handle handle);

}  // namespace veltor::dxf
