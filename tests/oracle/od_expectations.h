// Object Data written by the oracle tests, and the JSON that tells check_written.py what it
// must find in the saved file.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "od/object_data.h"
#include "od/status.h"

namespace veltor::oracle {

struct EntityRecords {
  dxf::Handle entity = 0;
  std::vector<od::Record> records;  // in stored order
};

// What a drawing must hold after saving.
struct Expectations {
  std::string mode;      // "corpus": compare with `original` too; "generated": ours alone
  std::string original;  // the file we read (corpus mode)
  std::string ours;      // the file we wrote
  std::string version;   // $ACADVER of ours: text before AC1021 may hold \U+XXXX escapes
  std::vector<od::TableDefinition> tables;  // the whole catalogue, in order
  // Entities whose records are checked value by value. In corpus mode these are all the
  // entities with records; in generated mode a sample of them.
  std::vector<EntityRecords> entities;
  // Records per table over the whole drawing (generated mode; empty: not checked).
  std::map<std::string, size_t> record_counts;
};

std::string ToJson(const Expectations& expected);

// The two sample tables: one with a column of every type, one whose name and columns are
// not ASCII.
std::vector<od::TableDefinition> SampleTables();

// Creates the sample tables and attaches records to a handful of model space entities: the
// first four, the first one that already has an extension dictionary and the first one with
// sub-entities (VERTEX/ATTRIB/SEQEND). The first entity gets two records of one table and one
// of the other. Fills `tables` and `written` with what was added.
Status AddSampleObjectData(model::Document& doc, std::vector<od::TableDefinition>& tables,
                           std::vector<EntityRecords>& written);

// Adds table Notes (a Character column; the description holds a line break) and one point
// per tricky text a user may type — a tab, a literal "\U+0041", non-Latin scripts, LF, CR LF
// and CR line breaks, a backslash — each with a record of that text. Fills `expected`
// (generated mode) with all of it.
Status AddTypedTextObjectData(model::Document& doc, Expectations& expected);

}  // namespace veltor::oracle
