#include "drawing/session/mtext_plain.h"

namespace veltor::session {

std::string MTextPlainText(std::string_view s) {
  std::string out;
  size_t i = 0;
  while (i < s.size()) {
    char c = s[i];
    if (c == '{' || c == '}') {
      ++i;
      continue;
    }
    if (c != '\\' || i + 1 == s.size()) {
      out += c;
      ++i;
      continue;
    }
    char code = s[i + 1];
    i += 2;
    switch (code) {
      case '\\': case '{': case '}':
        out += code;
        break;
      case 'P': case 'X':
        out += '\n';
        break;
      case '~':
        out += ' ';
        break;
      case 'L': case 'l': case 'O': case 'o': case 'K': case 'k':
        break;  // underline, overline, strike-through switches
      case 'S': {  // stacked text up to ";": "a^b", "a/b" or "a#b" shows as "a/b"
        size_t end = s.find(';', i);
        std::string_view stack = s.substr(i, end == std::string_view::npos ? end : end - i);
        for (char k : stack) out += (k == '^' || k == '#') ? '/' : k;
        i = end == std::string_view::npos ? s.size() : end + 1;
        break;
      }
      case 'f': case 'F': case 'H': case 'W': case 'Q': case 'T': case 'A': case 'C':
      case 'c': case 'p': {  // codes with an argument ending at ";"
        size_t end = s.find(';', i);
        i = end == std::string_view::npos ? s.size() : end + 1;
        break;
      }
      default:  // an unknown code stays as written
        out += '\\';
        out += code;
    }
  }
  return out;
}

}  // namespace veltor::session
