// The first number VELTOR_SETID proposes for a field: one more than the largest number the
// drawing's records already hold there.
#pragma once

#include <string>

#include "od/host.h"

namespace veltor::commands {

// The first run of digits of `text`: "" without a digit; "0" when the first digit is the
// text's last character (so "ID7" gives "0", deliberately); otherwise that digit and the
// digits right after it ("K12b" gives "12").
std::string FirstDigitRun(const std::string& text);

// Over every entity of model space, the first record of `table`, its `column`: an Integer as
// itself, a Real truncated toward zero, a Character by its first digit run. Gives 0 when the
// largest number found is below 1, otherwise the largest number plus one.
int ProposeFirstNumber(od::Host& host, const std::string& table, const std::string& column);

}  // namespace veltor::commands
