// veltor: the console front end. See docs/console.md.
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "app/veltor_app.h"
#include "console/batch_options.h"
#include "console/batch_run.h"
#include "console/console_ui.h"
#include "console/exit_codes.h"
#include "console/info_report.h"
#include "console/options.h"
#include "console/progress_line.h"
#include "console/script_input.h"
#include "console/terminal_input.h"
#include "console/gis_loader.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/session.h"

namespace {

using veltor::console::Options;
using namespace veltor::console;  // the exit statuses

int Info(const std::string& path) {
  auto doc = veltor::model::Document::Open(path);
  if (!doc.ok()) {
    std::fprintf(stderr, "veltor: %s\n", doc.message().c_str());
    return kExitBadDrawing;
  }
  std::fputs(veltor::console::InfoReport(**doc).c_str(), stdout);
  return 0;
}

// --export: every drawing's Object Data into one GIS output.
int Export(const Options& options) {
  std::vector<std::string> paths{options.drawing};
  paths.insert(paths.end(), options.more_drawings.begin(), options.more_drawings.end());
  std::vector<std::unique_ptr<veltor::model::Document>> docs;
  std::vector<veltor::gis::ExportSource> sources;
  for (const std::string& path : paths) {
    auto doc = veltor::model::Document::Open(path);
    if (!doc.ok()) {
      std::fprintf(stderr, "veltor: %s\n", doc.message().c_str());
      return kExitBadDrawing;
    }
    for (const std::string& w : (*doc)->warnings())
      std::fprintf(stderr, "veltor: warning: %s\n", w.c_str());
    docs.push_back(std::move(doc).value());
    sources.push_back({docs.back().get(), std::filesystem::path(path).filename().string()});
  }
  auto module = veltor::console::LoadGisModule();
  if (!module.ok()) {
    std::fprintf(stderr, "veltor: export: %s\n", module.message().c_str());
    return kExitExchangeFailed;
  }
  veltor::gis::ExportOptions e;
  e.target = options.export_target;
  if (!options.format.empty()) e.format = options.format;
  e.srs = options.srs;
  e.tables = options.tables;
  e.without_records = options.without_records;
  if (options.precision > 0) e.deviation = options.precision;
  e.overwrite = options.overwrite;
  auto done = (*module)->export_object_data(sources, e);
  if (!done.ok()) {
    std::fprintf(stderr, "veltor: export: %s\n", done.message().c_str());
    return kExitExchangeFailed;
  }
  if (done->damaged_records > 0)
    std::fprintf(stderr, "veltor: warning: %zu records that cannot be read were left out\n",
                 done->damaged_records);
  std::fputs(done->Line().c_str(), stdout);
  return 0;
}

// --import: the source's features into the drawing, as one undo step before the script.
bool Import(veltor::session::Session& session, const Options& options) {
  auto module = veltor::console::LoadGisModule();
  if (!module.ok()) {
    std::fprintf(stderr, "veltor: import: %s\n", module.message().c_str());
    return false;
  }
  veltor::gis::ImportOptions i;
  i.source = options.import_source;
  i.layer = options.import_layer;
  i.target_layer = options.target_layer;
  i.table = options.table;
  veltor::model::Document& doc = *session.active()->doc;
  doc.BeginUndoGroup("ODIMPORT");
  auto done = (*module)->import_object_data(*session.active(), i);
  if (!done.ok()) {
    doc.CancelUndoGroup();
    session.active()->project.container().Refresh();
    std::fprintf(stderr, "veltor: import: %s\n", done.message().c_str());
    return false;
  }
  doc.EndUndoGroup();
  for (const std::string& w : done->warnings) std::fprintf(stderr, "veltor: warning: %s\n", w.c_str());
  if (done->skipped > 0)
    std::fprintf(stderr, "veltor: warning: %zu features without geometry were skipped\n", done->skipped);
  std::printf("Imported: %zu features as %zu entities with records of table %s%s.\n", done->features,
              done->entities, done->table.c_str(), done->table_created ? " (new)" : "");
  return true;
}

std::vector<std::string> CommandNames(const veltor::session::Session& session) {
  std::vector<std::string> names;
  for (const auto& c : session.Commands()) names.push_back(c.global_name);
  return names;
}

int Run(const Options& options) {
  veltor::console::ProgressLine progress(isatty(STDERR_FILENO));
  veltor::session::Session session([&progress](std::string_view text) {
    progress.Clear();
    std::fwrite(text.data(), 1, text.size(), stdout);
  });
  veltor::session::RegisterHostCommands(session);
  veltor::console::RegisterGisCommandsOnDemand(session);
  veltor::console::ConsoleUi ui(session.Ed());
  session.SetUi(&ui);
  ui.SetPanelOpener([&session](std::function<bool()> panel) { session.OpenPanel(std::move(panel)); });
  session.LoadModule(veltor::app::AcrxEntryPoint);

  if (!options.drawing.empty()) {
    progress.Busy("Loading " + options.drawing);
    veltor::Status opened = session.OpenDocument(options.drawing);
    progress.Idle();
    if (!opened.ok()) {
      std::fprintf(stderr, "veltor: %s\n", opened.message().c_str());
      return kExitBadDrawing;
    }
    for (const std::string& w : session.active()->open_warnings)
      std::fprintf(stderr, "veltor: warning: %s\n", w.c_str());
  } else {
    session.NewDocument();
  }
  veltor::session::SessionDocument* first = session.active();
  if (!options.import_source.empty()) {
    if (!Import(session, options)) return kExitExchangeFailed;
  }
  // Without a script, an import is the whole run: then saved as -o or --in-place say.
  const bool import_only = !options.import_source.empty() && !options.scripted();

  std::unique_ptr<veltor::console::ScriptInput> script;
  std::unique_ptr<veltor::console::TerminalInput> terminal;
  bool from_terminal = !import_only && !options.scripted() && isatty(STDIN_FILENO);
  if (from_terminal) {
    terminal = std::make_unique<veltor::console::TerminalInput>(CommandNames(session));
    session.SetInteractive(true);
  } else if (!import_only) {
    // Without -s or -c, commands come from standard input (a pipe or a file).
    std::string path = options.script.empty() && !options.scripted() ? "-" : options.script;
    auto opened_script = veltor::console::ScriptInput::Open(
        path, options.lines, [](const std::string& t) { std::fputs(t.c_str(), stdout); });
    if (!opened_script.ok()) {
      std::fprintf(stderr, "veltor: %s\n", opened_script.message().c_str());
      return kExitScriptUnreadable;
    }
    script = std::move(opened_script).value();
  }
  if (!import_only) {
    veltor::session::InputSource& source = terminal ? static_cast<veltor::session::InputSource&>(*terminal)
                                                    : *script;
    veltor::console::ProgressInput input(source, progress);
    session.SetInput(&input);
    session.RunLoop();
    session.SetInput(nullptr);
  }
  progress.Idle();
  std::fflush(stdout);
  int status = 0;
  if (script && script->failed()) {
    std::fprintf(stderr, "veltor: script line %zu refused: %s\n", script->line_number(),
                 script->failure().c_str());
    status = script->unreadable() ? kExitScriptUnreadable : kExitScriptRefused;
  }

  // Saving is explicit: the drawing the console started with goes to -o OUT or over itself.
  bool still_open = false;
  for (size_t i = 0; i < session.document_count(); ++i)
    if (session.ActivateDocument(i).ok() && session.active() == first) still_open = true;
  bool save_asked = !options.output.empty() || options.in_place;
  if (status != 0 && save_asked) {
    std::fprintf(stderr, "veltor: nothing was saved: the script stopped at line %zu\n",
                 script->line_number());
  } else if (save_asked && !still_open) {
    std::fprintf(stderr, "veltor: nothing was saved: the script closed the drawing\n");
  }
  if (status == 0 && still_open && save_asked) {
    std::string target = options.in_place ? options.drawing : options.output;
    progress.Busy("Saving " + target);
    veltor::Status saved = first->doc->Save(target);
    progress.Idle();
    if (!saved.ok()) {
      std::fprintf(stderr, "veltor: %s\n", saved.message().c_str());
      status = kExitWriteFailed;
    }
  } else if (!from_terminal && still_open && first->doc->modified()) {
    std::fprintf(stderr, "veltor: changes were not saved (give -o OUT or --in-place to save them)\n");
  }
  session.UnloadModules();
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  if (veltor::console::IsBatchCommandLine(argc, argv)) {
    auto batch = veltor::console::ParseBatchOptions(argc, argv);
    if (!batch.ok()) {
      std::fprintf(stderr, "veltor: %s\n%s", batch.message().c_str(), veltor::console::kUsage);
      return kExitUsage;
    }
    if (batch->help) {
      std::fputs(veltor::console::kUsage, stdout);
      return 0;
    }
    // Each worker is this same program, started the way it was started.
    return veltor::console::RunBatch(*batch, argv[0]);
  }
  auto options = veltor::console::ParseOptions(argc, argv);
  if (!options.ok()) {
    std::fprintf(stderr, "veltor: %s\n%s", options.message().c_str(), veltor::console::kUsage);
    return kExitUsage;
  }
  if (options->help) {
    std::fputs(veltor::console::kUsage, stdout);
    return 0;
  }
  if (options->version) {
    std::printf("veltor %s\n", VELTOR_VERSION);
    return 0;
  }
  if (options->info) return Info(options->drawing);
  if (options->exporting()) return Export(*options);
  return Run(*options);
}
