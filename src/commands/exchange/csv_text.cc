#include "commands/exchange/csv_text.h"

namespace veltor::commands {

std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

std::string CsvLine(const std::vector<std::string>& fields) {
  std::string line;
  for (size_t i = 0; i < fields.size(); ++i) {
    if (i) line += ',';
    line += CsvField(fields[i]);
  }
  return line + "\r\n";
}

}  // namespace veltor::commands
