// The plug-in's dialog templates, read back by a small reader of the DLGTEMPLATEEX format
// written here from the format's description (it shares no code with the builder).
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "arx/dialog_layout.h"
#include "arx/dialog_template.h"
#include "od/dialog_model.h"

namespace veltor::arx {
namespace {

// A class or menu field: an ordinal (0xFFFF, value), a string, or nothing (0x0000).
struct NameOrOrdinal {
  bool is_ordinal = false;
  uint16_t ordinal = 0;
  std::u16string name;
};

struct ReadItem {
  size_t offset = 0;
  uint32_t help_id = 0, ex_style = 0, style = 0, id = 0;
  int16_t x = 0, y = 0, cx = 0, cy = 0;
  NameOrOrdinal window_class;
  NameOrOrdinal title;
  uint16_t extra = 0;
};

struct ReadDialog {
  uint16_t version = 0, signature = 0, count = 0;
  uint32_t help_id = 0, ex_style = 0, style = 0;
  int16_t x = 0, y = 0, cx = 0, cy = 0;
  NameOrOrdinal menu, window_class;
  std::u16string title;
  uint16_t point_size = 0, weight = 0;
  uint8_t italic = 0, charset = 0;
  std::u16string typeface;
  std::vector<ReadItem> items;
  size_t end = 0;  // where reading stopped
};

class Reader {
 public:
  explicit Reader(const std::vector<uint8_t>& bytes) : bytes_(bytes) {}

  bool failed() const { return failed_; }
  size_t at() const { return at_; }

  uint8_t U8() {
    if (at_ >= bytes_.size()) {
      failed_ = true;
      return 0;
    }
    return bytes_[at_++];
  }
  uint16_t U16() {
    const uint16_t low = U8();
    return static_cast<uint16_t>(low | (U8() << 8));
  }
  int16_t S16() { return static_cast<int16_t>(U16()); }
  uint32_t U32() {
    const uint32_t low = U16();
    return low | (static_cast<uint32_t>(U16()) << 16);
  }
  std::u16string String() {
    std::u16string text;
    for (uint16_t unit = U16(); unit != 0 && !failed_; unit = U16()) text += static_cast<char16_t>(unit);
    return text;
  }
  NameOrOrdinal Field() {
    NameOrOrdinal field;
    const uint16_t first = U16();
    if (first == 0xFFFF) {
      field.is_ordinal = true;
      field.ordinal = U16();
    } else if (first != 0) {
      field.name = static_cast<char16_t>(first) + String();
    }
    return field;
  }
  void SkipToDword() {
    while (at_ % 4 != 0) U8();
  }

 private:
  const std::vector<uint8_t>& bytes_;
  size_t at_ = 0;
  bool failed_ = false;
};

ReadDialog Read(const std::vector<uint8_t>& bytes) {
  Reader in(bytes);
  ReadDialog d;
  d.version = in.U16();
  d.signature = in.U16();
  d.help_id = in.U32();
  d.ex_style = in.U32();
  d.style = in.U32();
  d.count = in.U16();
  d.x = in.S16();
  d.y = in.S16();
  d.cx = in.S16();
  d.cy = in.S16();
  d.menu = in.Field();
  d.window_class = in.Field();
  d.title = in.String();
  if (d.style & (0x40 | 0x48)) {  // DS_SETFONT, DS_SHELLFONT
    d.point_size = in.U16();
    d.weight = in.U16();
    d.italic = in.U8();
    d.charset = in.U8();
    d.typeface = in.String();
  }
  for (uint16_t i = 0; i < d.count && !in.failed(); ++i) {
    in.SkipToDword();
    ReadItem item;
    item.offset = in.at();
    item.help_id = in.U32();
    item.ex_style = in.U32();
    item.style = in.U32();
    item.x = in.S16();
    item.y = in.S16();
    item.cx = in.S16();
    item.cy = in.S16();
    item.id = in.U32();
    item.window_class = in.Field();
    item.title = in.Field();
    item.extra = in.U16();
    d.items.push_back(item);
  }
  EXPECT_FALSE(in.failed()) << "the template ends before its items do";
  d.end = in.at();
  return d;
}

// "Слой" (Cyrillic) and U+1F600 (outside the BMP), as UTF-8 and as the UTF-16 a reader expects.
const std::string kCyrillicUtf8 = "\xD0\xA1\xD0\xBB\xD0\xBE\xD0\xB9";
const std::u16string kCyrillicUtf16 = {0x0421, 0x043B, 0x043E, 0x0439};
const std::string kEmojiUtf8 = "\xF0\x9F\x98\x80";
const std::u16string kEmojiUtf16 = {0xD83D, 0xDE00};

TemplateDialog TwoItems() {
  TemplateDialog dialog;
  dialog.title = "T" + kEmojiUtf8;
  dialog.style = 0x80C80880u;
  dialog.x = 3;
  dialog.y = 4;
  dialog.cx = 200;
  dialog.cy = 100;
  TemplateItem label;
  label.id = 1001;
  label.class_atom = 0x0082;
  label.style = 0x50000000u;
  label.x = 7;
  label.y = 7;
  label.cx = 186;
  label.cy = 8;
  label.text = kCyrillicUtf8 + ":";  // an odd number of units, so the next item needs padding
  TemplateItem grid;
  grid.id = 1002;
  grid.class_name = u"SysListView32";
  grid.style = 0x50011001u;
  grid.ex_style = 0x200;
  grid.x = 7;
  grid.y = 17;
  grid.cx = -1;  // negative sizes pass through as signed shorts
  grid.cy = 60;
  grid.text = "";
  dialog.items = {label, grid};
  return dialog;
}

TEST(DialogTemplate, HeaderIsTheExtendedFormWithTheShellFont) {
  const ReadDialog d = Read(EncodeDialogTemplate(TwoItems()));
  EXPECT_EQ(d.version, 1);
  EXPECT_EQ(d.signature, 0xFFFF);
  EXPECT_EQ(d.help_id, 0u);
  EXPECT_EQ(d.style, 0x80C80880u | 0x48u);  // DS_SETFONT | DS_SHELLFONT added
  EXPECT_EQ(d.count, 2);
  EXPECT_EQ(d.x, 3);
  EXPECT_EQ(d.y, 4);
  EXPECT_EQ(d.cx, 200);
  EXPECT_EQ(d.cy, 100);
  EXPECT_FALSE(d.menu.is_ordinal);
  EXPECT_TRUE(d.menu.name.empty());
  EXPECT_TRUE(d.window_class.name.empty());
  EXPECT_EQ(d.title, u"T" + kEmojiUtf16);  // a surrogate pair, low byte first
  EXPECT_EQ(d.point_size, 8);
  EXPECT_EQ(d.weight, 400);
  EXPECT_EQ(d.italic, 0);
  EXPECT_EQ(d.charset, 1);
  EXPECT_EQ(d.typeface, u"MS Shell Dlg");
}

TEST(DialogTemplate, ItemsAreDwordAlignedWithOrdinalOrNamedClasses) {
  const std::vector<uint8_t> bytes = EncodeDialogTemplate(TwoItems());
  const ReadDialog d = Read(bytes);
  ASSERT_EQ(d.items.size(), 2u);
  EXPECT_EQ(d.end, bytes.size()) << "bytes after the last item";
  for (const ReadItem& item : d.items) {
    EXPECT_EQ(item.offset % 4, 0u);
    EXPECT_EQ(item.help_id, 0u);
    EXPECT_EQ(item.extra, 0);
  }
  const ReadItem& label = d.items[0];
  EXPECT_EQ(label.id, 1001u);
  EXPECT_TRUE(label.window_class.is_ordinal);
  EXPECT_EQ(label.window_class.ordinal, 0x0082);
  EXPECT_EQ(label.style, 0x50000000u);
  EXPECT_EQ(label.x, 7);
  EXPECT_EQ(label.y, 7);
  EXPECT_EQ(label.cx, 186);
  EXPECT_EQ(label.cy, 8);
  EXPECT_EQ(label.title.name, kCyrillicUtf16 + u":");
  const ReadItem& grid = d.items[1];
  EXPECT_EQ(grid.id, 1002u);
  EXPECT_FALSE(grid.window_class.is_ordinal);
  EXPECT_EQ(grid.window_class.name, u"SysListView32");
  EXPECT_EQ(grid.ex_style, 0x200u);
  EXPECT_EQ(grid.style, 0x50011001u);
  EXPECT_EQ(grid.cx, -1);
  EXPECT_TRUE(grid.title.name.empty());
  // The padding before the second item is zero bytes.
  const size_t label_end = d.items[1].offset;
  EXPECT_GT(label_end, d.items[0].offset);
  EXPECT_EQ(bytes[label_end - 1], 0);
}

// A model with one control of every kind.
class EveryKind : public od::DialogModel {
 public:
  EveryKind() : DialogModel("Every kind", {300, 200}) {
    AddStaticText(10, "A note");
    AddTextBox(11, "Report:").text = "one\ntwo";
    AddCheckBox(12, "Keep", true);
    AddEditBox(13, "Name:").enabled = false;
    AddComboBox(14, "Table:").items = {"A", "B"};
    AddListBox(15, "One:", od::ListMode::kSingle).items = {"x", "y"};
    AddListBox(16, "Several:", od::ListMode::kMultiple).items = {"x", "y"};
    AddListBox(17, "", od::ListMode::kDisplayOnly).visible = false;
    AddGrid(18, "Cells:", {"Field", "Value"}, {false, true});
    AddButton(20, "Apply");
    AddButton(od::kIdOk, "OK");
  }
};

const ReadItem* ItemWithId(const ReadDialog& d, uint32_t id) {
  for (const ReadItem& item : d.items)
    if (item.id == id) return &item;
  return nullptr;
}

bool IsStatic(const ReadItem& item) {
  return item.window_class.is_ordinal && item.window_class.ordinal == 0x0082;
}

constexpr uint32_t kVisibleChild = 0x50000000u;

TEST(DialogLayout, OneWindowPerControlWithTheRightClassAndStyle) {
  EveryKind model;
  const DialogLayout layout = LayoutDialog(model);
  const ReadDialog d = Read(EncodeDialogTemplate(layout.dialog));
  ASSERT_EQ(d.items.size(), layout.items.size());
  EXPECT_EQ(d.title, u"Every kind");
  EXPECT_EQ(d.cx, 300);

  auto widget = [&](int control_id) {
    const ReadItem* item = ItemWithId(d, WindowIdOf(model, control_id, ItemRole::kWidget));
    EXPECT_NE(item, nullptr) << control_id;
    return item ? *item : ReadItem{};
  };
  auto atom = [](const ReadItem& item) {
    return item.window_class.is_ordinal ? item.window_class.ordinal : 0;
  };

  const ReadItem note = widget(10);
  EXPECT_EQ(atom(note), 0x0082);
  EXPECT_EQ(note.title.name, u"A note");
  EXPECT_EQ(note.style & kVisibleChild, kVisibleChild);

  const ReadItem report = widget(11);
  EXPECT_EQ(atom(report), 0x0081);
  EXPECT_EQ(report.style & (0x4u | 0x800u), 0x4u | 0x800u);  // ES_MULTILINE | ES_READONLY

  const ReadItem keep = widget(12);
  EXPECT_EQ(atom(keep), 0x0080);
  EXPECT_EQ(keep.style & 0xFu, 0x3u);  // BS_AUTOCHECKBOX
  EXPECT_EQ(keep.title.name, u"Keep");

  const ReadItem name = widget(13);
  EXPECT_EQ(atom(name), 0x0081);
  EXPECT_EQ(name.style & 0x4u, 0u) << "one line";
  EXPECT_EQ(name.style & 0x08000000u, 0x08000000u) << "WS_DISABLED";

  const ReadItem table = widget(14);
  EXPECT_EQ(atom(table), 0x0085);
  EXPECT_EQ(table.style & 0x3u, 0x3u);  // CBS_DROPDOWNLIST

  const ReadItem one = widget(15);
  const ReadItem several = widget(16);
  const ReadItem shown_only = widget(17);
  EXPECT_EQ(atom(one), 0x0083);
  EXPECT_EQ(one.style & (0x8u | 0x800u | 0x4000u), 0u);
  EXPECT_EQ(several.style & 0x8u, 0x8u);  // LBS_MULTIPLESEL
  EXPECT_EQ(shown_only.style & 0x4000u, 0x4000u);  // LBS_NOSEL
  EXPECT_EQ(shown_only.style & 0x10000000u, 0u) << "hidden: no WS_VISIBLE";

  const ReadItem cells = widget(18);
  EXPECT_EQ(cells.window_class.name, u"SysListView32");
  EXPECT_EQ(cells.style & (0x1u | 0x1000u), 0x1u | 0x1000u);  // LVS_REPORT | LVS_OWNERDATA

  const ReadItem apply = widget(20);
  const ReadItem ok = widget(od::kIdOk);
  EXPECT_EQ(ok.id, 1u) << "IDOK";
  EXPECT_EQ(ok.style & 0xFu, 0x1u);  // BS_DEFPUSHBUTTON
  EXPECT_EQ(apply.style & 0xFu, 0x0u);
  EXPECT_EQ(apply.title.name, u"Apply");
  EXPECT_EQ(apply.y, ok.y) << "buttons share a row";
  EXPECT_LT(apply.x, ok.x) << "in the model's order";
}

TEST(DialogLayout, CaptionsSitAboveTheirControlsAndNothingOverlaps) {
  EveryKind model;
  const DialogLayout layout = LayoutDialog(model);
  const ReadDialog d = Read(EncodeDialogTemplate(layout.dialog));
  // Captions exist for the controls that do not show their own label (the unlabelled list has
  // none).
  for (int id : {11, 13, 14, 15, 16, 18}) {
    const ReadItem* caption = ItemWithId(d, WindowIdOf(model, id, ItemRole::kCaption));
    const ReadItem* widget = ItemWithId(d, WindowIdOf(model, id, ItemRole::kWidget));
    ASSERT_NE(caption, nullptr) << id;
    ASSERT_NE(widget, nullptr) << id;
    EXPECT_TRUE(IsStatic(*caption)) << id;
    EXPECT_LE(caption->y + caption->cy, widget->y) << id;
  }
  EXPECT_EQ(ItemWithId(d, WindowIdOf(model, 17, ItemRole::kCaption)), nullptr);
  EXPECT_EQ(ItemWithId(d, WindowIdOf(model, 12, ItemRole::kCaption)), nullptr);

  std::set<uint32_t> ids;
  for (size_t i = 0; i < d.items.size(); ++i) {
    const ReadItem& a = d.items[i];
    EXPECT_TRUE(ids.insert(a.id).second) << "id " << a.id << " twice";
    EXPECT_GE(a.x, 0);
    EXPECT_GE(a.y, 0);
    EXPECT_LE(a.x + a.cx, d.cx) << a.id;
    EXPECT_LE(a.y + a.cy, d.cy) << a.id;
    for (size_t j = i + 1; j < d.items.size(); ++j) {
      const ReadItem& b = d.items[j];
      // A combo box's height includes its dropped list, which may cover what is under it.
      if (a.window_class.is_ordinal && a.window_class.ordinal == 0x0085) continue;
      const bool apart = a.x + a.cx <= b.x || b.x + b.cx <= a.x || a.y + a.cy <= b.y ||
                         b.y + b.cy <= a.y;
      EXPECT_TRUE(apart) << "items " << a.id << " and " << b.id << " overlap";
    }
  }
}

TEST(DialogLayout, OkAndCancelAreAddedWhenTheModelHasNone) {
  od::DialogModel model("Bare", {});
  model.AddEditBox(5, "");
  const DialogLayout layout = LayoutDialog(model);
  const ReadDialog d = Read(EncodeDialogTemplate(layout.dialog));
  const ReadItem* ok = ItemWithId(d, 1);
  const ReadItem* cancel = ItemWithId(d, 2);
  ASSERT_NE(ok, nullptr);
  ASSERT_NE(cancel, nullptr);
  EXPECT_EQ(ok->title.name, u"OK");
  EXPECT_EQ(cancel->title.name, u"Cancel");
  EXPECT_EQ(ok->style & 0xFu, 0x1u);
  EXPECT_EQ(d.cx, 240) << "the default width";
  // Every template item says which control it shows.
  ASSERT_EQ(layout.items.size(), d.items.size());
  for (size_t i = 0; i < d.items.size(); ++i) {
    const LaidOutItem& source = layout.items[i];
    if (source.role == ItemRole::kRefusal) {
      EXPECT_EQ(d.items[i].id, kRefusalId);
      continue;
    }
    EXPECT_EQ(d.items[i].id, WindowIdOf(model, source.control_id, source.role));
  }
}

TEST(DialogLayout, StaticTextGrowsWithItsLinesAndButtonsWidenTheDialog) {
  od::DialogModel model("Long", {160, 0});
  model.AddStaticText(3, std::string(200, 'x') + "\nsecond line");
  model.AddButton(4, std::string(60, 'w'));
  model.AddButton(5, std::string(60, 'w'));
  const DialogLayout layout = LayoutDialog(model);
  const ReadDialog d = Read(EncodeDialogTemplate(layout.dialog));
  const ReadItem* text = ItemWithId(d, WindowIdOf(model, 3, ItemRole::kWidget));
  ASSERT_NE(text, nullptr);
  // 200 characters of about 4 units in a line of d.cx - 14 units, plus one more line.
  const int per_line = (d.cx - 14) / 4;
  EXPECT_EQ(text->cy, 8 * ((200 + per_line - 1) / per_line + 1));
  EXPECT_GT(d.cx, 160) << "two 60-character buttons do not fit 160 units";
  for (int id : {4, 5}) {
    const ReadItem* button = ItemWithId(d, WindowIdOf(model, id, ItemRole::kWidget));
    ASSERT_NE(button, nullptr);
    EXPECT_LE(button->x + button->cx, d.cx);
  }
}

TEST(DialogLayout, WrappingCountsCharactersNotBytes) {
  // 60 Cyrillic letters (120 bytes) fit one line of a 300-unit dialog (about 71 characters).
  std::string cyrillic;
  for (int i = 0; i < 60; ++i) cyrillic += kCyrillicUtf8.substr(0, 2);
  od::DialogModel model("Wrap", {300, 0});
  model.AddStaticText(3, cyrillic);
  const ReadDialog d = Read(EncodeDialogTemplate(LayoutDialog(model).dialog));
  const ReadItem* text = ItemWithId(d, WindowIdOf(model, 3, ItemRole::kWidget));
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->cy, 8);
  EXPECT_EQ(text->title.name.size(), 60u);
}

}  // namespace
}  // namespace veltor::arx
