// Text encodings of DXF files.
//
// From R2007 (AC1021) files are UTF-8; earlier files use the code page named by $DWGCODEPAGE
// ("ANSI_1252", "ANSI_1251", "DOS866", ...), and characters outside it are written as
// "\U+XXXX" escapes. Inside the engine text is UTF-8; a TextCodec converts at the file's edge.
#pragma once

#include <iconv.h>

#include <string>
#include <string_view>

namespace veltor::dxf {

class TextCodec {
 public:
  // `utf8` for R2007 and later; otherwise `dwg_code_page` is the header's value.
  TextCodec(bool utf8, std::string_view dwg_code_page);
  ~TextCodec();
  TextCodec(const TextCodec&) = delete;
  TextCodec& operator=(const TextCodec&) = delete;

  // File text to UTF-8, resolving "\U+XXXX" escapes. Bytes that the code page cannot decode
  // become U+FFFD.
  std::string Decode(std::string_view raw) const;
  // UTF-8 to file text; characters the code page lacks, control characters (a line break
  // would end the DXF line) and a literal "\U+XXXX" become "\U+XXXX" escapes, so that
  // Decode(Encode(text)) == text for any valid UTF-8 text.
  std::string Encode(std::string_view utf8) const;

  bool utf8() const { return utf8_; }
  // The iconv name of the code page ("CP1252"), or "UTF-8".
  const std::string& charset() const { return charset_; }

 private:
  bool utf8_;
  std::string charset_;
  iconv_t to_utf8_ = reinterpret_cast<iconv_t>(-1);
  iconv_t from_utf8_ = reinterpret_cast<iconv_t>(-1);
};

// Maps a $DWGCODEPAGE value to an iconv charset name; unknown names give "CP1252".
std::string CharsetForCodePage(std::string_view dwg_code_page);

}  // namespace veltor::dxf
