#include "drawing/model/document.h"

#include <charconv>
#include <cstdlib>

#include "drawing/dxf/reader.h"
#include "drawing/dxf/writer.h"
#include "drawing/model/blank_drawing.h"

namespace veltor::model {

Result<std::unique_ptr<Document>> Document::Open(const std::string& path) {
  auto read = dxf::ReadDxfFile(path);
  if (!read.ok()) return read.status();
  std::unique_ptr<Document> doc(new Document());
  doc->store_ = std::move(read->store);
  doc->warnings_ = std::move(read->warnings);
  doc->path_ = path;
  Status indexed = doc->Index();
  if (!indexed.ok()) return indexed.Wrap(path);
  return doc;
}

Result<std::unique_ptr<Document>> Document::FromBytes(std::string bytes, const std::string& name) {
  auto read = dxf::ParseDxf(std::move(bytes), name);
  if (!read.ok()) return read.status();
  std::unique_ptr<Document> doc(new Document());
  doc->store_ = std::move(read->store);
  doc->warnings_ = std::move(read->warnings);
  doc->path_ = name;
  Status indexed = doc->Index();
  if (!indexed.ok()) return indexed.Wrap(name);
  return doc;
}

std::unique_ptr<Document> Document::NewBlank(std::string_view acadver) {
  auto doc = FromBytes(BlankDrawingText(acadver), "new drawing");
  // The template is part of the program; failing to read it is a programming error.
  if (!doc.ok()) std::abort();
  (*doc)->path_.clear();  // no file yet (the session gives it a name such as Drawing1.dxf)
  return std::move(doc.value());
}

Status Document::Index() {
  RecordId header = HeaderRecord();
  if (header != kNoRecord) {
    Tags tags = store_->TagsOf(header);
    for (size_t i = 0; i + 1 < tags.size(); ++i) {
      if (tags[i].code != 9) continue;
      if (tags[i].value == "$ACADVER") version_ = tags[i + 1].value;
      if (tags[i].value == "$HANDSEED") {
        Handle seed = 0;
        if (dxf::ParseHandle(tags[i + 1].value, seed)) next_handle_ = seed;
      }
    }
  }
  while (!version_.empty() && version_.back() == ' ') version_.pop_back();
  auto page = HeaderVar("$DWGCODEPAGE");
  std::string code_page = page && !page->empty() ? (*page)[0].value : "ANSI_1252";
  codec_ = std::make_unique<dxf::TextCodec>(version_ >= "AC1021", code_page);
  if (next_handle_ <= store_->max_handle()) next_handle_ = store_->max_handle() + 1;

  // Owners that point nowhere are tolerated (other programs read such files) but reported.
  size_t dangling = 0;
  Handle example = 0;
  section_start_.fill(kNoRecord);
  section_end_.fill(kNoRecord);
  for (RecordId id = store_->first(); id != kNoRecord; id = store_->at(id).next) {
    const dxf::Record& r = store_->at(id);
    if (r.section != Section::kNone && section_start_[static_cast<size_t>(r.section)] == kNoRecord &&
        store_->TypeName(r.type) == "SECTION")
      section_start_[static_cast<size_t>(r.section)] = id;
    if (r.section != Section::kNone && store_->TypeName(r.type) == "ENDSEC")
      section_end_[static_cast<size_t>(r.section)] = id;
    Handle owner = store_->at(id).owner;
    if (owner != 0 && store_->FindHandle(owner) == kNoRecord) {
      if (dangling++ == 0) example = store_->at(id).handle;
    }
  }
  if (dangling > 0)
    warnings_.push_back(std::to_string(dangling) + " object(s) name an owner that is not in the "
                        "file (first: handle " + dxf::FormatHandle(example) + "); kept as they are");
  return Status::Ok();
}

RecordId Document::HeaderRecord() const {
  for (RecordId id = store_->first(); id != kNoRecord; id = store_->at(id).next) {
    const dxf::Record& r = store_->at(id);
    if (r.section == Section::kHeader && store_->TypeName(r.type) == "SECTION") return id;
    if (r.section == Section::kTables || r.section == Section::kEntities) break;
  }
  return kNoRecord;
}

std::optional<Tags> Document::HeaderVar(std::string_view name) const {
  RecordId header = HeaderRecord();
  if (header == kNoRecord) return std::nullopt;
  Tags tags = store_->TagsOf(header);
  for (size_t i = 0; i < tags.size(); ++i) {
    if (tags[i].code != 9 || tags[i].value != name) continue;
    Tags values;
    for (size_t k = i + 1; k < tags.size() && tags[k].code != 9; ++k) values.push_back(tags[k]);
    return values;
  }
  return std::nullopt;
}

Status Document::SetHeaderVar(std::string_view name, const Tags& values) {
  RecordId header = HeaderRecord();
  if (header == kNoRecord) return Status::Error("the drawing has no HEADER section");
  Tags& tags = MutableTags(header);
  size_t i = 0;
  while (i < tags.size() && !(tags[i].code == 9 && tags[i].value == name)) ++i;
  if (i == tags.size()) {
    tags.push_back(Tag{9, std::string(name)});
    tags.insert(tags.end(), values.begin(), values.end());
  } else {
    size_t k = i + 1;
    while (k < tags.size() && tags[k].code != 9) ++k;
    tags.erase(tags.begin() + static_cast<long>(i + 1), tags.begin() + static_cast<long>(k));
    tags.insert(tags.begin() + static_cast<long>(i + 1), values.begin(), values.end());
  }
  modified_ = true;
  return Status::Ok();
}

int Document::HeaderInt(std::string_view name, int fallback) const {
  auto values = HeaderVar(name);
  if (!values || values->empty()) return fallback;
  return static_cast<int>(ParseInt((*values)[0].value));
}

Status Document::SetLuprec(int precision) {
  if (precision < 0 || precision > 8)
    return Status::Error("$LUPREC: " + std::to_string(precision) + " is not between 0 and 8");
  return SetHeaderVar("$LUPREC", {Tag{70, std::to_string(precision)}});
}

Handle Document::NewHandle() {
  handles_allocated_ = true;
  return next_handle_++;
}

RecordId Document::SectionEnd(Section section) const {
  // ENDSEC records are never erased, so the ids found when the file was read stay valid.
  return section_end_[static_cast<size_t>(section)];
}

std::vector<uint64_t> Document::OwnState() const {
  return {next_handle_, handles_allocated_ ? 1u : 0u};
}

void Document::RestoreOwnState(const std::vector<uint64_t>& state) {
  if (state.size() != 2) return;
  next_handle_ = state[0];
  handles_allocated_ = state[1] != 0;
  // The drawing now differs from what was last saved (or loaded), whichever way it moved.
  MarkModified();
}

void Document::BeginUndoGroup(const std::string& label) {
  if (store_->recording()) return;
  store_->BeginUndoGroup();
  store_->open_group()->label = label;
  store_->open_group()->owner_before = OwnState();
  modified_before_group_ = modified_;
}

void Document::EndUndoGroup(bool keep_empty) {
  if (dxf::UndoGroup* group = store_->EndUndoGroup(keep_empty)) group->owner_after = OwnState();
}

std::unique_ptr<dxf::UndoGroup> Document::CancelUndoGroup() {
  std::unique_ptr<dxf::UndoGroup> group = store_->CancelUndoGroup();
  if (!group) return nullptr;
  if (group->owner_before.size() == 2) {
    next_handle_ = group->owner_before[0];
    handles_allocated_ = group->owner_before[1] != 0;
  }
  modified_ = modified_before_group_;
  ++generation_;
  return group;
}

const dxf::UndoGroup* Document::Undo() {
  const dxf::UndoGroup* group = store_->Undo();
  // A step that changed nothing leaves the drawing (and its modified mark) as it is.
  if (group && !group->entries.empty()) RestoreOwnState(group->owner_before);
  return group;
}

const dxf::UndoGroup* Document::Redo() {
  const dxf::UndoGroup* group = store_->Redo();
  if (group && !group->entries.empty()) RestoreOwnState(group->owner_after);
  return group;
}

RecordId Document::InsertRecordBefore(RecordId before, Tags tags, Section section) {
  Handle handle = NewHandle();
  int handle_code = !tags.empty() && tags[0].value == "DIMSTYLE" ? 105 : 5;
  if (tags.size() < 2 || (tags[1].code != 5 && tags[1].code != 105))
    tags.insert(tags.begin() + 1, Tag{handle_code, dxf::FormatHandle(handle)});
  else
    tags[1].value = dxf::FormatHandle(handle);
  Handle owner = 0;
  bool paper_space = false;
  for (const Tag& t : tags) {
    if (t.code == 1001) break;  // extended data: its codes mean something else
    if (t.code == 330 && owner == 0) dxf::ParseHandle(t.value, owner);
    if (t.code == 67) paper_space = ParseInt(t.value) == 1;
  }
  RecordId after = before == kNoRecord ? store_->last() : store_->at(before).prev;
  RecordId id = store_->InsertAfter(after, std::move(tags), section);
  dxf::Record& r = store_->at(id);
  r.handle = handle;
  r.owner = owner;
  r.paper_space = paper_space;
  const std::string& type = store_->TypeName(r.type);
  r.sub_entity = (section == Section::kEntities || section == Section::kBlocks) &&
                 (type == "VERTEX" || type == "SEQEND" || type == "ATTRIB");
  store_->IndexHandle(handle, id);
  MarkModified();
  return id;
}

Status Document::Save(const std::string& path) {
  auto seed = handles_allocated_ ? HeaderVar("$HANDSEED") : std::nullopt;
  if (seed && !seed->empty()) {
    Handle current = 0;
    dxf::ParseHandle((*seed)[0].value, current);
    if (current < next_handle_) {
      Status set = SetHeaderVar("$HANDSEED", {Tag{5, dxf::FormatHandle(next_handle_)}});
      if (!set.ok()) return set;
    }
  }
  Status saved = dxf::SaveDxfAtomic(*store_, path);
  if (saved.ok()) {
    path_ = path;
    modified_ = false;
  }
  return saved;
}

const Tag* FindTag(const Tags& tags, int code) {
  for (const Tag& t : tags)
    if (t.code == code) return &t;
  return nullptr;
}

std::string TagText(const Tags& tags, int code, std::string_view fallback) {
  const Tag* t = FindTag(tags, code);
  return t ? t->value : std::string(fallback);
}

double TagDouble(const Tags& tags, int code, double fallback) {
  const Tag* t = FindTag(tags, code);
  return t ? ParseDouble(t->value) : fallback;
}

long long TagInt(const Tags& tags, int code, long long fallback) {
  const Tag* t = FindTag(tags, code);
  return t ? ParseInt(t->value) : fallback;
}

void SetTag(Tags& tags, int code, std::string value, size_t insert_at) {
  for (Tag& t : tags)
    if (t.code == code) {
      t.value = std::move(value);
      return;
    }
  if (insert_at > tags.size()) insert_at = tags.size();
  tags.insert(tags.begin() + static_cast<long>(insert_at), Tag{code, std::move(value)});
}

double ParseDouble(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  if (i < text.size() && text[i] == '+') ++i;
  double value = 0.0;
  std::from_chars(text.data() + i, text.data() + text.size(), value);
  return value;
}

long long ParseInt(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  if (i < text.size() && text[i] == '+') ++i;
  long long value = 0;
  std::from_chars(text.data() + i, text.data() + text.size(), value);
  return value;
}

}  // namespace veltor::model
