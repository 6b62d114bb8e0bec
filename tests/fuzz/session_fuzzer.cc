// libFuzzer target for the whole session: real drawings driven by random script lines.
//
// The first byte of an input picks one of the drawings named at start-up; the rest is read
// as script lines, answered as a person types them (a refused answer is asked again, so one
// bad line does not end the run): commands, selection answers, dialog answers, keywords,
// values, "*Cancel*" and transparent commands. The module and the console's dialog renderer
// take part as they do in `veltor`. The file commands (OPEN, SAVE, ...) are left out and file
// dialogs cancelled so that random lines never touch the file system.
//
// Beyond crashes and sanitizer reports, two properties are checked (failures abort):
//   - whatever the lines did, the drawing writes out to bytes that load again;
//   - a drawing that was not modified writes back exactly the bytes it was read from.
//
// Drawings: every *.dxf of at most 256 KiB in the folders of VELTOR_FUZZ_DRAWINGS (a
// colon-separated list), by default the project's fixtures and the real-file corpus.
#include <dirent.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/veltor_app.h"
#include "console/console_ui.h"
#include "drawing/dxf/reader.h"
#include "drawing/dxf/writer.h"
#include "write_to_string.h"
#include "drawing/model/document.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/session.h"

namespace {

using veltor::fuzz::WriteToString;

// The console's dialogs, with every file dialog answered by Cancel: commands that read or
// write a file chosen by the user (definitions from a drawing, the CSV report) run up to
// their file prompt and end there.
class NoFilesUi : public veltor::console::ConsoleUi {
 public:
  using ConsoleUi::ConsoleUi;
  std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                            const std::string&) override {
    return std::nullopt;
  }
};

namespace dxf = veltor::dxf;
namespace model = veltor::model;
namespace session = veltor::session;

struct Drawing {
  std::string name;
  std::string bytes;
};

std::vector<Drawing>* drawings = nullptr;

void Fail(const char* what, const std::string& detail) {
  std::fprintf(stderr, "session_fuzzer: %s: %s\n", what, detail.c_str());
  std::abort();
}

void AddFolder(const std::string& dir) {
  DIR* d = opendir(dir.c_str());
  if (!d) return;
  std::vector<std::string> names;
  while (dirent* e = readdir(d)) {
    std::string name = e->d_name;
    if (name.size() > 4 && name.compare(name.size() - 4, 4, ".dxf") == 0) names.push_back(name);
  }
  closedir(d);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    std::ifstream in(dir + "/" + name, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (bytes.str().size() <= 256 * 1024) drawings->push_back({name, bytes.str()});
  }
}

std::vector<std::string> Lines(const uint8_t* data, size_t size) {
  std::vector<std::string> lines;
  std::string line;
  for (size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') {
      lines.push_back(line);
      line.clear();
    } else {
      line.push_back(static_cast<char>(data[i]));
    }
  }
  if (!line.empty()) lines.push_back(line);
  // Keep one run short: the session work per line is large next to a reader's per byte.
  if (lines.size() > 64) lines.resize(64);
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  drawings = new std::vector<Drawing>();
  const char* env = std::getenv("VELTOR_FUZZ_DRAWINGS");
  std::string folders = env && *env ? env
                                    : std::string(VELTOR_SOURCE_DIR) + "/tests/data:" +
                                          VELTOR_SOURCE_DIR + "/examples:" + VELTOR_SOURCE_DIR +
                                          "/../shared/corpus/dxf";
  size_t start = 0;
  while (start <= folders.size()) {
    size_t end = folders.find(':', start);
    if (end == std::string::npos) end = folders.size();
    AddFolder(folders.substr(start, end - start));
    start = end + 1;
  }
  if (drawings->empty()) Fail("no drawings", folders);
  std::fprintf(stderr, "session_fuzzer: %zu drawings\n", drawings->size());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const Drawing& drawing = (*drawings)[data[0] % drawings->size()];
  auto parsed = model::Document::FromBytes(drawing.bytes, drawing.name);
  if (!parsed.ok()) return 0;

  std::string printed;
  session::Session s([&](std::string_view text) {
    // Bounded: a run prints what it prints, but memory must not grow without end.
    if (printed.size() < (1u << 20)) printed.append(text);
  });
  // Everything but the file commands: random lines must not write or open files.
  session::RegisterUndoCommands(s);
  session::RegisterObjectDataCommands(s);
  session::RegisterInfoCommands(s);
  NoFilesUi ui(s.Ed());
  s.SetUi(&ui);
  s.LoadModule(veltor::app::AcrxEntryPoint);
  s.AddDocument(std::move(parsed).value(), drawing.name);
  session::SessionDocument* first = s.active();

  session::LinesInput input(Lines(data + 1, size - 1), nullptr, /*stop_at_refusal=*/false);
  s.SetInput(&input);
  s.RunLoop();

  // The drawing the run started with, if the lines did not close it.
  bool still_open = false;
  for (size_t i = 0; i < s.document_count(); ++i)
    if (s.ActivateDocument(i).ok() && s.active() == first) still_open = true;
  if (still_open) {
    model::Document& doc = *first->doc;
    std::string written;
    if (WriteToString(doc.store(), written)) {
      if (!doc.modified() && written != drawing.bytes)
        Fail("unmodified drawing wrote other bytes", drawing.name);
      auto again = dxf::ParseDxf(written, "rewritten");
      if (!again.ok()) Fail("written drawing does not load", drawing.name + ": " + again.message());
    }
  }
  s.UnloadModules();
  return 0;
}
