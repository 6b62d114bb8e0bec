// ODEXPORT asks for an output, a format and the tables, and exports the active drawing;
// ODIMPORT asks for a source, its layer, the drawing layer and the table, and imports.
#include "drawing/gis/gis_commands.h"

#include <filesystem>
#include <iterator>
#include <optional>

#include "drawing/gis/od_export.h"
#include "drawing/gis/od_import.h"
#include "drawing/session/host_commands.h"
#include "od/format.h"

namespace veltor::gis {

namespace {

using session::Session;

// An answer with surrounding blanks dropped and one pair of double quotes around it removed,
// so that names with spaces can be given.
std::string Unquoted(const std::string& typed) {
  const size_t begin = typed.find_first_not_of(" \t");
  if (begin == std::string::npos) return std::string();
  const size_t end = typed.find_last_not_of(" \t");
  std::string text = typed.substr(begin, end - begin + 1);
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  return text;
}

// Asks with `prompt`; Enter gives `fallback`. Nullopt when cancelled.
std::optional<std::string> Ask(Session& s, const std::string& prompt, const std::string& fallback) {
  od::PromptResult<std::string> answer = s.Ed().GetString(prompt, true);
  if (answer.status != od::PromptStatus::kOk) return std::nullopt;
  std::string text = Unquoted(answer.value);
  return text.empty() ? fallback : text;
}

std::vector<std::string> SplitNames(const std::string& list) {
  std::vector<std::string> names;
  size_t start = 0;
  while (start <= list.size()) {
    size_t comma = list.find(',', start);
    if (comma == std::string::npos) comma = list.size();
    std::string name = Unquoted(list.substr(start, comma - start));
    if (!name.empty()) names.push_back(name);
    start = comma + 1;
  }
  return names;
}

// The default output: the drawing's name with the extension ".gpkg", beside the drawing.
std::string DefaultOutput(const session::SessionDocument& doc) {
  std::filesystem::path path = doc.doc->path().empty() ? doc.name : doc.doc->path();
  return path.replace_extension(".gpkg").string();
}

void Export(Session& s) {
  session::SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  ExportOptions options;
  const std::string fallback = DefaultOutput(*doc);
  std::optional<std::string> target = Ask(s, "Output file or PG: connection <" + fallback + ">: ", fallback);
  if (!target) return;
  options.target = *target;
  std::optional<std::string> format = Ask(s, std::string("Format <") + kDefaultFormat + ">: ", kDefaultFormat);
  if (!format) return;
  options.format = *format;
  std::optional<std::string> tables = Ask(s, "Tables (names separated by commas, * for all) <*>: ", "*");
  if (!tables) return;
  if (*tables != "*") options.tables = SplitNames(*tables);
  Result<ExportSummary> done = ExportObjectData({{doc->doc.get(), doc->name}}, options);
  if (!done.ok()) return (void)s.editor().Refuse("Error: " + done.message());
  if (done->damaged_records > 0)
    s.Print(od::Format("Left out: %i records that cannot be read.\n", static_cast<int>(done->damaged_records)));
  s.Print(done->Line());
}

void Import(Session& s) {
  session::SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  ImportOptions options;
  std::optional<std::string> source = Ask(s, "Source file or PG: connection: ", "");
  if (!source || source->empty()) return;
  options.source = *source;
  std::optional<std::string> layer = Ask(s, "Layer of the source <first>: ", "");
  if (!layer) return;
  options.layer = *layer;
  std::optional<std::string> target_layer = Ask(s, "Drawing layer <current>: ", "");
  if (!target_layer) return;
  options.target_layer = *target_layer;
  std::optional<std::string> table = Ask(s, "Table <the layer's name>: ", "");
  if (!table) return;
  options.table = *table;
  Result<ImportSummary> done = ImportObjectData(*doc, options);
  if (!done.ok()) {
    // Whatever was made before the failure goes: the drawing is left as it was.
    s.TakeBackUndoGroup();
    return (void)s.editor().Refuse("Error: " + done.message());
  }
  for (const std::string& w : done->warnings) s.Print("Warning: " + w + ".\n");
  if (done->skipped > 0)
    s.Print(od::Format("Skipped: %i features without geometry.\n", static_cast<int>(done->skipped)));
  s.Print(od::Format("Imported: %i features as %i entities with records of table %s%s.\n",
                     static_cast<int>(done->features), static_cast<int>(done->entities),
                     done->table.c_str(), done->table_created ? " (new)" : ""));
}

}  // namespace

void RunGisCommand(Session& s, size_t index) {
  if (index == 0) Export(s);
  if (index == 1) Import(s);
}

void RegisterGisCommands(Session& s) {
  for (size_t i = 0; i < std::size(kGisCommands); ++i)
    session::AddHostCommand(s, kGisCommands[i].name, kGisCommands[i].flags, kGisCommands[i].summary,
                            [&s, i] { RunGisCommand(s, i); });
}

}  // namespace veltor::gis
