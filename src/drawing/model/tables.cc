#include "drawing/model/tables.h"

#include "drawing/model/objects.h"

namespace veltor::model {

namespace {

const char kHiddenApp[] = "VELTOR";

// Calls `fn(id, type)` for each record of the TABLES section, stopping when it returns false.
template <typename Fn>
void ForEachTableRecord(const Document& doc, Fn fn) {
  const dxf::RecordStore& s = doc.store();
  bool seen_tables = false;
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    const dxf::Record& r = s.at(id);
    if (r.section != Section::kTables) {
      if (seen_tables && r.section != Section::kNone) break;
      continue;
    }
    seen_tables = true;
    if (!fn(id, s.TypeName(r.type))) return;
  }
}

int Flags(const Tags& tags) { return static_cast<int>(TagInt(tags, 70, 0)); }

void SetFlag(Document& doc, RecordId layer, int bit, bool on) {
  Tags& tags = doc.MutableTags(layer);
  int flags = Flags(tags);
  flags = on ? (flags | bit) : (flags & ~bit);
  SetTag(tags, 70, std::to_string(flags));
  doc.MarkModified();
}

}  // namespace

bool EqualsNoCaseAscii(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 32);
    if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 32);
    if (x != y) return false;
  }
  return true;
}

RecordId FindTableHead(const Document& doc, std::string_view table) {
  RecordId found = kNoRecord;
  ForEachTableRecord(doc, [&](RecordId id, const std::string& type) {
    if (type == "TABLE" && TagText(doc.TagsOf(id), 2) == table) {
      found = id;
      return false;
    }
    return true;
  });
  return found;
}

RecordId FindTableEnd(const Document& doc, std::string_view table) {
  RecordId head = FindTableHead(doc, table);
  if (head == kNoRecord) return kNoRecord;
  const dxf::RecordStore& s = doc.store();
  for (RecordId id = s.at(head).next; id != kNoRecord; id = s.at(id).next)
    if (s.TypeOf(id) == "ENDTAB") return id;
  return kNoRecord;
}

RecordId FindTableRecord(const Document& doc, std::string_view table, std::string_view name) {
  RecordId found = kNoRecord;
  std::string raw = doc.Encode(name);
  ForEachTableRecord(doc, [&](RecordId id, const std::string& type) {
    if (type == table && EqualsNoCaseAscii(TagText(doc.TagsOf(id), 2), raw)) {
      found = id;
      return false;
    }
    return true;
  });
  return found;
}

RecordId FindBlockRecord(const Document& doc, std::string_view name) {
  return FindTableRecord(doc, "BLOCK_RECORD", name);
}

LayerInfo ReadLayer(const Document& doc, RecordId layer) {
  LayerInfo info;
  info.id = layer;
  Tags tags = doc.TagsOf(layer);
  info.name = doc.Decode(TagText(tags, 2));
  int flags = Flags(tags);
  info.frozen = (flags & 1) != 0;
  info.locked = (flags & 4) != 0;
  info.color = static_cast<int>(TagInt(tags, 62, 7));
  info.off = info.color < 0;
  bool in_app = false;
  for (const Tag& t : tags) {
    if (t.code == 1001) in_app = t.value == kHiddenApp;
    if (in_app && t.code == 1070) info.hidden = ParseInt(t.value) != 0;
  }
  return info;
}

std::vector<LayerInfo> Layers(const Document& doc) {
  std::vector<LayerInfo> out;
  ForEachTableRecord(doc, [&](RecordId id, const std::string& type) {
    if (type == "LAYER") out.push_back(ReadLayer(doc, id));
    return true;
  });
  return out;
}

RecordId FindLayer(const Document& doc, std::string_view name) {
  return FindTableRecord(doc, "LAYER", name);
}

RecordId AddLayer(Document& doc, std::string_view name, int color) {
  RecordId existing = FindLayer(doc, name);
  if (existing != kNoRecord) return existing;
  RecordId head = FindTableHead(doc, "LAYER");
  RecordId end = FindTableEnd(doc, "LAYER");
  Tags tags{{0, "LAYER"}};
  if (doc.AtLeast("AC1012")) {
    tags.push_back({330, dxf::FormatHandle(head == kNoRecord ? 0 : doc.store().at(head).handle)});
    tags.push_back({100, "AcDbSymbolTableRecord"});
    tags.push_back({100, "AcDbLayerTableRecord"});
  }
  tags.push_back({2, doc.Encode(name)});
  tags.push_back({70, "0"});
  tags.push_back({62, std::to_string(color)});
  tags.push_back({6, "Continuous"});
  return doc.InsertRecordBefore(end, std::move(tags), Section::kTables);
}

void SetLayerFrozen(Document& doc, RecordId layer, bool frozen) { SetFlag(doc, layer, 1, frozen); }
void SetLayerLocked(Document& doc, RecordId layer, bool locked) { SetFlag(doc, layer, 4, locked); }

void SetLayerOff(Document& doc, RecordId layer, bool off) {
  Tags& tags = doc.MutableTags(layer);
  long long color = TagInt(tags, 62, 7);
  if (color == 0) color = 7;
  if ((color < 0) != off) SetTag(tags, 62, std::to_string(-color));
  doc.MarkModified();
}

void SetLayerHidden(Document& doc, RecordId layer, bool hidden) {
  EnsureAppId(doc, kHiddenApp);
  Tags& tags = doc.MutableTags(layer);
  for (size_t i = 0; i < tags.size(); ++i) {
    if (tags[i].code == 1001 && tags[i].value == kHiddenApp) {
      size_t k = i + 1;
      while (k < tags.size() && tags[k].code != 1001) ++k;
      tags.erase(tags.begin() + static_cast<long>(i), tags.begin() + static_cast<long>(k));
      break;
    }
  }
  if (hidden) {
    tags.push_back({1001, kHiddenApp});
    tags.push_back({1000, "HIDDEN"});
    tags.push_back({1070, "1"});
  }
  doc.MarkModified();
}

void EnsureAppId(Document& doc, std::string_view name) {
  if (FindTableRecord(doc, "APPID", name) != kNoRecord) return;
  RecordId head = FindTableHead(doc, "APPID");
  RecordId end = FindTableEnd(doc, "APPID");
  if (end == kNoRecord) return;
  Tags tags{{0, "APPID"}};
  if (doc.AtLeast("AC1012")) {
    tags.push_back({330, dxf::FormatHandle(doc.store().at(head).handle)});
    tags.push_back({100, "AcDbSymbolTableRecord"});
    tags.push_back({100, "AcDbRegAppTableRecord"});
  }
  tags.push_back({2, std::string(name)});
  tags.push_back({70, "0"});
  doc.InsertRecordBefore(end, std::move(tags), Section::kTables);
}

std::string PlotStyleName(const Document& doc, Handle placeholder) {
  if (placeholder == 0) return "";
  RecordId root = NamedObjectDictionary(doc);
  if (root == kNoRecord) return "";
  RecordId names = DictionaryLookup(doc, root, "ACAD_PLOTSTYLENAME");
  if (names == kNoRecord) return "";
  for (const auto& entry : DictionaryEntries(doc, names))
    if (entry.handle == placeholder) return entry.key;
  return "";
}

}  // namespace veltor::model
