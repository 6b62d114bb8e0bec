// The tag store of a DXF file: the file's bytes and the records cut from them.
//
// A record is the run of tags from one group-code-0 tag to the next ("0 LINE" and its tags,
// "0 SECTION" with its name, "0 ENDSEC", ...); the HEADER and THUMBNAILIMAGE sections are one
// record each. An unchanged record is a byte range of the source buffer and is written back
// byte for byte; a record that was changed or created holds its own tags. Records form a
// linked list in storage order, so inserting into a million-record file costs O(1).
#pragma once

#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/dxf/handle_index.h"
#include "drawing/dxf/source_buffer.h"
#include "drawing/dxf/tag.h"
#include "drawing/dxf/undo_log.h"

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

struct FileFormat {
  bool binary = false;
  bool binary_one_byte_codes = false;  // binary R12: one-byte group codes, 255 escapes
  bool crlf = false;                   // ASCII line ends
  bool right_aligned_codes = true;     // "  0" rather than "0"
};

struct Record {
  uint64_t begin = 0;  // byte range in the source buffer, for unchanged records
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
  std::unique_ptr<Tags> tags;  // own tags once changed or created
};

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

  // The record's own tags, materialised on first call; marks the record changed.
  Tags& MutableTags(RecordId id);
  bool IsChanged(RecordId id) const { return records_[id].tags != nullptr; }

  // --- record types ---
  uint16_t InternType(std::string_view name);
  const std::string& TypeName(uint16_t type) const { return type_names_[type]; }
  const std::string& TypeOf(RecordId id) const { return type_names_[records_[id].type]; }

  // --- handles ---
  // Index of every handle; rebuilt by the reader, kept up to date by InsertAfter.
  RecordId FindHandle(Handle handle) const;
  void IndexHandle(Handle handle, RecordId id);
  void ReserveHandles(size_t n) { handle_index_.reserve(n); }
  void ReserveRecords(size_t n) { records_.reserve(n); }
  Handle max_handle() const { return max_handle_; }

  // --- undo ---
  // Opens a group: changes from now on are recorded until EndUndoGroup. Opening a group
  // discards what could be redone. Groups do not nest: a second Begin is ignored.
  void BeginUndoGroup();
  // Closes the open group; a group without changes is dropped. Returns the group or nullptr.
  UndoGroup* EndUndoGroup();
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
  void Unlink(RecordId id);
  // Swaps every field of the two records but their links and erased state.
  static void SwapState(Record& a, Record& b);
  void Replay(UndoGroup& group, bool backwards);

  void ReadBinaryTags(const Record& record, Tags& out) const;
  void Link(RecordId id, RecordId after);

  SourceBuffer source_;
  FileFormat format_;
  std::vector<Record> records_;
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
  const char* p = source_.data() + r.begin;
  const char* end = source_.data() + r.end;
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
