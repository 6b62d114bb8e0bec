// GDAL's DXF driver as an independent counter of model space: ogrinfo must read as many
// model space entities as veltor reports, on generated drawings and on the real files whose
// entity types OGR translates one to one, and again after we added Object Data to them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "od_expectations.h"
#include "oracle_tools.h"

namespace veltor::oracle {
namespace {

void ExpectSameCount(const std::string& path) {
  std::string error;
  auto ours = VeltorModelSpaceCount(path, error);
  ASSERT_TRUE(ours.has_value()) << error;
  auto ogr = OgrEntityCount(path, error);
  ASSERT_TRUE(ogr.has_value()) << error;
  EXPECT_EQ(*ogr, *ours) << path << ": ogrinfo and veltor --info disagree on model space";
}

class GeneratedDrawingOgr : public ::testing::TestWithParam<size_t> {};

TEST_P(GeneratedDrawingOgr, ReadsEveryModelSpaceEntity) {
  if (!HaveOgrinfo()) GTEST_SKIP() << "ogrinfo is not installed";
  ScratchDir dir;
  ASSERT_FALSE(dir.path().empty());
  std::string path = dir.File("generated.dxf");
  ASSERT_EQ(Generate(GetParam(), 5, GetParam() > 5000 ? "AC1015" : "AC1032", path), "");
  std::string error;
  auto count = VeltorModelSpaceCount(path, error);
  ASSERT_TRUE(count.has_value()) << error;
  EXPECT_EQ(*count, static_cast<long>(GetParam()));
  ExpectSameCount(path);
}

INSTANTIATE_TEST_SUITE_P(Sizes, GeneratedDrawingOgr, ::testing::Values(size_t{1000}, size_t{20000}));

// ASCII files (GDAL 3.6 reads no binary DXF) where the MANIFEST's OGR feature count equals
// its model space count, so OGR translates every entity present one to one.
std::vector<ManifestRow> FilesOgrCountsFully() {
  std::vector<ManifestRow> rows = ReadManifest();
  rows.erase(std::remove_if(rows.begin(), rows.end(),
                            [](const ManifestRow& r) {
                              return r.binary || r.ogr_features < 0 ||
                                     r.ogr_features != r.modelspace_entities;
                            }),
             rows.end());
  return rows;
}

class CorpusOgr : public ::testing::TestWithParam<ManifestRow> {};

TEST_P(CorpusOgr, ReadsTheSameModelSpaceAsVeltorBeforeAndAfterObjectData) {
  if (!HaveOgrinfo()) GTEST_SKIP() << "ogrinfo is not installed";
  const ManifestRow& row = GetParam();
  std::string original = CorpusDir() + "/" + row.file;
  ExpectSameCount(original);

  auto doc = model::Document::Open(original);
  ASSERT_TRUE(doc.ok()) << doc.message();
  if (!(*doc)->AtLeast("AC1015")) return;  // no Object Data before R2000
  std::vector<od::TableDefinition> tables;
  std::vector<EntityRecords> written;
  Status added = AddSampleObjectData(**doc, tables, written);
  ASSERT_TRUE(added.ok()) << added.message();
  ScratchDir dir;
  ASSERT_FALSE(dir.path().empty());
  std::string ours = dir.File(row.file);
  Status saved = (*doc)->Save(ours);
  ASSERT_TRUE(saved.ok()) << saved.message();
  ExpectSameCount(ours);
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusOgr, ::testing::ValuesIn(FilesOgrCountsFully()),
                         [](const auto& p) {
                           std::string name = p.param.file;
                           for (char& c : name)
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           return name;
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusOgr);

}  // namespace
}  // namespace veltor::oracle
