// ezdxf as an independent reader of what BREAK writes: the console breaks each curve type of
// tests/data/curves.dxf (line, closed polyline with an arc segment, arc, circle across angle 0,
// spline, 3D polyline) and saves; check_break.py then reads the original and the result with
// ezdxf and finds the pieces' lengths adding up to the original's less the gap it measures
// along the original curve, and every piece on the original curve.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "oracle_tools.h"

namespace veltor::oracle {
namespace {

struct BreakCase {
  const char* handle;
  double first[3];
  double second[3];
  int pieces;
  bool closed;
};

// Points on the curves (the spline's at t = 1/4 and 3/4 of its Bezier form).
constexpr BreakCase kCases[] = {
    {"40", {1, 0, 1.25}, {2, 0, 1.5}, 2, false},
    {"41", {11, 1, 0}, {12, 1, 0}, 1, true},
    {"42", {21.732050807568877, 1, 0}, {21, 1.7320508075688772, 0}, 2, false},
    {"43", {30, -3, 0}, {30, 3, 0}, 1, true},
    {"45", {50.90625, 1.125, 0}, {53.09375, 1.125, 0}, 2, false},
    {"46", {61, 0, 0.75}, {64, 1.5, 4}, 2, false},
};

std::string Point(const double p[3], const char* separator) {
  char text[128];
  std::snprintf(text, sizeof text, "%.17g%s%.17g%s%.17g", p[0], separator, p[1], separator, p[2]);
  return text;
}

TEST(BreakEzdxf, PiecesAddUpToTheOriginalLessTheGapAndLieOnIt) {
  if (!HaveEzdxf()) GTEST_SKIP() << "/usr/bin/python3 cannot import ezdxf";
  ScratchDir dir;
  std::string script, cases = "[";
  for (const BreakCase& c : kCases) {
    script += std::string("BREAK\n") + c.handle + "\n" + Point(c.first, ",") + "\n" +
              Point(c.second, ",") + "\n";
    cases += std::string(cases.size() > 1 ? ", " : "") + "{\"handle\": \"" + c.handle +
             "\", \"first\": [" + Point(c.first, ", ") + "], \"second\": [" +
             Point(c.second, ", ") + "], \"pieces\": " + std::to_string(c.pieces) +
             ", \"closed\": " + (c.closed ? "true" : "false") + "}";
  }
  cases += "]";
  const std::string original = SourceDir() + "/tests/data/curves.dxf";
  const std::string out = dir.File("broken.dxf"), script_file = dir.File("break.scr");
  ASSERT_TRUE(WriteFile(script_file, script));
  ASSERT_TRUE(WriteFile(dir.File("cases.json"), cases));
  CommandResult ran = oracle::Run(Quote(BinDir() + "/veltor") + " " + Quote(original) + " -s " +
                          Quote(script_file) + " -o " + Quote(out));
  ASSERT_EQ(ran.exit_code, 0) << ran.output;
  CommandResult checked =
      oracle::Run("/usr/bin/python3 " + Quote(SourceDir() + "/tests/oracle/check_break.py") + " " +
          Quote(original) + " " + Quote(out) + " " + Quote(dir.File("cases.json")));
  EXPECT_EQ(checked.exit_code, 0) << checked.output;
  std::printf("%s", checked.output.c_str());
}

}  // namespace
}  // namespace veltor::oracle
