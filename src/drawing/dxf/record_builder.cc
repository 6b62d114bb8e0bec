#include "drawing/dxf/record_builder.h"

#include <algorithm>

namespace veltor::dxf {

namespace {
std::string_view Trim(std::string_view s) {
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  return s;
}
}  // namespace

uint64_t RecordBuilder::WhereOf(uint64_t begin) const {
  if (std::string_view(where_name_) != "line") return begin;
  std::string_view source = store_.source().substr(0, begin);
  return 1 + static_cast<uint64_t>(std::count(source.begin(), source.end(), '\n'));
}

bool RecordBuilder::Fail(uint32_t where, const std::string& reason) {
  error_ = std::string(where_name_) + " " + std::to_string(where) + ": " + reason;
  return false;
}

Section RecordBuilder::SectionFromName(std::string_view name) const {
  if (name == "HEADER") return Section::kHeader;
  if (name == "CLASSES") return Section::kClasses;
  if (name == "TABLES") return Section::kTables;
  if (name == "BLOCKS") return Section::kBlocks;
  if (name == "ENTITIES") return Section::kEntities;
  if (name == "OBJECTS") return Section::kObjects;
  if (name == "THUMBNAILIMAGE") return Section::kThumbnail;
  if (name == "ACDSDATA") return Section::kAcdsData;
  return Section::kOther;
}

bool RecordBuilder::CloseRecord(uint64_t end) {
  if (!have_current_) return true;
  current_.size = static_cast<uint32_t>(end - current_.begin);
  Handle handle = current_.handle;
  uint32_t where = current_where_;
  RecordId id = store_.Append(std::move(current_));
  current_ = Record();
  have_current_ = false;
  if (handle != 0) {
    RecordId other = store_.FindHandle(handle);
    if (other != kNoRecord)
      return Fail(where, "duplicate handle " + FormatHandle(handle) + " (already used at " +
                             where_name_ + " " + std::to_string(WhereOf(store_.at(other).begin)) + ")");
    store_.IndexHandle(handle, id);
  }
  return true;
}

bool RecordBuilder::OnTag(int code, std::string_view value, uint64_t begin, uint32_t where) {
  if (!types_ready_) {
    type_vertex_ = store_.InternType("VERTEX");
    type_seqend_ = store_.InternType("SEQEND");
    type_attrib_ = store_.InternType("ATTRIB");
    type_dimstyle_ = store_.InternType("DIMSTYLE");
    types_ready_ = true;
  }
  if (code == 0 || !have_current_) {
    if (!CloseRecord(begin)) return false;
    have_current_ = true;
    current_.begin = begin;
    current_where_ = where;
    tag_in_record_ = 0;
    in_app_group_ = in_xdict_group_ = false;
    std::string_view type = code == 0 ? Trim(value) : std::string_view();
    current_.type = store_.InternType(type);
    is_dimstyle_ = current_.type == type_dimstyle_;
    awaiting_section_name_ = false;
    if (code != 0) {
      current_.section = section_;  // loose tags (comments) before the first record
    } else if (type == "SECTION") {
      if (in_section_)
        return Fail(where, "SECTION inside section " + section_name_ + " (started at " +
                               where_name_ + " " + std::to_string(section_where_) +
                               ") that has no ENDSEC");
      in_section_ = true;
      section_where_ = where;
      section_ = Section::kOther;
      section_name_ = "?";
      awaiting_section_name_ = true;
      current_.section = section_;
    } else if (type == "ENDSEC") {
      if (!in_section_) return Fail(where, "ENDSEC without a SECTION");
      current_.section = section_;
      in_section_ = false;
      section_ = Section::kNone;
    } else if (type == "EOF") {
      if (in_section_)
        return Fail(where, "end of file marker inside section " + section_name_ +
                               " (missing ENDSEC)");
      saw_eof_ = true;
      in_eof_ = true;
      current_.section = Section::kNone;
    } else {
      current_.section = section_;
      if (section_ == Section::kEntities || section_ == Section::kBlocks) {
        uint16_t t = current_.type;
        current_.sub_entity = t == type_vertex_ || t == type_seqend_ || t == type_attrib_;
      }
    }
    ++tag_in_record_;
    return true;
  }

  ++tag_in_record_;
  switch (code) {
    case 2:
      if (awaiting_section_name_ && tag_in_record_ == 2) {
        section_name_ = std::string(Trim(value));
        section_ = SectionFromName(section_name_);
        current_.section = section_;
        awaiting_section_name_ = false;
      }
      break;
    case 5:
    case 105:
      if (current_.handle == 0 && section_ != Section::kHeader && section_ != Section::kClasses &&
          (code == 105 || !is_dimstyle_)) {
        Handle h;
        if (!ParseHandle(value, h))
          return Fail(where + 1, "invalid handle '" + std::string(value) + "'");
        current_.handle = h;
      }
      break;
    case 102: {
      std::string_view v = Trim(value);
      if (!v.empty() && v.front() == '{') {
        in_app_group_ = true;
        in_xdict_group_ = v == "{ACAD_XDICTIONARY";
      } else if (v == "}") {
        in_app_group_ = in_xdict_group_ = false;
      }
      break;
    }
    case 330:
      if (!in_app_group_ && current_.owner == 0) {
        Handle h;
        if (ParseHandle(value, h)) current_.owner = h;
      }
      break;
    case 360:
      if (in_xdict_group_ && current_.xdict == 0) {
        Handle h;
        if (ParseHandle(value, h)) current_.xdict = h;
      }
      break;
    case 67:
      current_.paper_space = Trim(value) == "1";
      break;
    default:
      break;
  }
  return true;
}

bool RecordBuilder::Finish(uint64_t end) {
  if (!CloseRecord(end)) return false;
  if (in_section_)
    return Fail(section_where_, "section " + section_name_ + " has no ENDSEC before the end of file");
  if (!saw_eof_) DropDamagedTail(end);
  return true;
}

void RecordBuilder::DropDamagedTail(uint64_t end) {
  // Every save of the drawing ends with the marker the file lacks, so what is written is
  // well-formed DXF whether or not the drawing was changed.
  store_.append_eof = true;
  RecordId last_endsec = kNoRecord;
  for (RecordId id = store_.last(); id != kNoRecord && last_endsec == kNoRecord;
       id = store_.at(id).prev)
    if (store_.TypeOf(id) == "ENDSEC") last_endsec = id;
  RecordId tail = last_endsec == kNoRecord ? kNoRecord : store_.at(last_endsec).next;
  if (tail == kNoRecord) {
    warnings_.push_back("the file has no EOF marker; the drawing is complete without it "
                        "(a saved copy ends with one)");
    return;
  }
  // Records after the last section that are not the EOF marker: a file cut short in its
  // last lines ("0" then "EO"). Nothing of the drawing is in them; they are dropped.
  const Record& first = store_.at(tail);
  std::string_view source = store_.source();
  std::string shown;
  for (uint64_t i = first.begin; i < end && shown.size() < 40; ++i) {
    char c = source[i];
    if (c == '\r' || ((c == ' ' || c == '\n') && (shown.empty() || shown.back() == ' '))) continue;
    shown += c == '\n' ? ' ' : (c >= 32 && c < 127) ? c : '?';
  }
  while (!shown.empty() && shown.back() == ' ') shown.pop_back();
  warnings_.push_back("the file has no EOF marker and ends in " + std::to_string(end - first.begin) +
                      " bytes after its last section (" + where_name_ + " " +
                      std::to_string(WhereOf(first.begin)) + ": '" + shown +
                      "'); they were dropped, and a saved copy ends with EOF");
  while (tail != kNoRecord) {
    RecordId next = store_.at(tail).next;
    store_.Erase(tail);
    tail = next;
  }
}

}  // namespace veltor::dxf
