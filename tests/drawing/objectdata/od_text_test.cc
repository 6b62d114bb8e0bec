// How Object Data text is written: from R2007 the UTF-8 text as it stands, with each line
// after a line break in a group naming the break; before R2007 the code page with escapes.
#include <gtest/gtest.h>

#include "../model/saved_drawing.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/objectdata/od_format.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::objectdata {
namespace {

using dxf::Tag;
using dxf::Tags;
using model::Document;
using model::RecordId;
using testing::SaveAndReload;
using testing::ScratchDir;

const std::string kTyped = "tab\there \\U+0041 Ελληνικά 中文";

Tags TextTags(const Document& doc, const std::string& text) {
  Tags tags;
  AppendTextTags(doc, 1, text, tags);
  return tags;
}

std::string ReadBack(const Document& doc, const Tags& tags) {
  size_t i = 0;
  std::string text = ReadTextTags(doc, tags, i);
  EXPECT_EQ(i, tags.size()) << "every continuation group belongs to the text";
  return text;
}

TEST(ObjectDataText, Utf8IsWrittenAsTyped) {
  auto doc = Document::NewBlank("AC1032");
  EXPECT_EQ(TextTags(*doc, kTyped), (Tags{{1, kTyped}}));
  EXPECT_EQ(ReadBack(*doc, {{1, kTyped}}), kTyped);
}

TEST(ObjectDataText, EachLineAfterABreakStartsAGroupNamingTheBreak) {
  auto doc = Document::NewBlank("AC1032");
  const std::string text = "one\ntwo\r\nthree\rfour\n";
  Tags expected{{1, "one"}, {300, "two"}, {301, "three"}, {302, "four"}, {300, ""}};
  EXPECT_EQ(TextTags(*doc, text), expected);
  EXPECT_EQ(ReadBack(*doc, expected), text);
  // A long line is cut in pieces of group 3; the break still starts its line's group.
  std::string long_line(300, 'x');
  Tags cut = TextTags(*doc, long_line + "\n" + "y");
  EXPECT_EQ(cut, (Tags{{1, std::string(250, 'x')}, {3, std::string(50, 'x')}, {300, "y"}}));
  EXPECT_EQ(ReadBack(*doc, cut), long_line + "\ny");
}

TEST(ObjectDataText, BeforeR2007ControlCharactersAndLiteralEscapesAreEscaped) {
  auto doc = Document::NewBlank("AC1015");
  const std::string text = "tab\there \\U+0041\nnext";
  Tags tags = TextTags(*doc, text);
  ASSERT_EQ(tags.size(), 1u);
  EXPECT_EQ(tags[0].value, "tab\\U+0009here \\U+005CU+0041\\U+000Anext");
  EXPECT_EQ(ReadBack(*doc, tags), text);
}

// Values and descriptions survive a save and reload in both kinds of drawing.
TEST(ObjectDataText, TypedTextRoundTripsThroughTheFile) {
  for (const char* version : {"AC1015", "AC1032"}) {
    SCOPED_TRACE(version);
    ScratchDir dir;
    auto doc = Document::NewBlank(version);
    RecordId e = model::AddModelSpaceEntity(*doc, "POINT", "0",
                                            {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
    const std::string text = "\t" + kTyped + "\nline two\r\n\\U+005C\t";
    ObjectDataStore store(*doc);
    od::TableDefinition def;
    def.name = "Notes";
    def.description = "about\nnotes";
    def.columns = {{"Text", od::ValueType::kCharacter, "line\r\nbreak", od::Value::Character(text)}};
    ASSERT_TRUE(store.CreateTable(def).ok());
    ASSERT_TRUE(store.AddRecord(e, od::Record{"Notes", {od::Value::Character(text)}}).ok());
    auto saved = SaveAndReload(*doc, dir);
    ASSERT_TRUE(saved);
    ObjectDataStore reread(*saved);
    auto table = reread.GetTable("Notes");
    ASSERT_TRUE(table.ok()) << table.message();
    EXPECT_EQ(table->description, "about\nnotes");
    EXPECT_EQ(table->columns[0].description, "line\r\nbreak");
    EXPECT_EQ(table->columns[0].default_value.text(), text);
    auto records = reread.Records(saved->Find(doc->store().at(e).handle));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].values[0].text(), text);
  }
}

// Numbers in the file are whole numbers or they are damage.
TEST(ObjectDataNumbers, OnlyWholeNumbersRead) {
  int32_t i = 0;
  double d = 0;
  EXPECT_TRUE(ParseWholeInt32("  -42 ", i));
  EXPECT_EQ(i, -42);
  EXPECT_TRUE(ParseWholeInt32("+7", i));
  EXPECT_EQ(i, 7);
  EXPECT_TRUE(ParseWholeInt32("-2147483648", i));
  for (const char* bad : {"", " ", "7x", "1.5", "2147483648", "+-1", "++1", "0x10"})
    EXPECT_FALSE(ParseWholeInt32(bad, i)) << bad;
  EXPECT_TRUE(ParseWholeDouble(" 1e-3", d));
  EXPECT_EQ(d, 1e-3);
  EXPECT_TRUE(ParseWholeDouble("inf", d));  // written for infinite reals, read back
  for (const char* bad : {"", "1.5.2", "deep", "1,5", "+-1", "1e"})
    EXPECT_FALSE(ParseWholeDouble(bad, d)) << bad;
}

// A NUL ends a binary DXF string: a text holding one is refused, and nothing is written.
TEST(ObjectDataText, TextWithNulIsRefused) {
  auto doc = Document::NewBlank("AC1032");
  RecordId e = model::AddModelSpaceEntity(*doc, "POINT", "0",
                                          {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
  ObjectDataStore store(*doc);
  od::TableDefinition def;
  def.name = "Notes";
  def.columns = {{"Text", od::ValueType::kCharacter, "", od::Value::Character("")}};
  ASSERT_TRUE(store.CreateTable(def).ok());
  Status added = store.AddRecord(e, od::Record{"Notes", {od::Value::Character(std::string("a\0b", 3))}});
  EXPECT_FALSE(added.ok());
  EXPECT_NE(added.message().find("NUL"), std::string::npos) << added.message();
  EXPECT_TRUE(store.Records(e).empty());
  def.name = "Other";
  def.description = std::string("x\0", 2);
  EXPECT_FALSE(store.CreateTable(def).ok());
  EXPECT_EQ(store.TableNames(), std::vector<std::string>{"Notes"});
}

}  // namespace
}  // namespace veltor::objectdata
