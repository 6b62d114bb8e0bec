// UTF-8 (the module's text) to and from the UTF-16 that Win32 windows take, for the UI side
// of the plug-in. On Windows wchar_t is a UTF-16 code unit.
#pragma once

#include <string>

#include "od/text.h"

namespace veltor::arx {

inline std::wstring Wide(const std::string& utf8) {
  const std::u16string utf16 = od::Utf8ToUtf16(utf8);
  return std::wstring(utf16.begin(), utf16.end());
}

inline std::string Narrow(const std::wstring& utf16) {
  return od::Utf16ToUtf8(std::u16string(utf16.begin(), utf16.end()));
}

}  // namespace veltor::arx
