#include "drawing/model/objects.h"

namespace veltor::model {

namespace {

Handle HandleOf(const Document& doc, RecordId id) { return doc.store().at(id).handle; }

RecordId ObjectsEnd(const Document& doc) { return doc.SectionEnd(Section::kObjects); }

}  // namespace

RecordId NamedObjectDictionary(const Document& doc) {
  RecordId start = doc.SectionStart(Section::kObjects);
  if (start == kNoRecord) return kNoRecord;
  const dxf::RecordStore& s = doc.store();
  for (RecordId id = s.at(start).next; id != kNoRecord; id = s.at(id).next) {
    if (s.TypeOf(id) == "DICTIONARY") return id;
    if (s.TypeOf(id) == "ENDSEC") break;
  }
  return kNoRecord;
}

std::vector<DictionaryEntry> DictionaryEntries(const Document& doc, RecordId dictionary) {
  std::vector<DictionaryEntry> out;
  Tags tags = doc.TagsOf(dictionary);
  for (size_t i = 0; i + 1 < tags.size(); ++i) {
    if (tags[i].code != 3) continue;
    const Tag& next = tags[i + 1];
    if (next.code != 350 && next.code != 360) continue;
    DictionaryEntry entry;
    entry.key = doc.Decode(tags[i].value);
    dxf::ParseHandle(next.value, entry.handle);
    out.push_back(std::move(entry));
  }
  return out;
}

RecordId DictionaryLookup(const Document& doc, RecordId dictionary, std::string_view key) {
  if (dictionary == kNoRecord) return kNoRecord;
  for (const auto& entry : DictionaryEntries(doc, dictionary))
    if (entry.key == key) return doc.Find(entry.handle);
  return kNoRecord;
}

void SetDictionaryEntry(Document& doc, RecordId dictionary, std::string_view key, Handle value) {
  Tags& tags = doc.MutableTags(dictionary);
  std::string raw = doc.Encode(key);
  for (size_t i = 0; i + 1 < tags.size(); ++i)
    if (tags[i].code == 3 && tags[i].value == raw &&
        (tags[i + 1].code == 350 || tags[i + 1].code == 360)) {
      tags[i + 1].value = dxf::FormatHandle(value);
      doc.MarkModified();
      return;
    }
  tags.push_back({3, raw});
  tags.push_back({350, dxf::FormatHandle(value)});
  doc.MarkModified();
}

void RemoveDictionaryEntry(Document& doc, RecordId dictionary, std::string_view key) {
  Tags& tags = doc.MutableTags(dictionary);
  std::string raw = doc.Encode(key);
  for (size_t i = 0; i + 1 < tags.size(); ++i)
    if (tags[i].code == 3 && tags[i].value == raw &&
        (tags[i + 1].code == 350 || tags[i + 1].code == 360)) {
      tags.erase(tags.begin() + static_cast<long>(i), tags.begin() + static_cast<long>(i + 2));
      doc.MarkModified();
      return;
    }
}

RecordId AddDictionary(Document& doc, Handle owner) {
  Tags tags{{0, "DICTIONARY"},
            {330, dxf::FormatHandle(owner)},
            {100, "AcDbDictionary"},
            {280, "1"},
            {281, "1"}};
  return doc.InsertRecordBefore(ObjectsEnd(doc), std::move(tags), Section::kObjects);
}

RecordId ExtensionDictionary(const Document& doc, RecordId entity) {
  Handle xdict = doc.store().at(entity).xdict;
  return xdict == 0 ? kNoRecord : doc.Find(xdict);
}

RecordId EnsureExtensionDictionary(Document& doc, RecordId entity) {
  RecordId existing = ExtensionDictionary(doc, entity);
  if (existing != kNoRecord) return existing;
  RecordId dict = AddDictionary(doc, HandleOf(doc, entity));
  Handle dict_handle = HandleOf(doc, dict);
  // The extension dictionary group goes after the handle and any reactor group, before the
  // owner pointer.
  Tags& tags = doc.MutableTags(entity);
  size_t at = 1;
  while (at < tags.size() && (tags[at].code == 5 || tags[at].code == 105)) ++at;
  if (at < tags.size() && tags[at].code == 102 && tags[at].value == "{ACAD_REACTORS") {
    while (at < tags.size() && !(tags[at].code == 102 && tags[at].value == "}")) ++at;
    if (at < tags.size()) ++at;
  }
  // A stale group pointing at an erased dictionary is replaced, not duplicated.
  if (at < tags.size() && tags[at].code == 102 && tags[at].value == "{ACAD_XDICTIONARY") {
    if (at + 1 < tags.size() && tags[at + 1].code == 360)
      tags[at + 1].value = dxf::FormatHandle(dict_handle);
  } else {
    Tags group{{102, "{ACAD_XDICTIONARY"}, {360, dxf::FormatHandle(dict_handle)}, {102, "}"}};
    tags.insert(tags.begin() + static_cast<long>(at), group.begin(), group.end());
  }
  doc.store().at(entity).xdict = dict_handle;
  doc.MarkModified();
  return dict;
}

RecordId AddXRecord(Document& doc, Handle dictionary, Tags data) {
  Tags tags{{0, "XRECORD"},
            {102, "{ACAD_REACTORS"},
            {330, dxf::FormatHandle(dictionary)},
            {102, "}"},
            {330, dxf::FormatHandle(dictionary)},
            {100, "AcDbXrecord"},
            {280, "1"}};
  tags.insert(tags.end(), std::make_move_iterator(data.begin()), std::make_move_iterator(data.end()));
  return doc.InsertRecordBefore(ObjectsEnd(doc), std::move(tags), Section::kObjects);
}

Tags XRecordData(const Document& doc, RecordId xrecord) {
  Tags tags = doc.TagsOf(xrecord);
  size_t i = 0;
  while (i < tags.size() && !(tags[i].code == 100 && tags[i].value == "AcDbXrecord")) ++i;
  if (i < tags.size()) ++i;
  if (i < tags.size() && tags[i].code == 280) ++i;
  return Tags(tags.begin() + static_cast<long>(i), tags.end());
}

void SetXRecordData(Document& doc, RecordId xrecord, Tags data) {
  Tags& tags = doc.MutableTags(xrecord);
  size_t i = 0;
  while (i < tags.size() && !(tags[i].code == 100 && tags[i].value == "AcDbXrecord")) ++i;
  if (i < tags.size()) ++i;
  if (i < tags.size() && tags[i].code == 280) ++i;
  tags.erase(tags.begin() + static_cast<long>(i), tags.end());
  tags.insert(tags.end(), std::make_move_iterator(data.begin()), std::make_move_iterator(data.end()));
  doc.MarkModified();
}

}  // namespace veltor::model
