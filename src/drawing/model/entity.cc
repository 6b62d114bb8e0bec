#include "drawing/model/entity.h"

#include <initializer_list>

#include "drawing/model/tables.h"

namespace veltor::model {

namespace {

bool IsMainEntityRecord(const dxf::Record& r, const std::string& type) {
  return !r.sub_entity && !r.erased && type != "SECTION" && type != "ENDSEC" && !type.empty();
}

}  // namespace

EntityProperties ReadProperties(const Document& doc, RecordId entity) {
  EntityProperties p;
  Tags tags = doc.TagsOf(entity);
  // Common codes come before the entity's own subclass ("100 AcDbLine", ...) or, in R12
  // files without subclass markers, before the first coordinate.
  bool common = true;
  bool seen_entity_marker = false;
  bool in_url = false;
  for (const Tag& t : tags) {
    if (t.code == 100) {
      if (seen_entity_marker) common = false;
      seen_entity_marker = seen_entity_marker || t.value == "AcDbEntity";
    }
    if (!seen_entity_marker && t.code >= 10 && t.code < 60) common = false;
    if (t.code >= 1000) {
      if (t.code == 1001) in_url = t.value == "PE_URL";
      if (t.code == 1000 && in_url) p.hyperlinks.push_back(doc.Decode(t.value));
      continue;
    }
    if (!common) continue;
    switch (t.code) {
      case 8: p.layer = doc.Decode(t.value); break;
      case 62: p.color = static_cast<int>(ParseInt(t.value)); break;
      case 420: p.true_color = static_cast<long>(ParseInt(t.value)); break;
      case 6: p.linetype = doc.Decode(t.value); break;
      case 48: p.linetype_scale = ParseDouble(t.value); break;
      case 370: p.lineweight = static_cast<int>(ParseInt(t.value)); break;
      case 440: p.transparency = static_cast<long>(ParseInt(t.value)); break;
      case 390: {
        Handle h = 0;
        if (dxf::ParseHandle(t.value, h)) p.plot_style_name = PlotStyleName(doc, h);
        break;
      }
      default: break;
    }
  }
  return p;
}

namespace {

// Gives `to` the values `from` has for `codes` among the common codes (those between
// "100 AcDbEntity" and the next subclass marker): a code `from` lacks is removed from `to`,
// so absent means the default (ByLayer) on both.
void CopyCommonCodes(Document& doc, const Tags& source, RecordId to,
                     std::initializer_list<int> codes) {
  Tags& target = doc.MutableTags(to);
  size_t common_end = target.size();
  bool in_entity = false;
  for (size_t i = 0; i < target.size(); ++i) {
    if (target[i].code == 100) {
      if (in_entity) {
        common_end = i;
        break;
      }
      in_entity = target[i].value == "AcDbEntity";
    }
  }
  for (int code : codes) {
    const Tag* t = FindTag(source, code);
    size_t at = common_end;
    bool replaced = false;
    for (size_t i = 0; i < common_end; ++i)
      if (target[i].code == code) {
        if (t) {
          target[i].value = t->value;
        } else {
          target.erase(target.begin() + static_cast<long>(i));
          --common_end;
        }
        replaced = true;
        break;
      }
    if (!replaced && t) {
      target.insert(target.begin() + static_cast<long>(at), *t);
      ++common_end;
    }
  }
}

}  // namespace

void CopyGraphicProperties(Document& doc, RecordId from, RecordId to) {
  Tags source = doc.TagsOf(from);
  // Color is the index, the true color and the color book name together. Vertices,
  // attributes and the closing SEQEND follow their entity's properties.
  std::vector<RecordId> records = SubEntities(doc, to);
  records.insert(records.begin(), to);
  for (RecordId record : records)
    CopyCommonCodes(doc, source, record, {62, 420, 430, 8, 6, 48, 370});
}

void CopyProperties(Document& doc, RecordId from, RecordId to) {
  Tags source = doc.TagsOf(from);
  CopyCommonCodes(doc, source, to, {8, 62, 420, 6, 48, 370, 440, 390});
  Tags& target = doc.MutableTags(to);
  // Hyperlinks travel as PE_URL xdata.
  Tags url;
  bool in_url = false;
  for (const Tag& t : source) {
    if (t.code == 1001) in_url = t.value == "PE_URL";
    if (in_url) url.push_back(t);
  }
  for (size_t i = 0; i < target.size(); ++i) {
    if (target[i].code == 1001 && target[i].value == "PE_URL") {
      size_t k = i + 1;
      while (k < target.size() && target[k].code != 1001) ++k;
      target.erase(target.begin() + static_cast<long>(i), target.begin() + static_cast<long>(k));
      break;
    }
  }
  if (!url.empty()) {
    target.insert(target.end(), url.begin(), url.end());
    EnsureAppId(doc, "PE_URL");
  }
  doc.MarkModified();
}

std::vector<RecordId> ModelSpaceEntities(const Document& doc) {
  std::vector<RecordId> out;
  const dxf::RecordStore& s = doc.store();
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    const dxf::Record& r = s.at(id);
    if (r.section != Section::kEntities || r.paper_space || r.sub_entity) continue;
    if (IsMainEntityRecord(r, s.TypeName(r.type))) out.push_back(id);
  }
  return out;
}

bool IsModelSpaceEntity(const Document& doc, RecordId id) {
  const dxf::RecordStore& s = doc.store();
  if (id == kNoRecord || id >= s.size()) return false;
  const dxf::Record& r = s.at(id);
  return r.section == Section::kEntities && !r.paper_space && IsMainEntityRecord(r, s.TypeName(r.type));
}

std::vector<RecordId> PaperSpaceEntities(const Document& doc) {
  std::vector<RecordId> out;
  const dxf::RecordStore& s = doc.store();
  bool in_paper_block = false;
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    const dxf::Record& r = s.at(id);
    const std::string& type = s.TypeName(r.type);
    if (r.section == Section::kBlocks) {
      if (type == "BLOCK") {
        std::string name = TagText(s.TagsOf(id), 2);
        in_paper_block = name.size() >= 12 && (name.compare(0, 12, "*Paper_Space") == 0 ||
                                               name.compare(0, 12, "*PAPER_SPACE") == 0);
      } else if (type == "ENDBLK") {
        in_paper_block = false;
      } else if (in_paper_block && !r.sub_entity) {
        out.push_back(id);
      }
      continue;
    }
    if (r.section == Section::kEntities && r.paper_space && IsMainEntityRecord(r, type))
      out.push_back(id);
  }
  return out;
}

std::vector<RecordId> SubEntities(const Document& doc, RecordId entity) {
  std::vector<RecordId> out;
  const dxf::RecordStore& s = doc.store();
  for (RecordId id = s.at(entity).next; id != kNoRecord && s.at(id).sub_entity; id = s.at(id).next)
    out.push_back(id);
  return out;
}

Handle ModelSpaceOwner(const Document& doc) {
  RecordId record = FindBlockRecord(doc, "*Model_Space");
  return record == kNoRecord ? 0 : doc.store().at(record).handle;
}

RecordId AddModelSpaceEntity(Document& doc, std::string_view type, std::string_view layer,
                             Tags body) {
  bool subclassed = doc.AtLeast("AC1012");
  Tags tags;
  tags.push_back(Tag{0, std::string(type)});
  if (subclassed) {
    tags.push_back(Tag{330, dxf::FormatHandle(ModelSpaceOwner(doc))});
    tags.push_back(Tag{100, "AcDbEntity"});
  }
  tags.push_back(Tag{8, doc.Encode(layer)});
  for (Tag& t : body)
    if (subclassed || t.code != 100) tags.push_back(std::move(t));
  return doc.InsertRecordBefore(doc.SectionEnd(Section::kEntities), std::move(tags),
                                Section::kEntities);
}

void EraseOwnedTree(Document& doc, RecordId object) {
  if (object == kNoRecord || doc.store().at(object).erased) return;
  // Dictionaries own their entries (350/360); other objects own what 360 points to. The
  // pointers are read in place, before the erase: copying every tag of each erased object
  // (an XRECORD of Object Data holds many) would cost more than the erase itself.
  bool is_dictionary = doc.TypeOf(object) == "DICTIONARY";
  std::vector<Handle> pointed;
  doc.store().ForEachTag(object, [&](int code, std::string_view value) {
    Handle h = 0;
    if ((code == 360 || (is_dictionary && code == 350)) && dxf::ParseHandle(value, h))
      pointed.push_back(h);
    return true;
  });
  Handle self = doc.store().at(object).handle;
  doc.store().Erase(object);
  doc.MarkModified();  // also invalidates caches keyed on the document's generation
  if (doc.store().at(object).xdict != 0) EraseOwnedTree(doc, doc.Find(doc.store().at(object).xdict));
  for (Handle h : pointed) {
    RecordId child = doc.Find(h);
    if (child != kNoRecord && doc.store().at(child).owner == self) EraseOwnedTree(doc, child);
  }
}

void EraseEntity(Document& doc, RecordId entity) {
  for (RecordId sub : SubEntities(doc, entity)) EraseOwnedTree(doc, sub);
  EraseOwnedTree(doc, entity);
}

}  // namespace veltor::model
