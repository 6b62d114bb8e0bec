// The module's file filters as the common file dialogs take them.
#include <gtest/gtest.h>

#include <string>

#include "arx/file_filter.h"

namespace veltor::arx {
namespace {

// The filter with each NUL shown as "|", to compare readably.
std::u16string Shown(std::u16string filter) {
  for (char16_t& c : filter)
    if (c == u'\0') c = u'|';
  return filter;
}

TEST(CommonDialogFilter, PairsBecomeNulSeparatedWithADoubleNulAtTheEnd) {
  const std::u16string filter = CommonDialogFilter("Drawings (*.dwg)|*.dwg|All files (*.*)|*.*||");
  EXPECT_EQ(filter.size(), std::u16string(u"Drawings (*.dwg)|*.dwg|All files (*.*)|*.*||").size());
  EXPECT_EQ(Shown(filter), u"Drawings (*.dwg)|*.dwg|All files (*.*)|*.*||");
  EXPECT_EQ(filter[filter.size() - 1], u'\0');
  EXPECT_EQ(filter[filter.size() - 2], u'\0');
}

TEST(CommonDialogFilter, BlanksEmptyPatternsAndMissingDescriptions) {
  EXPECT_EQ(Shown(CommonDialogFilter(" A | *.a;*.b |B||")), u"A|*.a;*.b||");
  EXPECT_EQ(Shown(CommonDialogFilter("|*.txt||")), u"*.txt|*.txt||");
  EXPECT_EQ(Shown(CommonDialogFilter("")), u"||");
  EXPECT_EQ(Shown(CommonDialogFilter("Only a description")), u"||");
}

TEST(CommonDialogFilter, TextIsUtf16) {
  // "Таблицы" (Cyrillic).
  const std::u16string filter =
      CommonDialogFilter("\xD0\xA2\xD0\xB0\xD0\xB1\xD0\xBB\xD0\xB8\xD1\x86\xD1\x8B|*.odt||");
  EXPECT_EQ(filter.substr(0, 7), (std::u16string{0x0422, 0x0430, 0x0431, 0x043B, 0x0438, 0x0446, 0x044B}));
}

}  // namespace
}  // namespace veltor::arx
