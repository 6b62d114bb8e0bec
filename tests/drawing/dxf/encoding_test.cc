// Text encodings: code pages before R2007, UTF-8 after, "\U+XXXX" escapes in both.
#include <gtest/gtest.h>

#include "drawing/dxf/encoding.h"
#include "drawing/model/document.h"
#include "drawing/model/tables.h"
#include "test_files.h"

namespace veltor::dxf {
namespace {

using testing::CorpusFile;

TEST(TextCodec, CodePageTextDecodesToUtf8AndBack) {
  TextCodec cp1251(false, "ANSI_1251");
  std::string raw = "\xD1\xEB\xEE\xE9 1";  // "Слой 1" in CP1251
  EXPECT_EQ(cp1251.Decode(raw), "Слой 1");
  EXPECT_EQ(cp1251.Encode("Слой 1"), raw);
  TextCodec cp1252(false, "ANSI_1252");
  EXPECT_EQ(cp1252.Decode("Stra\xDF" "e"), "Straße");
  EXPECT_EQ(cp1252.Encode("Straße"), "Stra\xDF" "e");
  EXPECT_EQ(TextCodec(false, "ANSI_9999").charset(), "CP1252") << "unknown pages fall back";
}

TEST(TextCodec, EscapesDecodeInEveryEncoding) {
  TextCodec cp1252(false, "ANSI_1252");
  TextCodec utf8(true, "");
  for (const TextCodec* codec : {&cp1252, &utf8}) {
    EXPECT_EQ(codec->Decode("\\U+0416ar"), "Жar");
    EXPECT_EQ(codec->Decode("x\\u+03a9"), "xΩ") << "lower case and at the very end";
    EXPECT_EQ(codec->Decode("\\U+22050,5"), "∅0,5") << "exactly four digits";
    EXPECT_EQ(codec->Decode("\\U+12G4 \\U+12"), "\\U+12G4 \\U+12") << "not escapes";
    EXPECT_EQ(codec->Decode("C:\\Users"), "C:\\Users");
  }
}

TEST(TextCodec, CharactersMissingFromTheCodePageBecomeEscapes) {
  TextCodec cp1252(false, "ANSI_1252");
  EXPECT_EQ(cp1252.Encode("Жé"), "\\U+0416\xE9");
  EXPECT_EQ(cp1252.Encode("道路"), "\\U+9053\\U+8DEF");
  TextCodec cp1251(false, "ANSI_1251");
  EXPECT_EQ(cp1251.Encode("Ωж"), "\\U+03A9\xE6");
  EXPECT_EQ(cp1251.Decode(cp1251.Encode("Ωж")), "Ωж");
}

// Beyond the 16-bit range an escape pair (UTF-16 surrogates) carries the character.
TEST(TextCodec, CharactersBeyondSixteenBitsRoundTripThroughACodePage) {
  TextCodec cp1252(false, "ANSI_1252");
  std::string emoji = "\xF0\x9F\x98\x80";  // U+1F600
  EXPECT_EQ(cp1252.Encode(emoji), "\\U+D83D\\U+DE00");
  EXPECT_EQ(cp1252.Decode(cp1252.Encode("a" + emoji + "b")), "a" + emoji + "b");
  // A lone surrogate is no character: it decodes to the replacement character, keeping the
  // result valid UTF-8.
  EXPECT_EQ(cp1252.Decode("\\U+D83Dx"), "\xEF\xBF\xBDx");
}

TEST(TextCodec, Utf8FilesPassTextThroughAndRepairBadBytes) {
  TextCodec utf8(true, "ANSI_1252");
  std::string text = "Дорога Ω 道路 \xF0\x9F\x98\x80";
  EXPECT_EQ(utf8.Encode(text), text);
  EXPECT_EQ(utf8.Decode(text), text);
  EXPECT_EQ(utf8.Decode("a\xFF" "b"), "a\xEF\xBF\xBD" "b");
  // The same rules as everywhere else: an overlong "/" and an encoded surrogate are not text.
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(utf8.Decode("a\xC0\xAF" "b"), "a" + replacement + replacement + "b");
  EXPECT_EQ(utf8.Decode("\xED\xA0\x80"), replacement + replacement + replacement);
}

// A real R2000 drawing in code page 1251: its Cyrillic text style name decodes, and a
// Cyrillic layer added to it is stored in the code page and reads back.
TEST(TextCodec, CorpusDrawingInCodePage1251) {
  VELTOR_NEEDS_CORPUS();
  auto doc = model::Document::Open(CorpusFile("zcad__entities.dxf"));
  ASSERT_TRUE(doc.ok()) << doc.message();
  model::Document& d = **doc;
  EXPECT_EQ(d.version(), "AC1015");
  EXPECT_EQ(d.codec().charset(), "CP1251");
  RecordId style = model::FindTableRecord(d, "STYLE", "Аннотативный");
  ASSERT_NE(style, kNoRecord);
  EXPECT_EQ(d.Decode(model::TagText(d.TagsOf(style), 2)), "Аннотативный");

  model::AddLayer(d, "Слой Ω");
  testing::ScratchDir dir;
  ASSERT_TRUE(d.Save(dir.File("cyr.dxf")).ok());
  std::string bytes = testing::ReadBytes(dir.File("cyr.dxf"));
  EXPECT_NE(bytes.find("\n\xD1\xEB\xEE\xE9 \\U+03A9\n"), std::string::npos);
  auto again = model::Document::Open(dir.File("cyr.dxf"));
  ASSERT_TRUE(again.ok()) << again.message();
  RecordId layer = model::FindLayer(**again, "Слой Ω");
  ASSERT_NE(layer, kNoRecord);
  EXPECT_EQ(model::ReadLayer(**again, layer).name, "Слой Ω");
}

TEST(TextCodec, Utf8InR2018) {
  VELTOR_NEEDS_CORPUS();
  auto doc = model::Document::Open(CorpusFile("gdal__hatch_as_multipolygon.dxf"));
  ASSERT_TRUE(doc.ok()) << doc.message();
  EXPECT_TRUE((*doc)->codec().utf8()) << "AC1032 is UTF-8 whatever $DWGCODEPAGE says";
  EXPECT_NE(model::FindLayer(**doc, "Строения"), kNoRecord);

  auto blank = model::Document::NewBlank("AC1032");
  model::AddLayer(*blank, "道路 \xF0\x9F\x98\x80");
  testing::ScratchDir dir;
  ASSERT_TRUE(blank->Save(dir.File("u.dxf")).ok());
  EXPECT_NE(testing::ReadBytes(dir.File("u.dxf")).find("\n道路 \xF0\x9F\x98\x80\n"), std::string::npos);
  auto again = model::Document::Open(dir.File("u.dxf"));
  ASSERT_TRUE(again.ok());
  EXPECT_NE(model::FindLayer(**again, "道路 \xF0\x9F\x98\x80"), kNoRecord);
}

}  // namespace
}  // namespace veltor::dxf

// A line break inside a value would split the DXF line and corrupt the file; a literal
// "\U+0041" typed by a user would come back as "A". Both must survive a round trip.
TEST(TextCodec, LineBreaksAndLiteralEscapesRoundTrip) {
  const std::string text = "first line\nsecond\r\n\ttab, \\U+0041 stays, \\ alone, \\U+12";
  for (bool utf8 : {true, false}) {
    veltor::dxf::TextCodec codec(utf8, "ANSI_1252");
    std::string raw = codec.Encode(text);
    EXPECT_EQ(raw.find('\n'), std::string::npos);
    EXPECT_EQ(raw.find('\r'), std::string::npos);
    EXPECT_EQ(codec.Decode(raw), text) << (utf8 ? "UTF-8" : "code page");
  }
}
