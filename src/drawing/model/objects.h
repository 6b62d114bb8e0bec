// Objects: dictionaries, extension dictionaries and XRECORDs.
#pragma once

#include <string>
#include <vector>

#include "drawing/model/document.h"

namespace veltor::model {

struct DictionaryEntry {
  std::string key;  // decoded to UTF-8
  Handle handle = 0;
};

// The root dictionary of the OBJECTS section, or kNoRecord (R12 drawings have none).
RecordId NamedObjectDictionary(const Document& doc);
std::vector<DictionaryEntry> DictionaryEntries(const Document& doc, RecordId dictionary);
// The object stored under `key` (compared exactly), or kNoRecord.
RecordId DictionaryLookup(const Document& doc, RecordId dictionary, std::string_view key);
// Adds or repoints an entry; the dictionary keeps its entries in insertion order.
void SetDictionaryEntry(Document& doc, RecordId dictionary, std::string_view key, Handle value);
void RemoveDictionaryEntry(Document& doc, RecordId dictionary, std::string_view key);

// Creates an empty, hard-owning DICTIONARY owned by `owner`, at the end of OBJECTS.
RecordId AddDictionary(Document& doc, Handle owner);
// The entity's extension dictionary, created (and linked from the entity) when missing.
RecordId EnsureExtensionDictionary(Document& doc, RecordId entity);
RecordId ExtensionDictionary(const Document& doc, RecordId entity);

// Creates an XRECORD owned by `dictionary` holding `data` (the tags after "280 1").
RecordId AddXRecord(Document& doc, Handle dictionary, Tags data);
// The data tags of an XRECORD (what follows its subclass marker and cloning flag).
Tags XRecordData(const Document& doc, RecordId xrecord);
void SetXRecordData(Document& doc, RecordId xrecord, Tags data);

}  // namespace veltor::model
