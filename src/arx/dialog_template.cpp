#include "arx/dialog_template.h"

#include <algorithm>

#include "arx/win32_constants.h"
#include "od/text.h"

namespace veltor::arx {

namespace {

constexpr uint16_t kNormalWeight = 400;  // FW_NORMAL
constexpr uint8_t kDefaultCharset = 1;  // DEFAULT_CHARSET
constexpr size_t kMaxItems = 0xFFFF;

// Appends little-endian values and UTF-16 strings to a byte buffer.
class Writer {
 public:
  explicit Writer(std::vector<uint8_t>& out) : out_(out) {}

  void Word(uint16_t value) {
    out_.push_back(static_cast<uint8_t>(value & 0xFF));
    out_.push_back(static_cast<uint8_t>(value >> 8));
  }
  void Short(int16_t value) { Word(static_cast<uint16_t>(value)); }
  void Dword(uint32_t value) {
    Word(static_cast<uint16_t>(value & 0xFFFF));
    Word(static_cast<uint16_t>(value >> 16));
  }
  void Byte(uint8_t value) { out_.push_back(value); }
  // A NUL-terminated UTF-16 string.
  void Text(const std::u16string& text) {
    for (char16_t unit : text) Word(static_cast<uint16_t>(unit));
    Word(0);
  }
  void AlignToDword() {
    while (out_.size() % 4 != 0) out_.push_back(0);
  }

 private:
  std::vector<uint8_t>& out_;
};

void WriteItem(Writer& writer, const TemplateItem& item) {
  writer.AlignToDword();
  writer.Dword(0);  // help id
  writer.Dword(item.ex_style);
  writer.Dword(item.style);
  writer.Short(item.x);
  writer.Short(item.y);
  writer.Short(item.cx);
  writer.Short(item.cy);
  writer.Dword(item.id);
  if (item.class_name.empty()) {
    writer.Word(0xFFFF);
    writer.Word(item.class_atom);
  } else {
    writer.Text(item.class_name);
  }
  writer.Text(od::Utf8ToUtf16(item.text));
  writer.Word(0);  // no creation data
}

}  // namespace

std::vector<uint8_t> EncodeDialogTemplate(const TemplateDialog& dialog) {
  std::vector<uint8_t> bytes;
  Writer writer(bytes);
  const size_t count = std::min(dialog.items.size(), kMaxItems);
  writer.Word(1);  // dlgVer
  writer.Word(0xFFFF);  // signature of the extended form
  writer.Dword(0);  // help id
  writer.Dword(dialog.ex_style);
  writer.Dword(dialog.style | win32::kDsShellFont);
  writer.Word(static_cast<uint16_t>(count));
  writer.Short(dialog.x);
  writer.Short(dialog.y);
  writer.Short(dialog.cx);
  writer.Short(dialog.cy);
  writer.Word(0);  // no menu
  writer.Word(0);  // the predefined dialog class
  writer.Text(od::Utf8ToUtf16(dialog.title));
  writer.Word(dialog.point_size);
  writer.Word(kNormalWeight);
  writer.Byte(0);  // not italic
  writer.Byte(kDefaultCharset);
  writer.Text(dialog.typeface);
  for (size_t i = 0; i < count; ++i) WriteItem(writer, dialog.items[i]);
  return bytes;
}

}  // namespace veltor::arx
