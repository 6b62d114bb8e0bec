// The selection commands' engines on a loaded drawing, nothing pre-selected and Enter at the
// prompt (all of model space): presence queries and the value query with one condition; the
// statistics census of model space with its report text; and VELTOR_TRANSLATE as the host runs
// it, with alias files that hit the drawing's tables, fields and values.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "answering_ui.h"
#include "loaded_session.h"
#include "commands/exchange/translate_command.h"
#include "commands/exchange/usage_statistics.h"
#include "commands/select/find_by_od.h"
#include "commands/select/value_matcher.h"
#include "commands/select/value_query.h"
#include "od/command_context.h"
#include "od/gathering.h"
#include "ui/od_translate.h"

namespace {

using veltor::bench::LoadedSession;

void Presence(benchmark::State& state, int mode) {
  LoadedSession s;
  if (!s.Load(state)) return;
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    found = veltor::commands::FindEntitiesByOd(s.session, mode).size();
  }
  state.counters["selected"] = static_cast<double>(found);
}

void BM_HasOd(benchmark::State& state) { Presence(state, 2); }
void BM_HasDuplicateOd(benchmark::State& state) { Presence(state, 4); }

// Gathering all of model space (the usable-entity filter included): the part of every query
// that reads no Object Data.
void BM_GatherAll(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    found = veltor::od::GatherEntities(s.session).entities.size();
  }
  state.counters["gathered"] = static_cast<double>(found);
}

// The value query with one condition: roads whose name ends in "Road" (about 4 in 8).
void BM_ValueQueryRoad(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  const auto& container = (*s.session.ActiveProject())->Container();
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    veltor::od::EntityList entities = veltor::od::GatherEntities(s.session).entities;
    veltor::commands::KeepMatching(container, {"Roads"}, {{"NAME", "*Road"}}, true, entities);
    found = entities.size();
  }
  state.counters["selected"] = static_cast<double>(found);
}

// The same selection read as three passes per entity (the table names, then every record,
// then the damaged count), for comparison with the single filtered read above.
void BM_ValueQueryRoadThreeReads(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  const auto& container = (*s.session.ActiveProject())->Container();
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    veltor::od::EntityList entities = veltor::od::GatherEntities(s.session).entities;
    size_t damaged = 0;
    veltor::od::EntityList kept;
    for (veltor::od::EntityId e : entities) {
      damaged += container.DamagedRecordCount(e);
      std::vector<std::string> names = container.RecordTableNames(e);
      if (std::find(names.begin(), names.end(), "Roads") == names.end()) continue;
      for (const veltor::od::Record& r : container.Records(e))
        if (r.table == "Roads" && veltor::commands::MatchValue(r.values[0], "*Road", true)) {
          kept.push_back(e);
          break;
        }
    }
    benchmark::DoNotOptimize(damaged);
    found = kept.size();
  }
  state.counters["selected"] = static_cast<double>(found);
}

// VELTOR_STAT without its dialog: the census of every model space entity and the report.
void BM_Statistics(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  size_t with_od = 0;
  for (auto _ : state) {
    veltor::commands::UsageStatistics stats = veltor::commands::CountUsage(s.session);
    benchmark::DoNotOptimize(veltor::commands::StatisticsReport(stats));
    with_od = static_cast<size_t>(stats.with_od);
  }
  state.counters["with_od"] = static_cast<double>(with_od);
}

}  // namespace

namespace {

// VELTOR_TRANSLATE with alias files made from the drawing's own names and values, so that
// every alias hits: 10 table aliases (every table, and one absent), 50 field aliases (per
// table and global) and 1000 value aliases (per table, per field and global, taken from the
// records of the first entities). Each iteration translates names to aliases (timed) and back
// (not timed), so every iteration meets the same drawing.

using veltor::od::ValueType;

struct AliasFiles {
  std::string tables, fields, values;
};

// An alias of a value's text that reads back as the same text in its column's type, distinct
// per kind of line (`tag` 1, 2 or 3) so that no two values share an alias.
std::string ValueAlias(const veltor::od::Value& value, int tag) {
  switch (value.type()) {
    case ValueType::kInteger:
      return veltor::od::ValueToText(veltor::od::Value::Integer(value.integer() + tag * 100000000));
    case ValueType::kReal:
      return veltor::od::ValueToText(veltor::od::Value::Real(value.real() + tag * 1e9));
    default:
      return veltor::od::ValueToText(value) + " ~" + std::to_string(tag);
  }
}

// Writes the three files beside `stem` from the tables of `container` and the records of the
// first entities of `entities`.
AliasFiles WriteAliasFiles(const veltor::od::ObjectDataContainer& container,
                           const veltor::od::EntityList& entities, const std::string& stem) {
  AliasFiles files{stem + "-tables.txt", stem + "-fields.txt", stem + "-values.txt"};
  std::ofstream tables(files.tables), fields(files.fields), values(files.values);
  int table_lines = 0, field_lines = 0;
  for (const std::string& table : container.TableNames()) {
    if (table_lines < 9) tables << table << "\tAlias of " << table << "\n", ++table_lines;
    auto def = container.GetTable(table);
    if (!def.ok()) continue;
    for (const veltor::od::ColumnDefinition& column : def->columns) {
      if (field_lines < 50) fields << table << "\t" << column.name << "\t" << column.name << " in " << table << "\n", ++field_lines;
      if (field_lines < 50) fields << column.name << "\t" << column.name << " anywhere\n", ++field_lines;
    }
  }
  for (; table_lines < 10; ++table_lines) tables << "Absent " << table_lines << "\tAbsent alias " << table_lines << "\n";
  for (; field_lines < 50; ++field_lines) fields << "Absent\tF" << field_lines << "\tG" << field_lines << "\n";

  // Distinct texts per table and column, in the order met. Points are left out: a point's
  // text does not read back in the same form.
  std::map<std::pair<std::string, size_t>, std::set<std::string>> seen;
  int value_lines = 0;
  const size_t scan = std::min<size_t>(entities.size(), 50000);
  for (size_t e = 0; e < scan && value_lines < 1000; ++e) {
    for (const veltor::od::Record& record : container.Records(entities[e])) {
      auto def = container.GetTable(record.table);
      if (!def.ok()) continue;
      for (size_t c = 0; c < record.values.size() && value_lines < 1000; ++c) {
        const veltor::od::Value& v = record.values[c];
        if (v.type() == ValueType::kPoint) continue;
        const std::string text = veltor::od::ValueToText(v);
        if (!seen[{record.table, c}].insert(text).second) continue;
        const std::string& field = def->columns[c].name;
        // Mostly per table and field; every fifth per field, every tenth for any column.
        if (value_lines % 10 == 9 && v.type() == ValueType::kCharacter)
          values << text << "\t" << ValueAlias(v, 3) << "\n";
        else if (value_lines % 5 == 4)
          values << field << "\t" << text << "\t" << ValueAlias(v, 2) << "\n";
        else
          values << record.table << "\t" << field << "\t" << text << "\t" << ValueAlias(v, 1) << "\n";
        ++value_lines;
      }
    }
  }
  return files;
}

struct TranslateRun {
  std::string printed;
  veltor::session::Session session{[this](std::string_view text) { printed += text; }};
  int direction = veltor::ui::ODTranslate::kNameToAlias;
  veltor::bench::AnsweringUi ui{[this](veltor::od::DialogModel& d) {
                                  using Dialog = veltor::ui::ODTranslate;
                                  for (int button : {Dialog::kTableFileButton, Dialog::kFieldFileButton,
                                                     Dialog::kValueFileButton})
                                    d.Press(button);
                                  return d.Press(direction).result;
                                },
                                veltor::od::MessageAnswer::kOk};

  void Translate(const AliasFiles& files, int to) {
    for (const std::string* path : {&files.tables, &files.fields, &files.values}) ui.NextFile(*path);
    direction = to;
    printed.clear();
    veltor::od::RunCommand(session, "VELTOR_TRANSLATE", veltor::commands::Translate);
  }
};

// The figure of the printed line "Updated %i <what>" (-1 when there is none).
double Updated(const std::string& printed, const std::string& what) {
  const std::string format = "Updated %d " + what;
  for (size_t start = 0; start < printed.size();) {
    size_t end = printed.find('\n', start);
    if (end == std::string::npos) end = printed.size();
    int n = 0;
    if (end >= what.size() && std::sscanf(printed.substr(start, end - start).c_str(), format.c_str(), &n) == 1 &&
        printed.compare(end - what.size(), what.size(), what) == 0)
      return n;
    start = end + 1;
  }
  return -1;
}

void BM_Translate(benchmark::State& state) {
  auto run = std::make_unique<TranslateRun>();
  auto doc = veltor::bench::LoadCity(state);
  if (!doc) return;
  run->session.AddDocument(std::move(doc), "city.dxf");
  run->session.SetUi(&run->ui);
  const char* tmp = std::getenv("TMPDIR");
  const std::string stem = std::string(tmp ? tmp : "/tmp") + "/veltor-translate-bench-" +
                           std::to_string(static_cast<long>(getpid()));
  const AliasFiles files =
      WriteAliasFiles((*run->session.ActiveProject())->Container(),
                      veltor::od::GetModelSpaceEntities(*run->session.WorkingDatabase()), stem);
  double records = 0, columns = 0;
  for (auto _ : state) {
    run->Translate(files, veltor::ui::ODTranslate::kNameToAlias);
    state.PauseTiming();
    records = Updated(run->printed, "records with new values");
    columns = Updated(run->printed, "columns");
    run->Translate(files, veltor::ui::ODTranslate::kAliasToName);
    state.ResumeTiming();
  }
  state.counters["records"] = records;
  state.counters["columns"] = columns;
  for (const std::string* path : {&files.tables, &files.fields, &files.values}) std::remove(path->c_str());
}

}  // namespace

BENCHMARK(BM_Statistics)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HasOd)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HasDuplicateOd)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GatherAll)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ValueQueryRoad)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ValueQueryRoadThreeReads)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Translate)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);
