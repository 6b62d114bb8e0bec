#include "console/script_input.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "od/text.h"

namespace veltor::console {

Result<std::unique_ptr<ScriptInput>> ScriptInput::Open(const std::string& path,
                                                       std::vector<std::string> extra_lines,
                                                       Echo echo) {
  std::FILE* file = nullptr;
  bool owned = false;
  if (path == "-") {
    file = stdin;
  } else if (!path.empty()) {
    struct stat st;
    if (stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode))
      return Status::Error(path + ": cannot read the script: it is a folder");
    file = std::fopen(path.c_str(), "rb");
    if (!file) return Status::Error(path + ": cannot read the script: " + std::strerror(errno));
    owned = true;
  }
  return std::unique_ptr<ScriptInput>(
      new ScriptInput(file, owned, std::move(extra_lines), std::move(echo)));
}

ScriptInput::ScriptInput(std::FILE* file, bool owned, std::vector<std::string> extra_lines, Echo echo)
    : file_(file), owns_file_(owned), extra_lines_(std::move(extra_lines)), echo_(std::move(echo)) {}

ScriptInput::~ScriptInput() {
  if (owns_file_ && file_) std::fclose(file_);
}

bool ScriptInput::NextLine(std::string& line) {
  line.clear();
  if (file_) {
    int c = 0;
    bool any = false;
    while ((c = std::getc(file_)) != EOF) {
      any = true;
      if (c == '\n') break;
      line.push_back(static_cast<char>(c));
    }
    if (std::ferror(file_)) {
      unreadable_ = true;
      failed_ = true;
      failure_ = std::string("cannot read the script: ") + std::strerror(errno);
      return false;
    }
    if (any) {
      if (line_number_ == 0 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      return true;
    }
    if (owns_file_) std::fclose(file_);
    file_ = nullptr;
  }
  if (next_extra_ < extra_lines_.size()) {
    line = extra_lines_[next_extra_++];
    return true;
  }
  return false;
}

session::InputLine ScriptInput::ReadLine(const std::string& prompt) {
  std::string line;
  if (failed_ || !NextLine(line)) return {session::InputLine::Kind::kEnd, {}};
  ++line_number_;
  if (!od::IsValidUtf8(line)) {
    failed_ = true;
    failure_ = "the line is not valid UTF-8";
    return {session::InputLine::Kind::kEnd, {}};
  }
  if (echo_) echo_(prompt + line + "\n");
  return {session::InputLine::Kind::kLine, line};
}

void ScriptInput::Rejected(const std::string& why) {
  failed_ = true;
  failure_ = why;
}

}  // namespace veltor::console
