// A drawing: the tag store of a DXF file with typed access to what the engine needs.
//
// Reading never changes the store; every write goes through MutableTags, InsertAfter or
// Erase of the store, so only changed and created records are written from tags on save.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/dxf/encoding.h"
#include "drawing/dxf/record_store.h"
#include "od/status.h"

namespace veltor::model {

using dxf::Handle;
using dxf::RecordId;
using dxf::Section;
using dxf::Tag;
using dxf::Tags;
using dxf::kNoRecord;

class Document {
 public:
  // Opens a DXF file; warnings() then says what was tolerated.
  static Result<std::unique_ptr<Document>> Open(const std::string& path);
  static Result<std::unique_ptr<Document>> FromBytes(std::string bytes, const std::string& name);
  // A new empty drawing of the given version ("AC1015" ... "AC1032"); it has no path.
  static std::unique_ptr<Document> NewBlank(std::string_view acadver = "AC1032");

  // Writes to `path` atomically (see dxf::SaveDxfAtomic), first storing $HANDSEED.
  Status Save(const std::string& path);

  dxf::RecordStore& store() { return *store_; }
  const dxf::RecordStore& store() const { return *store_; }
  const std::vector<std::string>& warnings() const { return warnings_; }
  // The file the drawing was read from or last saved to; empty for a new drawing.
  const std::string& path() const { return path_; }

  // --- header ---
  // "$ACADVER" ("AC1009" when the file has no header).
  const std::string& version() const { return version_; }
  bool AtLeast(std::string_view acadver) const { return version_ >= acadver; }
  // The tags that follow "9 $NAME" in the header, or nothing if the variable is absent.
  std::optional<Tags> HeaderVar(std::string_view name) const;
  // Replaces (or appends) a header variable's value tags. Fails without a HEADER section.
  Status SetHeaderVar(std::string_view name, const Tags& values);
  // Integer header variable (first value), or `fallback`.
  int HeaderInt(std::string_view name, int fallback) const;
  // Linear display precision ($LUPREC, 0 to 8; 4 when absent).
  int Luprec() const { return HeaderInt("$LUPREC", 4); }
  Status SetLuprec(int precision);

  const dxf::TextCodec& codec() const { return *codec_; }
  std::string Decode(std::string_view raw) const { return codec_->Decode(raw); }
  std::string Encode(std::string_view utf8) const { return codec_->Encode(utf8); }

  // --- handles and records ---
  RecordId Find(Handle handle) const { return store_->FindHandle(handle); }
  // A new handle, above every handle in the file and $HANDSEED.
  Handle NewHandle();
  const std::string& TypeOf(RecordId id) const { return store_->TypeOf(id); }
  Tags TagsOf(RecordId id) const { return store_->TagsOf(id); }
  // The record's tags for editing (see dxf::RecordStore::MutableTags): the reference is
  // valid until the next MutableTags, record insertion, undo group boundary, Undo or Redo.
  Tags& MutableTags(RecordId id) {
    MarkModified();
    return store_->MutableTags(id);
  }
  bool modified() const { return modified_; }
  void MarkModified() {
    modified_ = true;
    ++generation_;
  }
  // Grows with every change made through the document; caches compare it.
  uint64_t generation() const { return generation_; }

  // --- undo ---
  // A group of changes undone and redone as one (one per command). Undo and Redo restore the
  // records and the handle seed exactly, so saving after an undo writes what saving before
  // the group would have written. They return the group replayed, or nullptr.
  void BeginUndoGroup(const std::string& label);
  // Closes the group; one without changes is kept as an undo step only with `keep_empty`.
  void EndUndoGroup(bool keep_empty = false);
  // Takes back every change since BeginUndoGroup, the handle seed and the modified mark
  // included, and forgets the group. Returns it (nullptr when no group was open).
  std::unique_ptr<dxf::UndoGroup> CancelUndoGroup();
  const dxf::UndoGroup* Undo();
  const dxf::UndoGroup* Redo();

  // The "0 SECTION" record of a section, or kNoRecord.
  RecordId SectionStart(Section section) const {
    return section_start_[static_cast<size_t>(section)];
  }
  // The ENDSEC record of a section, or kNoRecord.
  RecordId SectionEnd(Section section) const;
  // Inserts a record with a fresh handle in its group 5 (or 105 for DIMSTYLE) before
  // `before`. `tags[0]` is the "0 TYPE" tag; a handle tag is added after it when missing.
  // Returns the new record; its handle is in store().at(id).handle.
  RecordId InsertRecordBefore(RecordId before, Tags tags, Section section);

 private:
  Document() = default;
  Status Index();
  std::vector<uint64_t> OwnState() const;
  void RestoreOwnState(const std::vector<uint64_t>& state);
  RecordId HeaderRecord() const;

  std::unique_ptr<dxf::RecordStore> store_;
  std::unique_ptr<dxf::TextCodec> codec_;
  std::vector<std::string> warnings_;
  std::string path_;
  std::string version_ = "AC1009";
  Handle next_handle_ = 1;
  bool handles_allocated_ = false;
  std::array<RecordId, 10> section_start_;
  std::array<RecordId, 10> section_end_;
  bool modified_ = false;
  bool modified_before_group_ = false;
  uint64_t generation_ = 0;
};

// First value of `code` in `tags`, or nullptr.
const Tag* FindTag(const Tags& tags, int code);
std::string TagText(const Tags& tags, int code, std::string_view fallback = "");
double TagDouble(const Tags& tags, int code, double fallback = 0.0);
long long TagInt(const Tags& tags, int code, long long fallback = 0);
// Sets the first tag of `code` or inserts one at `insert_at` (end when past the end).
void SetTag(Tags& tags, int code, std::string value, size_t insert_at = static_cast<size_t>(-1));

// Leading-number parses that never fail: DXF values are trusted to be numbers, but a few
// real files hold text like "256QSW" where a number belongs; the leading digits count.
double ParseDouble(std::string_view text);
long long ParseInt(std::string_view text);

}  // namespace veltor::model
