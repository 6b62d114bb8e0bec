#include "drawing/model/upgrade_r12.h"

#include <map>
#include <set>

#include "drawing/dxf/group_codes.h"
#include "drawing/model/blank_drawing.h"
#include "drawing/model/objects.h"
#include "drawing/model/subclass_layout.h"
#include "drawing/model/table_index.h"
#include "drawing/model/tables.h"
#include "drawing/model/viewport_upgrade.h"

namespace veltor::model {

namespace {

// Header variables of R12 that R2000 and later no longer have (or own): not carried.
const std::set<std::string, std::less<>> kNotCarried{
    "$ACADVER", "$HANDSEED", "$HANDLING", "$DWGCODEPAGE", "$ATTDIA",  "$ATTREQ",
    "$AXISMODE", "$AXISUNIT", "$BLIPMODE", "$COORDS",     "$DRAGMODE", "$FLATLAND", "$OSMODE"};

const char* const kTables[] = {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW",
                               "UCS",   "APPID", "DIMSTYLE"};

// R12 files written by later programs carry their own model and paper space blocks
// ("$MODEL_SPACE", "*Paper_Space0", ...); the new drawing has its own.
bool IsLayoutBlock(const std::string& name) {
  auto starts = [&](std::string_view prefix) {
    return name.size() >= prefix.size() && EqualsNoCaseAscii(name.substr(0, prefix.size()), prefix);
  };
  return EqualsNoCaseAscii(name, "$MODEL_SPACE") || EqualsNoCaseAscii(name, "$PAPER_SPACE") ||
         starts("*Model_Space") || starts("*Paper_Space");
}

bool IsSubEntity(const std::string& type) {
  return type == "VERTEX" || type == "SEQEND" || type == "ATTRIB";
}

class Upgrader {
 public:
  Upgrader(const Document& src, Document& dst) : src_(src), dst_(dst), tables_(dst) {}

  std::vector<std::string> Run() {
    CopyHeader();
    const dxf::RecordStore& s = src_.store();
    std::string table;
    for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
      const dxf::Record& r = s.at(id);
      const std::string& type = s.TypeOf(id);
      // An empty type is the run of 999 comments some writers put before the first section.
      if (type.empty() || type == "SECTION" || type == "ENDSEC" || type == "EOF") continue;
      if (r.section == Section::kTables) {
        if (type == "TABLE") table = TagText(src_.TagsOf(id), 2);
        else if (type != "ENDTAB") CopyTableRecord(table, id);
      } else if (r.section == Section::kBlocks) {
        CopyBlockRecord(id);
      } else if (r.section == Section::kEntities || r.section == Section::kNone) {
        CopyEntity(id, EntityOwner(r), dst_.SectionEnd(Section::kEntities), Section::kEntities);
      }
    }
    LinkArrowBlocks();
    ReportDropped();
    return std::move(warnings_);
  }

 private:
  // --- text ---
  // The source's text in the target's encoding (they differ from R2007 on: UTF-8).
  Tags Transcode(Tags tags) const {
    for (Tag& t : tags)
      if (dxf::KindOfCode(t.code) == dxf::ValueKind::kString) t.value = dst_.Encode(src_.Decode(t.value));
    return tags;
  }

  // --- header ---
  void CopyHeader() {
    const dxf::RecordStore& s = src_.store();
    for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
      if (s.at(id).section != Section::kHeader || s.TypeOf(id) != "SECTION") continue;
      Tags tags = Transcode(src_.TagsOf(id));
      for (size_t i = 0; i < tags.size(); ++i) {
        if (tags[i].code != 9) continue;
        size_t end = i + 1;
        while (end < tags.size() && tags[end].code != 9 && tags[end].code != 0) ++end;
        if (kNotCarried.count(tags[i].value) == 0)
          (void)dst_.SetHeaderVar(tags[i].value, Tags(tags.begin() + static_cast<long>(i + 1),
                                                      tags.begin() + static_cast<long>(end)));
        i = end - 1;
      }
      break;
    }
    // R12 records no drawing units; "unitless" says so rather than guessing.
    (void)dst_.SetHeaderVar("$INSUNITS", {Tag{70, "0"}});
  }

  // --- tables ---
  void CopyTableRecord(const std::string& table, RecordId id) {
    Tags source = src_.TagsOf(id);
    bool known = false;
    for (const char* t : kTables) known = known || table == t;
    // Every block gets a new block record (see CopyBlockRecord), so the BLOCK_RECORD table
    // that some R12 writers add is not needed.
    if (table == "BLOCK_RECORD") return;
    if (!known || src_.TypeOf(id) != table) {
      ++dropped_records_[table.empty() ? src_.TypeOf(id) : table];
      return;
    }
    Tags body = Transcode(SubclassTableRecordTags(table, source));
    RegisterApps(body);
    if (table == "LAYER") CompleteLayer(body);
    std::string name = dst_.Encode(src_.Decode(TagText(source, 2)));
    RecordId head = tables_.Head(table);
    Handle table_handle = head == kNoRecord ? 0 : dst_.store().at(head).handle;
    RecordId existing = tables_.Find(table, name);
    RecordId made = kNoRecord;
    if (existing != kNoRecord && filled_.insert(existing).second) {
      // The blank drawing's default record takes the R12 record's values, keeping its handle.
      Tags& tags = dst_.MutableTags(existing);
      Tags head_tags(tags.begin(), tags.begin() + 3);  // 0 TYPE, 5/105 handle, 330 owner
      tags = std::move(head_tags);
      tags.insert(tags.end(), body.begin(), body.end());
      made = existing;
    }
    if (made == kNoRecord) {
      Tags tags{{0, table}, {330, dxf::FormatHandle(table_handle)}};
      tags.insert(tags.end(), body.begin(), body.end());
      made = dst_.InsertRecordBefore(tables_.End(table), std::move(tags), Section::kTables);
      filled_.insert(made);
      tables_.Add(table, name, made);
    }
    if (table == "DIMSTYLE")
      for (auto& [code, block] : ArrowBlockNames(source)) arrows_.push_back({made, code, block});
  }

  // Dimension styles point to their arrow blocks' records, which exist once the blocks are
  // carried over.
  void LinkArrowBlocks() {
    for (const Arrow& arrow : arrows_) {
      std::string name = dst_.Encode(src_.Decode(arrow.block));
      RecordId block = tables_.Find("BLOCK_RECORD", name);
      if (block == kNoRecord) {
        warnings_.push_back("dimension style '" + dst_.Decode(TagText(dst_.TagsOf(arrow.style), 2)) +
                            "' names arrow block '" + dst_.Decode(name) +
                            "', which the drawing does not define; it uses the default arrow");
        continue;
      }
      Tags& tags = dst_.MutableTags(arrow.style);
      size_t at = 0;
      while (at < tags.size() && tags[at].code < 1000) ++at;
      tags.insert(tags.begin() + static_cast<long>(at),
                  Tag{arrow.code, dxf::FormatHandle(dst_.store().at(block).handle)});
    }
  }

  // Layers of R2000 carry a lineweight and a plot style.
  void CompleteLayer(Tags& body) const {
    if (!FindTag(body, 370)) body.push_back({370, "-3"});
    if (!FindTag(body, 390)) {
      RecordId root = NamedObjectDictionary(dst_);
      RecordId styles = root == kNoRecord ? kNoRecord : DictionaryLookup(dst_, root, "ACAD_PLOTSTYLENAME");
      RecordId normal = styles == kNoRecord ? kNoRecord : DictionaryLookup(dst_, styles, "Normal");
      if (normal != kNoRecord) {
        // Extended data stays last.
        size_t at = 0;
        while (at < body.size() && body[at].code < 1000) ++at;
        body.insert(body.begin() + static_cast<long>(at),
                    Tag{390, dxf::FormatHandle(dst_.store().at(normal).handle)});
      }
    }
  }

  // Extended data names its application, which must be registered in the APPID table.
  void RegisterApps(const Tags& tags) {
    for (const Tag& t : tags)
      if (t.code == 1001 && apps_.insert(t.value).second && tables_.Find("APPID", t.value) == kNoRecord) {
        // Until the R12 APPID record (if any) comes by and fills it in.
        Tags app{{0, "APPID"},
                 {330, dxf::FormatHandle(dst_.store().at(tables_.Head("APPID")).handle)},
                 {100, "AcDbSymbolTableRecord"},
                 {100, "AcDbRegAppTableRecord"},
                 {2, t.value},
                 {70, "0"}};
        tables_.Add("APPID", t.value, dst_.InsertRecordBefore(tables_.End("APPID"), std::move(app), Section::kTables));
      }
  }

  // --- blocks ---
  void CopyBlockRecord(RecordId id) {
    const std::string& type = src_.TypeOf(id);
    RecordId end_of_blocks = dst_.SectionEnd(Section::kBlocks);
    if (type == "BLOCK") {
      Tags source = src_.TagsOf(id);
      std::string name = src_.Decode(TagText(source, 2));
      block_owner_ = 0;
      skipped_entities_ = 0;
      skipping_layout_ = IsLayoutBlock(name);
      if (skipping_layout_ || tables_.Find("BLOCK_RECORD", dst_.Encode(name)) != kNoRecord) {
        skipping_block_ = name;
        skipping_ = true;
        return;
      }
      skipping_ = false;
      RecordId head = tables_.Head("BLOCK_RECORD");
      Tags record{{0, "BLOCK_RECORD"}, {330, dxf::FormatHandle(dst_.store().at(head).handle)}};
      Tags body = SubclassTableRecordTags("BLOCK_RECORD", Tags{{2, TagText(source, 2)}});
      record.insert(record.end(), body.begin(), body.end());
      RecordId block_record = dst_.InsertRecordBefore(tables_.End("BLOCK_RECORD"),
                                                      Transcode(std::move(record)), Section::kTables);
      tables_.Add("BLOCK_RECORD", dst_.Encode(name), block_record);
      block_owner_ = dst_.store().at(block_record).handle;
      CopyEntity(id, block_owner_, end_of_blocks, Section::kBlocks);
      return;
    }
    if (skipping_) {
      if (type == "ENDBLK") {
        if (!skipping_layout_ || skipped_entities_ > 0)
          warnings_.push_back("block '" + skipping_block_ + "' (" + std::to_string(skipped_entities_) +
                              " entities) left out: the converted drawing has a block of that "
                              "name already");
        skipping_ = false;
      } else if (!IsSubEntity(type)) {
        ++skipped_entities_;
      }
      return;
    }
    CopyEntity(id, block_owner_, end_of_blocks, Section::kBlocks);
  }

  // --- entities ---
  Handle EntityOwner(const dxf::Record& r) {
    if (!model_space_) {
      model_space_ = dst_.store().at(FindBlockRecord(dst_, "*Model_Space")).handle;
      paper_space_ = dst_.store().at(FindBlockRecord(dst_, "*Paper_Space")).handle;
    }
    return r.paper_space ? paper_space_ : model_space_;
  }

  // Copies an entity (or BLOCK/ENDBLK) owned by `owner`; VERTEX, ATTRIB and SEQEND go to the
  // entity they follow instead.
  void CopyEntity(RecordId id, Handle owner, RecordId before, Section section) {
    const std::string& type = src_.TypeOf(id);
    Tags source = src_.TagsOf(id);
    bool sub = IsSubEntity(type);
    if (sub && parent_dropped_) return;  // counted with its parent
    if (sub && parent_ == 0) {
      ++dropped_[type];  // a vertex, attribute or end marker that follows no entity of its own
      return;
    }
    std::optional<Tags> body =
        type == "VIEWPORT"
            ? UpgradeR12Viewport(source, [this](std::string_view raw) { return LayerHandle(raw); })
            : SubclassEntityTags(type, source, sub ? parent_kind_ : PolylineKind::kNone);
    if (!sub) {
      parent_ = 0;
      parent_dropped_ = !body;
      parent_kind_ = type == "POLYLINE" ? PolylineKindOf(TagInt(source, 70, 0)) : PolylineKind::kNone;
    }
    if (!body) {
      ++dropped_[type];
      return;
    }
    Tags tags{{0, type}, {330, dxf::FormatHandle(sub ? parent_ : owner)}};
    tags.insert(tags.end(), body->begin(), body->end());
    tags = Transcode(std::move(tags));
    RegisterApps(tags);
    RecordId added = dst_.InsertRecordBefore(before, std::move(tags), section);
    if (!sub && (type == "POLYLINE" || type == "INSERT")) parent_ = dst_.store().at(added).handle;
    if (type == "SEQEND") parent_ = 0;
  }

  Handle LayerHandle(std::string_view raw) const {
    RecordId layer = tables_.Find("LAYER", dst_.Encode(src_.Decode(raw)));
    return layer == kNoRecord ? 0 : dst_.store().at(layer).handle;
  }

  void ReportDropped() {
    for (const auto& [type, count] : dropped_)
      warnings_.push_back(std::to_string(count) + " " + type + " entit" + (count == 1 ? "y" : "ies") +
                          " left out: the conversion does not know how to write " + type +
                          " for this release");
    for (const auto& [table, count] : dropped_records_)
      warnings_.push_back(std::to_string(count) + " record(s) of table " + table +
                          " left out: not a table the conversion carries");
  }

  const Document& src_;
  Document& dst_;
  TableIndex tables_;
  std::vector<std::string> warnings_;
  std::map<std::string, int> dropped_;
  std::map<std::string, int> dropped_records_;
  struct Arrow {
    RecordId style;  // the DIMSTYLE record of the new drawing
    int code;        // 342, 343 or 344
    std::string block;  // as the R12 file writes it
  };
  std::vector<Arrow> arrows_;
  std::set<RecordId> filled_;  // records of the new drawing that already hold R12 values
  std::set<std::string> apps_;
  Handle model_space_ = 0, paper_space_ = 0;
  Handle block_owner_ = 0;
  bool skipping_ = false;  // a block is being left out, while its records go by
  std::string skipping_block_;
  bool skipping_layout_ = false;
  int skipped_entities_ = 0;
  Handle parent_ = 0;  // the POLYLINE or INSERT whose sub-entities follow
  bool parent_dropped_ = false;
  PolylineKind parent_kind_ = PolylineKind::kNone;
};

}  // namespace

bool IsR12OrEarlier(const Document& doc) { return !doc.AtLeast("AC1012"); }

Result<UpgradedDrawing> UpgradeR12(const Document& source, std::string_view acadver) {
  if (!IsR12OrEarlier(source))
    return Status::Error("convert: the drawing is " + source.version() + ", not R12");
  if (acadver < "AC1015" || acadver > "AC1032")
    return Status::Error("convert: " + std::string(acadver) + " is not a release from R2000 to R2018");
  // The blank drawing is written in the source's code page, so that the new document's text
  // codec is the right one before anything is carried over.
  std::string text = BlankDrawingText(acadver);
  auto page = source.HeaderVar("$DWGCODEPAGE");
  if (page && !page->empty() && !(*page)[0].value.empty()) {
    const std::string kDefaultPage = "ANSI_1252";
    size_t at = text.find(kDefaultPage);
    if (at != std::string::npos) text.replace(at, kDefaultPage.size(), (*page)[0].value);
  }
  auto blank = Document::FromBytes(std::move(text), "converted drawing");
  if (!blank.ok()) return blank.status().Wrap("convert");
  UpgradedDrawing out;
  out.doc = std::move(blank).value();
  out.warnings = Upgrader(source, *out.doc).Run();
  out.doc->MarkModified();
  return out;
}

}  // namespace veltor::model
