// The order of a list control that sorts its own items, as the host's list boxes do.
#pragma once

#include <string>
#include <vector>

namespace veltor::ui {

// `items` in the order a sorting list shows them: alphabetically without regard to letter case
// (Unicode lower-casing, then UTF-16 code-unit order); items equal but for case keep an exact
// ordinal order among themselves, so the order does not depend on the input's.
std::vector<std::string> SortedForList(std::vector<std::string> items);

}  // namespace veltor::ui
