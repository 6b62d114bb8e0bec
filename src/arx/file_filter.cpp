#include "arx/file_filter.h"

#include <vector>

#include "od/text.h"

namespace veltor::arx {

std::u16string CommonDialogFilter(const std::string& filter) {
  std::vector<std::string> fields;
  size_t start = 0;
  for (;;) {
    const size_t bar = filter.find('|', start);
    fields.push_back(filter.substr(start, bar == std::string::npos ? bar : bar - start));
    if (bar == std::string::npos) break;
    start = bar + 1;
  }
  std::u16string out;
  for (size_t i = 0; i + 1 < fields.size(); i += 2) {
    const std::string description(od::TrimBlanks(fields[i]));
    const std::string patterns(od::TrimBlanks(fields[i + 1]));
    if (patterns.empty()) continue;
    out += od::Utf8ToUtf16(description.empty() ? patterns : description);
    out += u'\0';
    out += od::Utf8ToUtf16(patterns);
    out += u'\0';
  }
  out += u'\0';
  if (out.size() == 1) out += u'\0';
  return out;
}

}  // namespace veltor::arx
