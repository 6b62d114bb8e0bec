#include "ui/sorted_list.h"

#include <algorithm>

#include "od/text.h"

namespace veltor::ui {

std::vector<std::string> SortedForList(std::vector<std::string> items) {
  std::vector<std::pair<std::string, std::string>> keyed;  // (lower-cased, item)
  keyed.reserve(items.size());
  for (std::string& item : items) keyed.emplace_back(od::ToLowerUnicode(item), std::move(item));
  std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
    int by_letters = od::CompareOrdinalUtf16(a.first, b.first);
    if (by_letters != 0) return by_letters < 0;
    return od::CompareOrdinalUtf16(a.second, b.second) < 0;
  });
  std::vector<std::string> sorted;
  sorted.reserve(keyed.size());
  for (auto& entry : keyed) sorted.push_back(std::move(entry.second));
  return sorted;
}

}  // namespace veltor::ui
