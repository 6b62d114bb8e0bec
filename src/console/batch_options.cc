#include "console/batch_options.h"

#include <cstdlib>

namespace veltor::console {

namespace {
constexpr long kMaxJobs = 1024;
}  // namespace

bool IsBatchCommandLine(int argc, const char* const* argv) {
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--") return false;
    if (arg == "--batch") return true;
  }
  return false;
}

Result<BatchOptions> ParseBatchOptions(int argc, const char* const* argv) {
  BatchOptions o;
  bool options_ended = false;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    auto value = [&](const char* what) -> Result<std::string> {
      if (i + 1 >= argc) return Status::Error(arg + " needs " + what);
      return std::string(argv[++i]);
    };
    if (options_ended || arg.empty() || arg[0] != '-' || arg == "-") {
      if (arg.empty()) return Status::Error("an empty drawing name was given");
      o.inputs.push_back(arg);
    } else if (arg == "--") {
      options_ended = true;
    } else if (arg == "--help" || arg == "-h") {
      o.help = true;
    } else if (arg == "--in-place") {
      o.in_place = true;
    } else if (arg == "--resume") {
      o.resume = true;
    } else if (arg == "--batch" || arg == "--out-dir" || arg == "--report") {
      Result<std::string> v = value(arg == "--batch" ? "a script file" : arg == "--out-dir" ? "a folder" : "a file name");
      if (!v.ok()) return v.status();
      if (v->empty()) return Status::Error(arg + " needs a non-empty name");
      (arg == "--batch" ? o.script : arg == "--out-dir" ? o.out_dir : o.report) = *v;
    } else if (arg == "-j" || arg == "--jobs") {
      Result<std::string> v = value("a number of workers");
      if (!v.ok()) return v.status();
      char* end = nullptr;
      long n = std::strtol(v->c_str(), &end, 10);
      if (v->empty() || *end != '\0' || n < 1 || n > kMaxJobs)
        return Status::Error(arg + " takes a number of workers from 1 to " + std::to_string(kMaxJobs) +
                             ", not '" + *v + "'");
      o.jobs = static_cast<int>(n);
    } else {
      return Status::Error("unknown option for --batch: " + arg);
    }
  }
  if (o.help) return o;
  if (o.script == "-") return Status::Error("--batch needs a script file: the workers cannot share standard input");
  if (o.out_dir.empty() == !o.in_place) return Status::Error("--batch needs either --out-dir DIR or --in-place");
  if (o.resume && o.report.empty()) return Status::Error("--resume needs --report FILE: it reads what is done there");
  if (o.inputs.empty()) return Status::Error("--batch needs drawings (or @LIST)");
  return o;
}

}  // namespace veltor::console
