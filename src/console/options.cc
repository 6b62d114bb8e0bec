#include "console/options.h"

#include <cstdlib>


namespace veltor::console {

const char kUsage[] =
    "usage: veltor [DRAWING] [-s FILE|-] [-c LINE]... [-o OUT | --in-place]\n"
    "       veltor --batch SCRIPT [-j N] (--out-dir DIR | --in-place) [--report FILE] [--resume]\n"
    "              DRAWING... | @LIST\n"
    "       veltor --info DRAWING\n"
    "       veltor --export OUT [--format NAME] [--srs EPSG:N] [--tables T1,T2]\n"
    "              [--without-records] [--precision D] [--overwrite] DRAWING...\n"
    "       veltor [DRAWING] --import SOURCE [--layer NAME] [--target-layer DWGLAYER]\n"
    "              [--table NAME] [-s FILE|-] [-c LINE]... [-o OUT | --in-place]\n"
    "       veltor --help | --version\n"
    "\n"
    "  DRAWING       a DXF drawing to open (otherwise a new empty drawing)\n"
    "  -s FILE       run a script: each line answers the next prompt (- reads standard input)\n"
    "  -c LINE       run one script line; may be repeated\n"
    "  -o OUT        save the drawing to OUT when the script has run\n"
    "  --in-place    save the drawing over DRAWING\n"
    "  --info        print a summary of DRAWING and stop\n"
    "  --export OUT  write the Object Data of every DRAWING, one layer per table, to OUT (a\n"
    "                file, or PG:\"dbname=...\"), in GDAL's format NAME (default GPKG);\n"
    "                --precision D: arcs become chords within D drawing units (0.01)\n"
    "  --import SOURCE  add the features of a GDAL layer to the drawing as entities with\n"
    "                records (before the script runs); save them with -o or --in-place\n"
    "A file that a save replaces is kept with its extension replaced by .bak (city.dxf ->\n"
    "city.bak); nothing is saved when a script line is refused.\n"
    "Without a script, veltor reads commands from the terminal (or from standard input when\n"
    "it is not a terminal). Exit status: 0 done, 2 usage, 3 unreadable drawing, 4 save failed,\n"
    "5 a script line was refused, 6 unreadable script, 9 export or import failed. See docs/gis.md.\n"
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

namespace {

std::vector<std::string> SplitList(const std::string& list) {
  std::vector<std::string> items;
  size_t start = 0;
  while (start <= list.size()) {
    size_t comma = list.find(',', start);
    if (comma == std::string::npos) comma = list.size();
    if (comma > start) items.push_back(list.substr(start, comma - start));
    start = comma + 1;
  }
  return items;
}

}  // namespace

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
    } else if (arg == "--without-records") {
      o.without_records = true;
    } else if (arg == "--overwrite") {
      o.overwrite = true;
    } else if (arg == "--export" || arg == "--format" || arg == "--srs" || arg == "--tables" ||
               arg == "--precision" || arg == "--import" || arg == "--layer" ||
               arg == "--target-layer" || arg == "--table") {
      Result<std::string> v = value("a value");
      if (!v.ok()) return v.status();
      if (arg == "--export") o.export_target = *v;
      else if (arg == "--format") o.format = *v;
      else if (arg == "--srs") o.srs = *v;
      else if (arg == "--tables") o.tables = SplitList(*v);
      else if (arg == "--import") o.import_source = *v;
      else if (arg == "--layer") o.import_layer = *v;
      else if (arg == "--target-layer") o.target_layer = *v;
      else if (arg == "--table") o.table = *v;
      else {
        char* end = nullptr;
        o.precision = std::strtod(v->c_str(), &end);
        if (end == v->c_str() || *end != '\0' || !(o.precision > 0))
          return Status::Error("--precision needs a positive number of drawing units");
      }
    } else if (arg.size() > 1 && arg[0] == '-') {
      return Status::Error("unknown option " + arg);
    } else if (o.drawing.empty()) {
      o.drawing = arg;
    } else {
      o.more_drawings.push_back(arg);
    }
  }
  if (!o.more_drawings.empty() && o.export_target.empty())
    return Status::Error("more than one drawing given");
  if (o.help || o.version) return o;
  if (o.info && o.drawing.empty()) return Status::Error("--info needs a drawing");
  if (o.in_place && o.drawing.empty()) return Status::Error("--in-place needs a drawing");
  if (o.in_place && !o.output.empty()) return Status::Error("give either -o or --in-place");
  const bool export_options = !o.format.empty() || !o.srs.empty() || !o.tables.empty() ||
                              o.without_records || o.precision > 0 || o.overwrite;
  if (export_options && o.export_target.empty())
    return Status::Error("--format, --srs, --tables, --without-records, --precision and --overwrite go with --export");
  const bool import_options = !o.import_layer.empty() || !o.target_layer.empty() || !o.table.empty();
  if (import_options && o.import_source.empty())
    return Status::Error("--layer, --target-layer and --table go with --import");
  if (!o.export_target.empty()) {
    if (o.drawing.empty()) return Status::Error("--export needs at least one drawing");
    if (!o.import_source.empty() || o.scripted() || !o.output.empty() || o.in_place || o.info)
      return Status::Error("--export runs alone: no --import, script, -o, --in-place or --info with it");
  }
  return o;
}

}  // namespace veltor::console
