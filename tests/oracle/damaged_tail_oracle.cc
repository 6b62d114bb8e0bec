// ezdxf reads what veltor writes from a drawing whose file was cut short after its last
// section: the damaged tail is dropped and the copy ends with "0 EOF", whether the drawing
// was changed or not.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "oracle_tools.h"

namespace veltor::oracle {
namespace {

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

// ezdxf.readfile on `path`: empty when it reads the file, else what it printed.
std::string EzdxfReadError(const std::string& path) {
  CommandResult r = Run("/usr/bin/python3 -c 'import ezdxf, sys; ezdxf.readfile(sys.argv[1])' " +
                        Quote(path));
  return r.exit_code == 0 ? std::string() : r.output;
}

struct Cut {
  const char* name;
  size_t bytes_cut;  // from the end of examples/city.dxf, which ends "  0\nENDSEC\n  0\nEOF\n"
};

class DamagedTailEzdxf : public ::testing::TestWithParam<Cut> {};

TEST_P(DamagedTailEzdxf, SavedCopyIsReadableChangedOrNot) {
  if (!HaveEzdxf()) GTEST_SKIP() << "/usr/bin/python3 cannot import ezdxf";
  ScratchDir dir;
  ASSERT_FALSE(dir.path().empty());
  std::string whole = ReadAll(SourceDir() + "/examples/city.dxf");
  ASSERT_EQ(whole.substr(whole.size() - 8), "  0\nEOF\n");
  std::string cut = dir.File("cut.dxf");
  ASSERT_TRUE(WriteFile(cut, whole.substr(0, whole.size() - GetParam().bytes_cut)));
  ASSERT_NE(EzdxfReadError(cut), "") << "the cut file itself must be unreadable to ezdxf";

  std::string veltor = Quote(BinDir() + "/veltor") + " " + Quote(cut);
  std::string changed = dir.File("changed.dxf");
  CommandResult r = oracle::Run(veltor + " -c LAYER -c Freeze -c NOTES -c '' -o " + Quote(changed));
  ASSERT_EQ(r.exit_code, 0) << r.output;
  EXPECT_NE(r.output.find("no EOF marker"), std::string::npos) << r.output;
  EXPECT_EQ(EzdxfReadError(changed), "");

  std::string unchanged = dir.File("unchanged.dxf");
  r = oracle::Run(veltor + " -s /dev/null -o " + Quote(unchanged));
  ASSERT_EQ(r.exit_code, 0) << r.output;
  EXPECT_EQ(EzdxfReadError(unchanged), "");
  EXPECT_EQ(ReadAll(unchanged), whole) << "the only damage was the cut EOF marker";
}

INSTANTIATE_TEST_SUITE_P(Oracle, DamagedTailEzdxf,
                         ::testing::Values(Cut{"NoEofMarker", 8}, Cut{"CutInsideEofMarker", 2}),
                         [](const ::testing::TestParamInfo<Cut>& param) { return param.param.name; });

}  // namespace
}  // namespace veltor::oracle
