#include "od_expectations.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>

#include "drawing/model/entity.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::oracle {


namespace {

std::string JsonString(const std::string& text) {
  std::string out = "\"";
  for (unsigned char c : text) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        if (c < 0x20) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\u%04x", c);
          out += buf;
        } else {
          out += static_cast<char>(c);  // UTF-8 passes through
        }
    }
  }
  return out + "\"";
}

// 17 significant digits read back to the same double in Python's json.
std::string JsonReal(double v) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.17g", v);
  return buf;
}

std::string JsonValue(const od::Value& v) {
  std::string type = std::to_string(static_cast<int>(v.type()));
  switch (v.type()) {
    case od::ValueType::kInteger: return "[" + type + ", " + std::to_string(v.integer()) + "]";
    case od::ValueType::kReal: return "[" + type + ", " + JsonReal(v.real()) + "]";
    case od::ValueType::kCharacter: return "[" + type + ", " + JsonString(v.text()) + "]";
    case od::ValueType::kPoint: {
      od::Point3 p = v.point();
      return "[" + type + ", [" + JsonReal(p.x) + ", " + JsonReal(p.y) + ", " + JsonReal(p.z) + "]]";
    }
    case od::ValueType::kUnknown: break;
  }
  return "null";
}

std::string JsonTable(const od::TableDefinition& def) {
  std::string out = "{\"name\": " + JsonString(def.name) +
                    ", \"description\": " + JsonString(def.description) + ", \"columns\": [";
  for (size_t i = 0; i < def.columns.size(); ++i) {
    const od::ColumnDefinition& c = def.columns[i];
    out += (i ? ", " : "") + std::string("{\"name\": ") + JsonString(c.name) +
           ", \"description\": " + JsonString(c.description) +
           ", \"type\": " + std::to_string(static_cast<int>(c.type)) +
           ", \"default\": " + JsonValue(c.default_value) + "}";
  }
  return out + "]}";
}

od::ColumnDefinition Column(std::string name, od::ValueType type, std::string description, od::Value def) {
  od::ColumnDefinition c;
  c.name = std::move(name);
  c.type = type;
  c.description = std::move(description);
  c.default_value = std::move(def);
  return c;
}

// Longer than one 250-byte chunk, with two-byte characters that (in a code page file)
// become seven-byte \U+XXXX escapes, so chunk boundaries fall near characters and escapes.
std::string LongText() {
  std::string text;
  for (int i = 0; text.size() < 700; ++i)
    text += "Участок " + std::to_string(i) + " — Grundstück; ";
  return text;
}

od::Record AllTypes(int32_t id, double area, std::string owner, double x, double y, double z) {
  return {"Parcels_all_types",
          {od::Value::Integer(id), od::Value::Real(area), od::Value::Character(std::move(owner)),
           od::Value::Point({x, y, z})}};
}

od::Record Streets(std::string name, double length) {
  return {"Straßen_Дороги", {od::Value::Character(std::move(name)), od::Value::Real(length)}};
}

}  // namespace

std::string ToJson(const Expectations& e) {
  std::string out = "{\n\"mode\": " + JsonString(e.mode) +
                    ",\n\"original\": " + JsonString(e.original) +
                    ",\n\"ours\": " + JsonString(e.ours) +
                    ",\n\"version\": " + JsonString(e.version) + ",\n\"tables\": [";
  for (size_t i = 0; i < e.tables.size(); ++i) out += (i ? ",\n  " : "\n  ") + JsonTable(e.tables[i]);
  out += "],\n\"entities\": [";
  for (size_t i = 0; i < e.entities.size(); ++i) {
    out += (i ? ",\n  " : "\n  ") + std::string("{\"handle\": ") +
           JsonString(dxf::FormatHandle(e.entities[i].entity)) + ", \"records\": [";
    const auto& records = e.entities[i].records;
    for (size_t r = 0; r < records.size(); ++r) {
      out += (r ? ", " : "") + std::string("{\"table\": ") + JsonString(records[r].table) +
             ", \"values\": [";
      for (size_t v = 0; v < records[r].values.size(); ++v)
        out += (v ? ", " : "") + JsonValue(records[r].values[v]);
      out += "]}";
    }
    out += "]}";
  }
  out += "],\n\"record_counts\": {";
  bool first = true;
  for (const auto& [name, count] : e.record_counts) {
    out += (first ? "" : ", ") + JsonString(name) + ": " + std::to_string(count);
    first = false;
  }
  return out + "}\n}\n";
}

std::vector<od::TableDefinition> SampleTables() {
  od::TableDefinition all;
  all.name = "Parcels_all_types";
  all.description = "one column of every type";
  all.columns = {
      Column("PARCEL_ID", od::ValueType::kInteger, "cadastral number", od::Value::Integer(-1)),
      Column("AREA", od::ValueType::kReal, "square metres", od::Value::Real(0.25)),
      Column("OWNER", od::ValueType::kCharacter, "", od::Value::Character("unknown")),
      Column("CENTROID", od::ValueType::kPoint, "centre of mass",
             od::Value::Point({1.0, -2.5, 1e-3}))};
  od::TableDefinition streets;
  streets.name = "Straßen_Дороги";
  streets.description = "Straßen und Wege / дороги";
  streets.columns = {
      Column("Name_Имя", od::ValueType::kCharacter, "Straßenname", od::Value::Character("Без имени")),
      Column("Länge", od::ValueType::kReal, "", od::Value::Real(1.5))};
  return {all, streets};
}

Status AddSampleObjectData(model::Document& doc, std::vector<od::TableDefinition>& tables,
                           std::vector<EntityRecords>& written) {
  objectdata::ObjectDataStore store(doc);
  tables = SampleTables();
  for (const od::TableDefinition& def : tables)
    if (Status s = store.CreateTable(def); !s.ok()) return s.Wrap("creating " + def.name);

  std::vector<model::RecordId> all = model::ModelSpaceEntities(doc);
  std::vector<model::RecordId> chosen(all.begin(), all.begin() + std::min<size_t>(4, all.size()));
  auto pick_first = [&](auto predicate) {
    for (model::RecordId id : all)
      if (predicate(id)) {
        if (std::find(chosen.begin(), chosen.end(), id) == chosen.end()) chosen.push_back(id);
        return;
      }
  };
  pick_first([&](model::RecordId id) { return doc.store().at(id).xdict != 0; });
  pick_first([&](model::RecordId id) { return !model::SubEntities(doc, id).empty(); });

  for (size_t i = 0; i < chosen.size(); ++i) {
    EntityRecords entry;
    entry.entity = doc.store().at(chosen[i]).handle;
    if (i == 0) {
      entry.records = {AllTypes(INT32_MIN, 0.1, "Müller & Söhne \"GmbH\" \\ 100%", 1.5, -2.25, 1e-9),
                       Streets("Hauptstraße — Тверская", 1234.5678),
                       AllTypes(INT32_MAX, 1e20, LongText(), 0.0, 0.0, 0.0)};
    } else if (i % 2 == 1) {
      entry.records = {AllTypes(static_cast<int32_t>(i), 0.5 * static_cast<double>(i) + 1.0 / 3.0,
                                "Owner " + std::to_string(i), static_cast<double>(i), -1e6, 0.0)};
    } else {
      entry.records = {Streets("Улица " + std::to_string(i), -0.0 + static_cast<double>(i))};
    }
    for (const od::Record& record : entry.records)
      if (Status s = store.AddRecord(chosen[i], record); !s.ok())
        return s.Wrap("adding a record to entity " + dxf::FormatHandle(entry.entity));
    written.push_back(entry);
  }
  return Status::Ok();
}

Status AddTypedTextObjectData(model::Document& doc, Expectations& expected) {
  objectdata::ObjectDataStore store(doc);
  od::TableDefinition notes;
  notes.name = "Notes";
  notes.description = "what people wrote\nabout things";
  notes.columns = {Column("Text", od::ValueType::kCharacter, "free text", od::Value::Character("tab\tdefault"))};
  if (Status s = store.CreateTable(notes); !s.ok()) return s.Wrap("creating Notes");
  expected.mode = "generated";
  expected.version = doc.version();
  expected.tables = {notes};
  for (const std::string& text : {std::string("\ttab\there\t"), std::string("\\U+0041"),
                                  std::string("Ελληνικά 中文 Кириллица"),
                                  std::string("first line\nsecond line"),
                                  std::string("crlf\r\nnext \\ back\rlast")}) {
    model::RecordId point = model::AddModelSpaceEntity(
        doc, "POINT", "0", {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
    od::Record record{"Notes", {od::Value::Character(text)}};
    if (Status s = store.AddRecord(point, record); !s.ok()) return s.Wrap("adding a record");
    expected.entities.push_back({doc.store().at(point).handle, {record}});
  }
  expected.record_counts = {{"Notes", expected.entities.size()}};
  return Status::Ok();
}

}  // namespace veltor::oracle
