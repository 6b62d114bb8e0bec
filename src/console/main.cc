// veltor: the console front end.
//   veltor --info DRAWING       print a summary of a drawing
//   veltor DRAWING -o OUT       open a drawing and save it to a new file
#include <cstdio>
#include <cstring>
#include <string>

#include "console/info_report.h"
#include "drawing/model/document.h"

namespace {

constexpr int kExitUsage = 2;
constexpr int kExitBadDrawing = 3;
constexpr int kExitWriteFailed = 4;

int Usage(const char* message) {
  if (message) std::fprintf(stderr, "veltor: %s\n", message);
  std::fprintf(stderr,
               "usage: veltor --info DRAWING\n"
               "       veltor DRAWING -o OUT\n"
               "       veltor --help | --version\n");
  return kExitUsage;
}

}  // namespace

int main(int argc, char** argv) {
  std::string drawing, output;
  bool info = false;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--help" || arg == "-h") {
      Usage(nullptr);
      return 0;
    }
    if (arg == "--version") {
      std::printf("veltor %s\n", VELTOR_VERSION);
      return 0;
    }
    if (arg == "--info") {
      info = true;
    } else if (arg == "-o") {
      if (i + 1 >= argc) return Usage("-o needs a file name");
      output = argv[++i];
    } else if (!arg.empty() && arg[0] == '-') {
      return Usage(("unknown option " + arg).c_str());
    } else if (drawing.empty()) {
      drawing = arg;
    } else {
      return Usage("more than one drawing given");
    }
  }
  if (drawing.empty()) return Usage("no drawing given");
  if (!info && output.empty()) return Usage("nothing to do: give --info or -o OUT");

  auto doc = veltor::model::Document::Open(drawing);
  if (!doc.ok()) {
    std::fprintf(stderr, "veltor: %s\n", doc.message().c_str());
    return kExitBadDrawing;
  }
  if (info) std::fputs(veltor::console::InfoReport(**doc).c_str(), stdout);
  if (!output.empty()) {
    veltor::Status saved = (*doc)->Save(output);
    if (!saved.ok()) {
      std::fprintf(stderr, "veltor: %s\n", saved.message().c_str());
      return kExitWriteFailed;
    }
  }
  return 0;
}
