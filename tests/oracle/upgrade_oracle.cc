// R12 drawings of the corpus converted up, checked by the independent readers: ezdxf's audit
// finds no errors and reads back Object Data added to the converted drawing, and GDAL reads
// the same number of entities as from the R12 file.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <string>
#include <tuple>

#include "drawing/model/document.h"
#include "drawing/model/entity.h"
#include "drawing/model/upgrade_r12.h"
#include "od_expectations.h"
#include "oracle_tools.h"

namespace veltor::oracle {
namespace {

std::vector<ManifestRow> R12Files() {
  std::vector<ManifestRow> rows = ReadManifest();
  std::vector<ManifestRow> r12;
  for (const ManifestRow& row : rows)
    if (row.version == "AC1009") r12.push_back(row);
  return r12;
}

class R12Upgrade : public ::testing::TestWithParam<std::tuple<ManifestRow, std::string>> {};

TEST_P(R12Upgrade, AuditIsCleanObjectDataReadsBackAndGdalCountsTheSame) {
  const auto& [row, target] = GetParam();
  std::string original = CorpusDir() + "/" + row.file;
  auto source = model::Document::Open(original);
  ASSERT_TRUE(source.ok()) << source.message();
  ASSERT_EQ((*source)->version(), "AC1009");
  Result<model::UpgradedDrawing> converted = model::UpgradeR12(**source, target);
  ASSERT_TRUE(converted.ok()) << converted.message();
  // The corpus's R12 drawings hold nothing the conversion cannot carry.
  for (const std::string& warning : converted->warnings) ADD_FAILURE() << warning;
  model::Document& doc = *converted->doc;

  ScratchDir dir;
  ASSERT_FALSE(dir.path().empty());
  Expectations expected;
  expected.mode = "generated";
  expected.version = target;
  expected.ours = dir.File(row.file);
  Status added = AddSampleObjectData(doc, expected.tables, expected.entities);
  ASSERT_TRUE(added.ok()) << added.message();
  Status saved = doc.Save(expected.ours);
  ASSERT_TRUE(saved.ok()) << saved.message();

  if (HaveEzdxf()) {
    std::string json = dir.File("expectations.json");
    ASSERT_TRUE(WriteFile(json, ToJson(expected))) << json;
    CommandResult r = oracle::Run("/usr/bin/python3 " + Quote(CheckerScript()) + " " + Quote(json));
    EXPECT_EQ(r.exit_code, 0) << r.output;
    if (r.exit_code == 0) std::printf("%s", r.output.c_str());
  }
  if (HaveOgrinfo()) {
    std::string error;
    std::optional<long> ours = OgrEntityCount(expected.ours, error);
    ASSERT_TRUE(ours) << error;
    // GDAL here reads no binary DXF; for a binary R12 file, model space is what it would read.
    std::optional<long> theirs =
        row.binary ? std::optional<long>(static_cast<long>(model::ModelSpaceEntities(**source).size()))
                   : OgrEntityCount(original, error);
    ASSERT_TRUE(theirs) << error;
    EXPECT_EQ(*ours, *theirs);
  }
}

INSTANTIATE_TEST_SUITE_P(Corpus, R12Upgrade,
                         ::testing::Combine(::testing::ValuesIn(R12Files()),
                                            ::testing::Values(std::string("AC1015"), std::string("AC1032"))),
                         [](const auto& p) {
                           std::string name = std::get<0>(p.param).file + "_" + std::get<1>(p.param);
                           for (char& c : name)
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           return name;
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(R12Upgrade);

}  // namespace
}  // namespace veltor::oracle
