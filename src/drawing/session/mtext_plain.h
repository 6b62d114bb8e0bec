// The plain text of multi-line text contents: what is left without the formatting codes.
#pragma once

#include <string>
#include <string_view>

namespace veltor::session {

// Drops formatting codes ("\fArial|b0;", "\H2.5x;", "\C1;", "\L", "\O", "\K", ...) and
// grouping braces; "\P" becomes a line feed, "\~" a space, "\S1^2;" the text "1/2", and the
// escapes "\\", "\{", "\}" their character.
std::string MTextPlainText(std::string_view contents);

}  // namespace veltor::session
