// veltor-gen: writes sample drawings with Object Data.
//   veltor-gen --entities N --seed S -o FILE [--version AC1015|...|AC1032]
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "city_generator.h"

namespace {

int Usage(const char* message) {
  if (message) std::fprintf(stderr, "veltor-gen: %s\n", message);
  std::fprintf(stderr,
               "usage: veltor-gen --entities N --seed S -o FILE [--version AC1015..AC1032]\n"
               "  N from 100 to 2000000 model space entities; the same N and S give the same file\n");
  return 2;
}

bool ParseCount(const char* text, unsigned long long& out) {
  char* end = nullptr;
  out = std::strtoull(text, &end, 10);
  return end != text && *end == '\0';
}

}  // namespace

int main(int argc, char** argv) {
  veltor::tools::CityOptions options;
  std::string output;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    bool has_value = i + 1 < argc;
    unsigned long long n = 0;
    if (arg == "--help" || arg == "-h") return Usage(nullptr), 0;
    if (!has_value) return Usage(("missing value after " + arg).c_str());
    const char* value = argv[++i];
    if (arg == "--entities" || arg == "-n") {
      if (!ParseCount(value, n) || n < 100 || n > 2000000)
        return Usage("--entities takes a number from 100 to 2000000");
      options.entities = static_cast<size_t>(n);
    } else if (arg == "--seed" || arg == "-s") {
      if (!ParseCount(value, n)) return Usage("--seed takes a non-negative number");
      options.seed = n;
    } else if (arg == "-o" || arg == "--output") {
      output = value;
    } else if (arg == "--version") {
      options.version = value;
      if (options.version < "AC1015" || options.version > "AC1032" || options.version.size() != 6)
        return Usage("--version takes AC1015 (R2000) to AC1032 (R2018)");
    } else {
      return Usage(("unknown option " + arg).c_str());
    }
  }
  if (output.empty()) return Usage("no output file (-o FILE)");
  auto doc = veltor::tools::GenerateCity(options);
  if (!doc.ok()) {
    std::fprintf(stderr, "veltor-gen: %s\n", doc.message().c_str());
    return 1;
  }
  veltor::Status saved = (*doc)->Save(output);
  if (!saved.ok()) {
    std::fprintf(stderr, "veltor-gen: %s\n", saved.message().c_str());
    return 1;
  }
  return 0;
}
