// CSV text as RFC 4180 writes it: fields separated by ",", lines ended by CRLF, a field that
// holds a comma, a double quote, CR or LF put in double quotes with its quotes doubled.
#pragma once

#include <string>
#include <vector>

namespace veltor::commands {

// The UTF-8 byte-order mark that makes spreadsheets read the file as UTF-8.
inline constexpr const char* kUtf8Bom = "\xEF\xBB\xBF";

std::string CsvField(const std::string& text);
// The fields of one line, quoted where needed, with the CRLF line end.
std::string CsvLine(const std::vector<std::string>& fields);

}  // namespace veltor::commands
