#include "drawing/model/table_index.h"

namespace veltor::model {

TableIndex::TableIndex(const Document& doc) {
  const dxf::RecordStore& s = doc.store();
  std::string table;
  for (RecordId id = doc.SectionStart(Section::kTables); id != kNoRecord; id = s.at(id).next) {
    const std::string& type = s.TypeOf(id);
    if (type == "ENDSEC") break;
    if (type == "SECTION") continue;
    Tags tags = doc.TagsOf(id);
    if (type == "TABLE") {
      table = TagText(tags, 2);
      heads_[table] = id;
    } else if (type == "ENDTAB") {
      ends_[table] = id;
    } else {
      Add(table, TagText(tags, 2), id);
    }
  }
}

std::string TableIndex::Key(const std::string& table, const std::string& name) {
  std::string key = table + '\n' + name;
  for (char& c : key)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return key;
}

RecordId TableIndex::Get(const std::map<std::string, RecordId>& map, const std::string& key) {
  auto it = map.find(key);
  return it == map.end() ? kNoRecord : it->second;
}

}  // namespace veltor::model
