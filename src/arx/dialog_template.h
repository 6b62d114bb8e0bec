// An in-memory extended dialog template (DLGTEMPLATEEX followed by DLGITEMTEMPLATEEX items),
// as DialogBoxIndirectParamW reads it, built without windows.h so it is tested on any system.
//
// Layout of the bytes (all little-endian, sizes in dialog units):
//   header: dlgVer 1, signature 0xFFFF, helpID, exStyle, style, item count (WORD), x, y, cx,
//           cy; menu 0x0000, class 0x0000, title (UTF-16, NUL-terminated); because the style
//           has DS_SETFONT/DS_SHELLFONT: point size, weight, italic, charset, typeface.
//   items:  each starts on a DWORD boundary: helpID, exStyle, style, x, y, cx, cy, id (DWORD),
//           class (0xFFFF + atom, or a UTF-16 name), title (UTF-16 text), extra count 0.
// Text is taken as UTF-8 and written as UTF-16LE (characters outside the BMP as surrogate
// pairs; ill-formed UTF-8 as U+FFFD).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veltor::arx {

// One control of a template. Its class is an atom (kAtomButton, ...) or, when class_name is
// not empty, that registered class.
struct TemplateItem {
  uint32_t id = 0;
  uint16_t class_atom = 0;
  std::u16string class_name;
  uint32_t style = 0;
  uint32_t ex_style = 0;
  int16_t x = 0;
  int16_t y = 0;
  int16_t cx = 0;
  int16_t cy = 0;
  std::string text;  // UTF-8
};

struct TemplateDialog {
  std::string title;  // UTF-8
  uint32_t style = 0;  // DS_SETFONT | DS_SHELLFONT is always added
  uint32_t ex_style = 0;
  int16_t x = 0;
  int16_t y = 0;
  int16_t cx = 0;
  int16_t cy = 0;
  uint16_t point_size = 8;
  std::u16string typeface = u"MS Shell Dlg";
  std::vector<TemplateItem> items;
};

// The template's bytes. At most 65535 items fit the item count; more are left out.
std::vector<uint8_t> EncodeDialogTemplate(const TemplateDialog& dialog);

}  // namespace veltor::arx
