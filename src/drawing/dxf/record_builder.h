// Cuts a stream of tags into records while a reader scans a file: finds record boundaries,
// sections, handles, owners and extension dictionaries, and checks the file's structure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/dxf/record_store.h"

namespace veltor::dxf {

class RecordBuilder {
 public:
  // `where_name` is "line" for ASCII files and "byte" for binary ones (used in messages).
  RecordBuilder(RecordStore& store, const char* where_name)
      : store_(store), where_name_(where_name) {}

  // A tag that starts at byte `begin`, at line (or byte offset) `where`. Returns false on a
  // structural error, with error() set.
  bool OnTag(int code, std::string_view value, uint64_t begin, uint32_t where);
  // Closes the last record at byte `end` and checks that every section was closed. A file
  // without the EOF marker loads when its sections are complete: records after the last
  // section (a damaged tail) are dropped, a warning says so, and the store is marked to end
  // every save with "0 EOF".
  bool Finish(uint64_t end);

  bool saw_eof() const { return saw_eof_; }
  // True once the current record is the EOF record.
  bool in_eof_record() const { return in_eof_; }
  const std::string& error() const { return error_; }
  std::vector<std::string>& warnings() { return warnings_; }

 private:
  bool Fail(uint32_t where, const std::string& reason);
  bool CloseRecord(uint64_t end);
  void DropDamagedTail(uint64_t end);
  // The line (ASCII) or byte offset (binary) of the record starting at byte `begin`; counted
  // from the source, for messages only.
  uint64_t WhereOf(uint64_t begin) const;
  Section SectionFromName(std::string_view name) const;

  RecordStore& store_;
  const char* where_name_;
  Record current_;
  uint32_t current_where_ = 0;  // line or byte offset of the current record's first tag
  bool have_current_ = false;
  int tag_in_record_ = 0;
  bool in_app_group_ = false;
  bool in_xdict_group_ = false;
  bool is_dimstyle_ = false;
  bool awaiting_section_name_ = false;
  Section section_ = Section::kNone;
  bool in_section_ = false;
  uint32_t section_where_ = 0;
  std::string section_name_;
  bool saw_eof_ = false;
  bool in_eof_ = false;
  uint16_t type_vertex_ = 0, type_seqend_ = 0, type_attrib_ = 0, type_dimstyle_ = 0;
  bool types_ready_ = false;
  std::string error_;
  std::vector<std::string> warnings_;
};

}  // namespace veltor::dxf
