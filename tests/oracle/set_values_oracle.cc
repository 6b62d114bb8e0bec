// ezdxf as an independent reader of the geometry VELTOR_SETPROP and VELTOR_SETXYZ measure:
// the console runs both commands over real drawings, and check_set_values.py compares the
// lengths, areas and centre points they wrote with what it computes from ezdxf's reading of
// the same drawing's lines and polylines.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "drawing/dxf/record_store.h"
#include "drawing/model/document.h"
#include "drawing/model/entity.h"
#include "drawing/objectdata/od_store.h"
#include "oracle_tools.h"

namespace veltor::oracle {
namespace {

// The console script: a table of four Real columns attached to every entity, SETPROP with
// eight decimals and SETXYZ at the centre with six.
constexpr char kScript[] =
    "ODTABLE\nNew\nGeo\n\nLEN\nReal\n0\n\nAREA\nReal\n0\n\nX\nReal\n0\n\nY\nReal\n0\n\n\n"
    "ODATTACH\nGeo\nALL\n\n\n\n\n\n"
    "VELTOR_SETPROP\nGeo\nLEN\nAREA\n\n8\nOK\nALL\n\n"
    "VELTOR_SETXYZ\nGeo\nX\nY\n\nCenter\n\n6\n\nOK\nALL\n\n";

std::string Number(double v) {
  char text[64];
  std::snprintf(text, sizeof text, "%.17g", v);
  return text;
}

class SetValuesEzdxf : public ::testing::TestWithParam<std::string> {};

TEST_P(SetValuesEzdxf, LengthsAreasAndCentresMatchEzdxfsGeometry) {
  if (!HaveEzdxf()) GTEST_SKIP() << "/usr/bin/python3 cannot import ezdxf";
  const std::string drawing = GetParam();
  if (!std::ifstream(drawing)) GTEST_SKIP() << drawing << " is not there";
  ScratchDir dir;
  const std::string script = dir.File("set.scr"), out = dir.File("out.dxf");
  ASSERT_TRUE(WriteFile(script, kScript));
  CommandResult ran = oracle::Run(Quote(BinDir() + "/veltor") + " " + Quote(drawing) + " -s " +
                          Quote(script) + " -o " + Quote(out));
  ASSERT_EQ(ran.exit_code, 0) << ran.output;
  ASSERT_NE(ran.output.find("Completed (Length/Area/Volume): "), std::string::npos) << ran.output;

  auto doc = model::Document::Open(out);
  ASSERT_TRUE(doc.ok()) << doc.message();
  objectdata::ObjectDataStore store(**doc);
  std::string json = "{\"drawing\": \"" + drawing + "\", \"entities\": [";
  size_t count = 0;
  for (model::RecordId id : model::ModelSpaceEntities(**doc)) {
    for (const od::Record& record : store.Records(id)) {
      if (record.table != "Geo" || record.values.size() != 4) continue;
      json += std::string(count++ ? ", " : "") + "{\"handle\": \"" +
              dxf::FormatHandle((*doc)->store().at(id).handle) + "\"";
      const char* names[] = {"len", "area", "x", "y"};
      for (size_t i = 0; i < 4; ++i)
        json += std::string(", \"") + names[i] + "\": " + Number(record.values[i].real());
      json += "}";
    }
  }
  json += "]}";
  ASSERT_GT(count, 0u);
  const std::string values = dir.File("values.json");
  ASSERT_TRUE(WriteFile(values, json));
  CommandResult checked = oracle::Run("/usr/bin/python3 " +
                              Quote(SourceDir() + "/tests/oracle/check_set_values.py") + " " +
                              Quote(values));
  EXPECT_EQ(checked.exit_code, 0) << checked.output;
  std::printf("%s", checked.output.c_str());
}

INSTANTIATE_TEST_SUITE_P(
    Drawings, SetValuesEzdxf,
    ::testing::Values(CorpusDir() + "/gdal__LWPOLYLINE-OCS.dxf",
                      CorpusDir() + "/gdal__ocs2wcs2.dxf",
                      CorpusDir() + "/libredwg__entities-2d.dxf",
                      SourceDir() + "/examples/city.dxf"),
    [](const ::testing::TestParamInfo<std::string>& p) {
      std::string name = p.param.substr(p.param.rfind('/') + 1);
      name = name.substr(0, name.size() - 4);
      for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
      return name;
    });

}  // namespace
}  // namespace veltor::oracle
