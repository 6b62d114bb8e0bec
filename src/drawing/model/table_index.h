// The symbol tables of a drawing by name, so that carrying thousands of layers or blocks into
// it does not scan the TABLES section for each one. Names match without regard to ASCII case,
// as in FindTableRecord. The index sees only the records added through Add.
#pragma once

#include <map>
#include <string>

#include "drawing/model/document.h"

namespace veltor::model {

class TableIndex {
 public:
  explicit TableIndex(const Document& doc);
  // The "0 TABLE" record and the ENDTAB of a table, or kNoRecord.
  RecordId Head(const std::string& table) const { return Get(heads_, table); }
  RecordId End(const std::string& table) const { return Get(ends_, table); }
  // A record by its name as the file writes it, or kNoRecord.
  RecordId Find(const std::string& table, const std::string& raw_name) const {
    return Get(records_, Key(table, raw_name));
  }
  // Adds a record; when the name is there already, the first record stays the one found.
  void Add(const std::string& table, const std::string& raw_name, RecordId id) {
    records_.emplace(Key(table, raw_name), id);
  }

 private:
  static std::string Key(const std::string& table, const std::string& name);
  static RecordId Get(const std::map<std::string, RecordId>& map, const std::string& key);

  std::map<std::string, RecordId> heads_, ends_, records_;
};

}  // namespace veltor::model
