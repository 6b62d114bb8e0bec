#include "commands/exchange/alias_file.h"

#include "commands/exchange/attr_text_file.h"
#include "od/format.h"
#include "od/string_table.h"
#include "od/text.h"

namespace veltor::commands {

namespace {

// The C runtime's white space, which a field is trimmed of.
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

}  // namespace

std::vector<std::string> AliasFields(std::string_view line) {
  line = line.substr(0, line.find('#'));
  size_t end = line.find_last_not_of(" \t\r\n");
  line = end == std::string_view::npos ? std::string_view() : line.substr(0, end + 1);
  std::vector<std::string> fields;
  size_t start = line.find_first_not_of('\t');
  while (start != std::string_view::npos) {
    size_t stop = line.find('\t', start);
    std::string_view field = line.substr(start, stop == std::string_view::npos ? stop : stop - start);
    fields.emplace_back(od::TrimBlanks(field, kWhiteSpace));
    start = stop == std::string_view::npos ? stop : line.find_first_not_of('\t', stop);
  }
  return fields;
}

void ReadAliasFile(od::Host& host, const std::string& path, const AliasFileMessages& messages,
                   const AliasLineTaker& take) {
  od::Editor& ed = host.Ed();
  const od::Database* db = host.WorkingDatabase();
  Result<std::vector<std::string>> lines =
      db ? ReadTextFileLinesAsRead(*db, path) : Result<std::vector<std::string>>(Status::Error(path));
  if (!lines.ok()) {
    ed.Print(od::Format(od::Str(od::kStrUnableToRead), path.c_str()));
    return;
  }
  ed.Print(od::Format(od::Str(messages.loading), path.c_str()));
  int taken = 0;
  for (const std::string& line : *lines) {
    if (take(AliasFields(line))) ++taken;
    else ed.Print(od::Format(od::Str(messages.incorrect), line.c_str()));
  }
  ed.Print(od::Format(od::Str(messages.loaded), taken));
}

}  // namespace veltor::commands
