#include "console/job_list.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>

namespace veltor::console {

FileStamp StampOf(const std::string& path) {
  struct stat st;
  FileStamp stamp;
  if (stat(path.c_str(), &st) != 0) return stamp;
  stamp.size = static_cast<int64_t>(st.st_size);
  stamp.mtime_ns = static_cast<int64_t>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
  return stamp;
}

Result<std::vector<std::string>> ReadPathList(const std::string& list_path) {
  std::FILE* f = std::fopen(list_path.c_str(), "rb");
  if (!f) return Status::Error(list_path + ": " + std::strerror(errno));
  std::vector<std::string> paths;
  std::string line;
  bool read_error = false;
  for (;;) {
    int c = std::fgetc(f);
    if (c == EOF || c == '\n') {
      if (!line.empty() && line.back() == '\r') line.pop_back();
      if (line.find_first_not_of(" \t") != std::string::npos) paths.push_back(line);
      line.clear();
      if (c == EOF) {
        read_error = std::ferror(f) != 0;
        break;
      }
    } else {
      line.push_back(static_cast<char>(c));
    }
  }
  int saved_errno = errno;
  std::fclose(f);
  if (read_error) return Status::Error(list_path + ": " + std::strerror(saved_errno));
  return paths;
}

Result<std::vector<std::string>> ExpandInputs(const std::vector<std::string>& args) {
  std::vector<std::string> inputs;
  for (const std::string& arg : args) {
    if (arg.size() > 1 && arg[0] == '@') {
      auto listed = ReadPathList(arg.substr(1));
      if (!listed.ok()) return listed.status().Wrap("drawing list");
      inputs.insert(inputs.end(), listed->begin(), listed->end());
    } else {
      inputs.push_back(arg);
    }
  }
  return inputs;
}

std::string FileNameOf(const std::string& path) {
  size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

namespace {

bool SameFile(const std::string& a, const std::string& b) {
  struct stat sa, sb;
  return stat(a.c_str(), &sa) == 0 && stat(b.c_str(), &sb) == 0 && sa.st_dev == sb.st_dev &&
         sa.st_ino == sb.st_ino;
}

}  // namespace

Result<std::vector<BatchJob>> PlanJobs(const std::vector<std::string>& inputs, const std::string& out_dir,
                                       bool in_place) {
  std::vector<BatchJob> jobs;
  std::set<std::string> seen;
  std::map<std::string, std::string> by_name;   // file name -> the input that has it
  for (const std::string& input : inputs) {
    if (!seen.insert(input).second) return Status::Error(input + ": listed twice");
    std::string name = FileNameOf(input);
    if (name.empty() || name == "." || name == "..") return Status::Error(input + ": not a file name");
    if (in_place) {
      jobs.push_back({input, input});
      continue;
    }
    auto [it, fresh] = by_name.emplace(name, input);
    if (!fresh)
      return Status::Error(it->second + " and " + input + " have the same file name; their results would both be " +
                           out_dir + "/" + name);
    std::string output = out_dir + (out_dir.back() == '/' ? "" : "/") + name;
    if (SameFile(input, output))
      return Status::Error(input + ": its result " + output + " would replace the drawing itself (use --in-place)");
    jobs.push_back({input, output});
  }
  return jobs;
}

}  // namespace veltor::console
