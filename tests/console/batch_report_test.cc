// Batch report lines: JSON that any reader takes (checked with Python's json where it is
// installed), read back by resume, and a report file that survives an interrupted run.
#include "console/batch_report.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "../drawing/dxf/test_files.h"
#include "console/json_line.h"

namespace veltor::console {
namespace {

// Paths that need every kind of escape: quotes and backslashes, control characters, UTF-8
// in several scripts, and bytes that are not UTF-8 (an overlong form, a lone continuation
// byte, a cut-off sequence, a UTF-8-encoded surrogate).
const std::vector<std::string> kNastyTexts = {
    "plain/a.dxf",
    "quote\"back\\slash/x.dxf",
    "ctl\x01\x1f\t\n\r\x7f end",
    "Łódź/Ζώνη/Москва/東京/😀.dxf",
    "bad\xC0\xAF/\x80/\xE2\x82/\xED\xA0\x80.dxf",
};

ReportEntry SampleEntry(const std::string& path) {
  ReportEntry e;
  e.path = path;
  e.status = JobStatus::kFailed;
  e.signal = 11;
  e.seconds = 1.23456;
  e.results = {"Selected: 26", "Completed: 3 out of \"4\""};
  e.output = "";
  e.error = "veltor: " + path + ": line 9: bad";
  e.input = {123456789, 1795399878612632886};
  return e;
}

TEST(BatchReport, ALineReadsBackAsWhatWasWritten) {
  for (const std::string& path : kNastyTexts) {
    std::string line = FormatReportLine(SampleEntry(path));
    EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    auto back = ParseReportLine(line);
    ASSERT_TRUE(back.ok()) << back.message() << "\n" << line;
    EXPECT_EQ(back->path, path);
    EXPECT_EQ(back->status, JobStatus::kFailed);
    EXPECT_FALSE(back->exit_code.has_value());
    EXPECT_EQ(back->signal, 11);
    EXPECT_DOUBLE_EQ(back->seconds, 1.235);
    EXPECT_EQ(back->results, SampleEntry(path).results);
    EXPECT_EQ(back->output, "");
    EXPECT_EQ(back->error, SampleEntry(path).error);
    EXPECT_EQ(back->input, SampleEntry(path).input);
  }
}

TEST(BatchReport, AbsentValuesAreNullAndValidUtf8IsWrittenAsItIs) {
  ReportEntry e;
  e.path = "Łódź.dxf";
  e.exit_code = 0;
  e.output = "out/Łódź.dxf";
  e.input = {10, 20};
  EXPECT_EQ(FormatReportLine(e),
            "{\"path\":\"Łódź.dxf\",\"status\":\"done\",\"exit\":0,\"signal\":null,\"seconds\":0.000,"
            "\"results\":[],\"output\":\"out/Łódź.dxf\",\"error\":null,\"size\":10,\"mtime_ns\":20}");
  EXPECT_EQ(JsonString(std::string("a\x01\xff", 3)), "\"a\\u0001\\udcff\"");
}

// Python's json module reads every line, and its values turned back into bytes the way
// Python turns file names into bytes (UTF-8 with surrogateescape) are the original bytes.
TEST(BatchReport, PythonsJsonReadsTheLinesBackByteForByte) {
  if (access("/usr/bin/python3", X_OK) != 0) GTEST_SKIP() << "/usr/bin/python3 is not installed";
  testing::ScratchDir dir;
  std::string lines;
  for (const std::string& path : kNastyTexts) lines += FormatReportLine(SampleEntry(path)) + "\n";
  testing::WriteBytes(dir.File("report.jsonl"), lines);
  std::string command =
      "/usr/bin/python3 -c 'import json,os,sys\n"
      "for line in open(sys.argv[1], encoding=\"utf-8\"):\n"
      "    d = json.loads(line)\n"
      "    assert d[\"signal\"] == 11 and d[\"exit\"] is None and d[\"output\"] is None\n"
      "    assert d[\"mtime_ns\"] == 1795399878612632886\n"
      "    sys.stdout.buffer.write(os.fsencode(d[\"path\"]) + b\"\\0\")\n' " +
      dir.File("report.jsonl") + " >" + dir.File("paths") + " 2>" + dir.File("err");
  ASSERT_EQ(std::system(command.c_str()), 0) << testing::ReadBytes(dir.File("err"));
  std::string expected;
  for (const std::string& path : kNastyTexts) expected += path + std::string(1, '\0');
  EXPECT_EQ(testing::ReadBytes(dir.File("paths")), expected);
}

TEST(BatchReport, ParsingRefusesWhatIsNotOneFlatObject) {
  for (const char* bad : {"", "{", "{\"path\":\"a\"", "{\"path\":\"a\"} x", "{\"a\":{}}", "{\"a\":[1]}",
                          "{\"a\":\"\x01\"}", "{\"a\":\"\\q\"}", "{\"a\":-}", "[1]"}) {
    EXPECT_FALSE(ParseJsonObject(bad).ok()) << bad;
  }
  auto missing = ParseReportLine("{\"path\":\"a.dxf\",\"status\":\"done\"}");
  EXPECT_FALSE(missing.ok());
  auto pair = ParseJsonObject("{\"s\":\"\\ud83d\\ude00\\u00e9\"}");
  ASSERT_TRUE(pair.ok()) << pair.message();
  EXPECT_EQ(pair->at("s").text, "😀é");
}

TEST(BatchReport, ResumeKnowsTheLastDoneStampOfEachDrawingAndPassesOverCutLines) {
  testing::ScratchDir dir;
  auto line = [](const std::string& path, JobStatus status, int64_t size) {
    ReportEntry e;
    e.path = path;
    e.status = status;
    e.input = {size, 7};
    return FormatReportLine(e) + "\n";
  };
  std::string cut = line("c.dxf", JobStatus::kDone, 3);
  testing::WriteBytes(dir.File("r.jsonl"), line("a.dxf", JobStatus::kDone, 1) + line("b.dxf", JobStatus::kFailed, 2) +
                                               line("a.dxf", JobStatus::kDone, 5) + "not json\n" +
                                               line("s.dxf", JobStatus::kSkipped, 4) +
                                               cut.substr(0, cut.size() / 2));
  auto done = ReadDoneDrawings(dir.File("r.jsonl"));
  ASSERT_TRUE(done.ok()) << done.message();
  ASSERT_EQ(done->size(), 1u);
  EXPECT_EQ(done->at("a.dxf").size, 5);

  auto none = ReadDoneDrawings(dir.File("absent.jsonl"));
  ASSERT_TRUE(none.ok());
  EXPECT_TRUE(none->empty());
}

TEST(BatchReport, AppendingAfterACutLineStartsOnANewLine) {
  testing::ScratchDir dir;
  testing::WriteBytes(dir.File("r.jsonl"), "{\"path\":\"a.dx");
  ReportEntry e;
  e.path = "b.dxf";
  {
    ReportWriter writer;
    ASSERT_TRUE(writer.Open(dir.File("r.jsonl"), true).ok());
    ASSERT_TRUE(writer.Write(e).ok());
    // Written through at once: the file holds the line while the writer is still open.
    EXPECT_EQ(testing::ReadBytes(dir.File("r.jsonl")), "{\"path\":\"a.dx\n" + FormatReportLine(e) + "\n");
  }
  {
    ReportWriter writer;
    ASSERT_TRUE(writer.Open(dir.File("r.jsonl"), false).ok());
    ASSERT_TRUE(writer.Write(e).ok());
  }
  EXPECT_EQ(testing::ReadBytes(dir.File("r.jsonl")), FormatReportLine(e) + "\n");
  ReportWriter nowhere;
  EXPECT_FALSE(nowhere.Open(dir.File("no/such/dir/r.jsonl"), false).ok());
}

}  // namespace
}  // namespace veltor::console
