#include "console/options.h"


namespace veltor::console {

const char kUsage[] =
    "usage: veltor [DRAWING] [-s FILE|-] [-c LINE]... [-o OUT | --in-place]\n"
    "       veltor --batch SCRIPT [-j N] (--out-dir DIR | --in-place) [--report FILE] [--resume]\n"
    "              DRAWING... | @LIST\n"
    "       veltor --info DRAWING\n"
    "       veltor --help | --version\n"
    "\n"
    "  DRAWING       a DXF drawing to open (otherwise a new empty drawing)\n"
    "  -s FILE       run a script: each line answers the next prompt (- reads standard input)\n"
    "  -c LINE       run one script line; may be repeated\n"
    "  -o OUT        save the drawing to OUT when the script has run\n"
    "  --in-place    save the drawing over DRAWING\n"
    "  --info        print a summary of DRAWING and stop\n"
    "A file that a save replaces is kept with its extension replaced by .bak (city.dxf ->\n"
    "city.bak); nothing is saved when a script line is refused.\n"
    "Without a script, veltor reads commands from the terminal (or from standard input when\n"
    "it is not a terminal). Exit status: 0 done, 2 usage, 3 unreadable drawing, 4 save failed,\n"
    "5 a script line was refused, 6 unreadable script.\n"
    "\n"
    "  --batch SCRIPT  run SCRIPT on every DRAWING, each in its own veltor process\n"
    "  -j N            N drawings at a time (default: one per core)\n"
    "  --out-dir DIR   write each result as DIR/<file name> (made if missing)\n"
    "  --report FILE   write one JSON line per drawing to FILE as each finishes\n"
    "  --resume        skip drawings FILE lists as done whose input has not changed since\n"
    "  @LIST           a file with one drawing path per line\n"
    "A broken or refused drawing is reported and the others go on. Batch exit status:\n"
    "0 every drawing done, 7 some drawing failed, 8 nothing run (a bad list, two drawings\n"
    "with the same file name, an output folder or report that cannot be written), 6 the\n"
    "script cannot be read, 2 usage. See docs/batch.md.\n";

Result<Options> ParseOptions(int argc, const char* const* argv) {
  Options o;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    auto value = [&](const char* what) -> Result<std::string> {
      if (i + 1 >= argc) return Status::Error(arg + " needs " + what);
      return std::string(argv[++i]);
    };
    if (arg == "--help" || arg == "-h") {
      o.help = true;
    } else if (arg == "--version") {
      o.version = true;
    } else if (arg == "--info") {
      o.info = true;
    } else if (arg == "--in-place") {
      o.in_place = true;
    } else if (arg == "-o" || arg == "-s" || arg == "-c") {
      Result<std::string> v = value(arg == "-o" ? "a file name" : arg == "-s" ? "a script file" : "a line");
      if (!v.ok()) return v.status();
      if (arg == "-o") o.output = *v;
      else if (arg == "-s") o.script = *v;
      else o.lines.push_back(*v);
    } else if (arg.size() > 1 && arg[0] == '-') {
      return Status::Error("unknown option " + arg);
    } else if (o.drawing.empty()) {
      o.drawing = arg;
    } else {
      return Status::Error("more than one drawing given");
    }
  }
  if (o.help || o.version) return o;
  if (o.info && o.drawing.empty()) return Status::Error("--info needs a drawing");
  if (o.in_place && o.drawing.empty()) return Status::Error("--in-place needs a drawing");
  if (o.in_place && !o.output.empty()) return Status::Error("give either -o or --in-place");
  return o;
}

}  // namespace veltor::console
