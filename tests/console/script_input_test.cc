// Script lines read on demand: byte-order mark, line ends, -c lines after the file, lines that
// are not UTF-8, and what cannot be read at all.
#include "console/script_input.h"

#include <gtest/gtest.h>

#include "../drawing/dxf/test_files.h"

namespace veltor::console {
namespace {

using session::InputLine;

std::vector<std::string> ReadAll(ScriptInput& input) {
  std::vector<std::string> lines;
  for (;;) {
    InputLine line = input.ReadLine("> ");
    if (line.kind != InputLine::Kind::kLine) return lines;
    lines.push_back(line.text);
  }
}

TEST(ScriptInput, ReadsFileLinesThenCommandLineLines) {
  testing::ScratchDir dir;
  testing::WriteBytes(dir.File("job.scr"), "\xEF\xBB\xBFSELECT\r\nALL\n\n  LAYER ?  \nlast");
  std::string echoed;
  auto input = ScriptInput::Open(dir.File("job.scr"), {"-c one", ""},
                                 [&](const std::string& t) { echoed += t; });
  ASSERT_TRUE(input.ok()) << input.message();
  EXPECT_EQ(ReadAll(**input),
            (std::vector<std::string>{"SELECT", "ALL", "", "  LAYER ?  ", "last", "-c one", ""}));
  EXPECT_EQ((*input)->line_number(), 7u);
  EXPECT_FALSE((*input)->failed());
  EXPECT_EQ(echoed.substr(0, 12), "> SELECT\n> A");
}

TEST(ScriptInput, ALineThatIsNotUtf8EndsTheInputNamingIt) {
  testing::ScratchDir dir;
  // An overlong "/" (C0 AF) and a lone continuation byte: both are refused, not replaced.
  for (const std::string& bad : {std::string("\xC0\xAF"), std::string("caf\x80")}) {
    testing::WriteBytes(dir.File("bad.scr"), "LIST\n" + bad + "\nQUIT\n");
    auto input = ScriptInput::Open(dir.File("bad.scr"), {}, nullptr);
    ASSERT_TRUE(input.ok());
    EXPECT_EQ(ReadAll(**input), (std::vector<std::string>{"LIST"}));
    EXPECT_TRUE((*input)->failed());
    EXPECT_FALSE((*input)->unreadable());
    EXPECT_EQ((*input)->line_number(), 2u);
    EXPECT_EQ((*input)->failure(), "the line is not valid UTF-8");
  }
}

TEST(ScriptInput, AFolderOrAMissingFileIsNotAScript) {
  testing::ScratchDir dir;
  auto folder = ScriptInput::Open(dir.path(), {}, nullptr);
  ASSERT_FALSE(folder.ok());
  EXPECT_NE(folder.message().find("it is a folder"), std::string::npos);
  auto missing = ScriptInput::Open(dir.File("nothing.scr"), {}, nullptr);
  ASSERT_FALSE(missing.ok());
  EXPECT_NE(missing.message().find("nothing.scr: cannot read the script"), std::string::npos);
}

}  // namespace
}  // namespace veltor::console
