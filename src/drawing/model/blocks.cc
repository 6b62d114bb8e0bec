#include "drawing/model/blocks.h"

#include "drawing/dxf/binary_values.h"
#include "drawing/model/entity.h"
#include "drawing/model/tables.h"

namespace veltor::model {

namespace {

std::string Num(double v) { return dxf::FormatDouble(v); }

void AddPoint(Tags& tags, int code, Point3 p) {
  tags.push_back({code, Num(p.x)});
  tags.push_back({code + 10, Num(p.y)});
  tags.push_back({code + 20, Num(p.z)});
}

}  // namespace

std::string BlockName(const Document& doc, RecordId insert) {
  return doc.Decode(TagText(doc.TagsOf(insert), 2));
}

std::string EffectiveBlockName(const Document& doc, RecordId insert) {
  std::string name = BlockName(doc, insert);
  if (name.empty() || name[0] != '*') return name;
  RecordId record = FindBlockRecord(doc, name);
  if (record == kNoRecord) return name;
  Tags tags = doc.TagsOf(record);
  bool in_rep = false;
  for (const Tag& t : tags) {
    if (t.code == 1001) in_rep = t.value == "AcDbBlockRepBTag";
    if (in_rep && t.code == 1005) {
      Handle h = 0;
      if (!dxf::ParseHandle(t.value, h)) break;
      RecordId original = doc.Find(h);
      if (original != kNoRecord) return doc.Decode(TagText(doc.TagsOf(original), 2));
    }
  }
  return name;
}

std::vector<AttributeInfo> Attributes(const Document& doc, RecordId insert) {
  std::vector<AttributeInfo> out;
  for (RecordId sub : SubEntities(doc, insert)) {
    if (doc.TypeOf(sub) != "ATTRIB") continue;
    Tags tags = doc.TagsOf(sub);
    AttributeInfo info;
    info.id = sub;
    info.tag = doc.Decode(TagText(tags, 2));
    info.text = doc.Decode(TagText(tags, 1));
    out.push_back(std::move(info));
  }
  return out;
}

void SetAttributeText(Document& doc, RecordId attrib, std::string_view text) {
  SetTag(doc.MutableTags(attrib), 1, doc.Encode(text));
  doc.MarkModified();
}

RecordId FindBlockBegin(const Document& doc, std::string_view name) {
  RecordId start = doc.SectionStart(Section::kBlocks);
  if (start == kNoRecord) return kNoRecord;
  const dxf::RecordStore& s = doc.store();
  std::string raw = doc.Encode(name);
  for (RecordId id = s.at(start).next; id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).section != Section::kBlocks) break;
    if (s.TypeOf(id) == "BLOCK" && EqualsNoCaseAscii(TagText(s.TagsOf(id), 2), raw)) return id;
  }
  return kNoRecord;
}

std::vector<RecordId> BlockEntities(const Document& doc, std::string_view name) {
  std::vector<RecordId> out;
  RecordId begin = FindBlockBegin(doc, name);
  if (begin == kNoRecord) return out;
  const dxf::RecordStore& s = doc.store();
  for (RecordId id = s.at(begin).next; id != kNoRecord; id = s.at(id).next) {
    if (s.TypeOf(id) == "ENDBLK") break;
    if (!s.at(id).sub_entity) out.push_back(id);
  }
  return out;
}

RecordId AddBlockDefinition(Document& doc, std::string_view name, Point3 base,
                            const std::vector<BlockEntityBody>& entities,
                            const std::vector<std::pair<std::string, std::string>>& attribute_tags) {
  std::string raw_name = doc.Encode(name);
  RecordId table = FindTableHead(doc, "BLOCK_RECORD");
  Tags record{{0, "BLOCK_RECORD"},
              {330, dxf::FormatHandle(doc.store().at(table).handle)},
              {100, "AcDbSymbolTableRecord"},
              {100, "AcDbBlockTableRecord"},
              {2, raw_name}};
  RecordId block_record =
      doc.InsertRecordBefore(FindTableEnd(doc, "BLOCK_RECORD"), std::move(record), Section::kTables);
  std::string owner = dxf::FormatHandle(doc.store().at(block_record).handle);
  RecordId blocks_end = doc.SectionEnd(Section::kBlocks);

  Tags begin{{0, "BLOCK"}, {330, owner}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockBegin"},
             {2, raw_name},
             {70, std::to_string((name.size() > 0 && name[0] == '*' ? 1 : 0) |
                                 (attribute_tags.empty() ? 0 : 2))}};
  AddPoint(begin, 10, base);
  begin.push_back({3, raw_name});
  begin.push_back({1, ""});
  doc.InsertRecordBefore(blocks_end, std::move(begin), Section::kBlocks);
  for (const BlockEntityBody& e : entities) {
    Tags tags{{0, e.type}, {330, owner}, {100, "AcDbEntity"}, {8, doc.Encode(e.layer)}};
    tags.insert(tags.end(), e.body.begin(), e.body.end());
    doc.InsertRecordBefore(blocks_end, std::move(tags), Section::kBlocks);
  }
  double y = 0;
  for (const auto& [tag, text] : attribute_tags) {
    Tags def{{0, "ATTDEF"}, {330, owner}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbText"}};
    AddPoint(def, 10, Point3{base.x, base.y + y, base.z});
    def.push_back({40, "0.25"});
    def.push_back({1, doc.Encode(text)});
    def.push_back({100, "AcDbAttributeDefinition"});
    def.push_back({3, doc.Encode(tag)});
    def.push_back({2, doc.Encode(tag)});
    def.push_back({70, "0"});
    doc.InsertRecordBefore(blocks_end, std::move(def), Section::kBlocks);
    y -= 0.35;
  }
  Tags end{{0, "ENDBLK"}, {330, owner}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbBlockEnd"}};
  doc.InsertRecordBefore(blocks_end, std::move(end), Section::kBlocks);
  return block_record;
}

RecordId AddBlockReference(Document& doc, std::string_view block, Point3 at, double scale,
                           double rotation, std::string_view layer,
                           const std::vector<std::pair<std::string, std::string>>& attributes) {
  Tags body{{100, "AcDbBlockReference"}};
  if (!attributes.empty()) body.push_back({66, "1"});
  body.push_back({2, doc.Encode(block)});
  AddPoint(body, 10, at);
  body.push_back({41, Num(scale)});
  body.push_back({42, Num(scale)});
  body.push_back({43, Num(scale)});
  body.push_back({50, Num(rotation)});
  RecordId insert = AddModelSpaceEntity(doc, "INSERT", layer, std::move(body));
  if (attributes.empty()) return insert;
  std::string owner = dxf::FormatHandle(doc.store().at(insert).handle);
  RecordId before = doc.store().at(insert).next;
  double y = 0;
  for (const auto& [tag, text] : attributes) {
    Tags a{{0, "ATTRIB"}, {330, owner}, {100, "AcDbEntity"}, {8, doc.Encode(layer)},
           {100, "AcDbText"}};
    AddPoint(a, 10, Point3{at.x, at.y + y, at.z});
    a.push_back({40, Num(0.25 * scale)});
    a.push_back({1, doc.Encode(text)});
    a.push_back({100, "AcDbAttribute"});
    a.push_back({2, doc.Encode(tag)});
    a.push_back({70, "0"});
    RecordId id = doc.InsertRecordBefore(before, std::move(a), Section::kEntities);
    doc.store().at(id).sub_entity = true;
    y -= 0.35 * scale;
  }
  Tags seqend{{0, "SEQEND"}, {330, owner}, {100, "AcDbEntity"}, {8, doc.Encode(layer)}};
  RecordId id = doc.InsertRecordBefore(before, std::move(seqend), Section::kEntities);
  doc.store().at(id).sub_entity = true;
  return insert;
}

}  // namespace veltor::model
