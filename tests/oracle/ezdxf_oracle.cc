// ezdxf as an independent reader of what veltor writes: generated drawings and real files
// with Object Data added must pass ezdxf's audit, hold exactly the Object Data we wrote, and
// (real files) keep every other object unchanged. The checks themselves are in
// check_written.py; these tests write the drawings and the expectations it reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>
#include <tuple>

#include "drawing/model/document.h"
#include "drawing/model/entity.h"
#include "drawing/objectdata/od_store.h"
#include "od_expectations.h"
#include "oracle_tools.h"

namespace veltor::oracle {
namespace {

// Runs the checker; fails the test with its output unless every check passed.
void ExpectCheckerPasses(const Expectations& expected, const ScratchDir& dir) {
  std::string json = dir.File("expectations.json");
  ASSERT_TRUE(WriteFile(json, ToJson(expected))) << json;
  CommandResult r = Run("/usr/bin/python3 " + Quote(CheckerScript()) + " " + Quote(json));
  EXPECT_EQ(r.exit_code, 0) << r.output;
  if (r.exit_code == 0) std::printf("%s", r.output.c_str());
}

std::string TestName(std::string text) {
  for (char& c : text)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return text;
}

// --- generated drawings ---

class GeneratedDrawingEzdxf : public ::testing::TestWithParam<std::tuple<size_t, std::string>> {};

TEST_P(GeneratedDrawingEzdxf, AuditIsCleanAndObjectDataReadsBack) {
  if (!HaveEzdxf()) GTEST_SKIP() << "/usr/bin/python3 cannot import ezdxf";
  auto [entities, version] = GetParam();
  ScratchDir dir;
  ASSERT_FALSE(dir.path().empty());
  std::string path = dir.File("generated.dxf");
  ASSERT_EQ(Generate(entities, 11, version, path), "");

  auto doc = model::Document::Open(path);
  ASSERT_TRUE(doc.ok()) << doc.message();
  objectdata::ObjectDataStore store(**doc);
  Expectations expected;
  expected.mode = "generated";
  expected.ours = path;
  expected.version = (*doc)->version();
  ASSERT_EQ(expected.version, version);
  for (const std::string& name : store.TableNames()) {
    auto def = store.GetTable(name);
    ASSERT_TRUE(def.ok()) << def.message();
    expected.tables.push_back(*def);
  }
  ASSERT_GE(expected.tables.size(), 2u) << "veltor-gen should write several tables";
  expected.record_counts = store.RecordCounts();
  // Every record of a sample spread over the drawing, value by value.
  auto all = model::ModelSpaceEntities(**doc);
  for (size_t i = 0; i < all.size(); i += std::max<size_t>(1, all.size() / 300)) {
    auto records = store.Records(all[i]);
    if (!records.empty()) expected.entities.push_back({(*doc)->store().at(all[i]).handle, records});
  }
  ASSERT_GE(expected.entities.size(), 50u);
  ExpectCheckerPasses(expected, dir);
}

INSTANTIATE_TEST_SUITE_P(
    SizesAndVersions, GeneratedDrawingEzdxf,
    ::testing::Combine(::testing::Values(size_t{1000}, size_t{20000}),
                       ::testing::Values(std::string("AC1032"), std::string("AC1015"))),
    [](const auto& p) {
      return std::to_string(std::get<0>(p.param)) + "_" + std::get<1>(p.param);
    });

// --- text as typed ---

// Text a user may type or import: ezdxf must read it back exactly, by the reading rule of
// docs/object-data-format.md (from R2007 the text as it stands, only line breaks joined;
// before R2007 \U+XXXX escapes resolved).
class TypedTextEzdxf : public ::testing::TestWithParam<std::string> {};

TEST_P(TypedTextEzdxf, ReadsBackWhatWasTyped) {
  if (!HaveEzdxf()) GTEST_SKIP() << "/usr/bin/python3 cannot import ezdxf";
  ScratchDir dir;
  ASSERT_FALSE(dir.path().empty());
  auto doc = model::Document::NewBlank(GetParam());
  Expectations expected;
  Status added = AddTypedTextObjectData(*doc, expected);
  ASSERT_TRUE(added.ok()) << added.message();
  expected.ours = dir.File("typed.dxf");
  Status saved = doc->Save(expected.ours);
  ASSERT_TRUE(saved.ok()) << saved.message();
  ExpectCheckerPasses(expected, dir);
}

INSTANTIATE_TEST_SUITE_P(Versions, TypedTextEzdxf,
                         ::testing::Values(std::string("AC1032"), std::string("AC1021"),
                                           std::string("AC1015")));

// --- real files with Object Data added ---

// The corpus suites below have no cases without the corpus; this says so once.
TEST(OracleCorpus, IsPresentWithItsManifest) {
  if (!std::filesystem::is_directory(CorpusDir()))
    GTEST_SKIP() << "no drawing corpus at " << CorpusDir() << "; set VELTOR_CORPUS to the folder that holds dxf/";
  EXPECT_GE(ReadManifest().size(), 70u);
}

std::vector<ManifestRow> FilesThatCanHoldObjectData() {
  std::vector<ManifestRow> rows = ReadManifest();
  rows.erase(std::remove_if(rows.begin(), rows.end(),
                            [](const ManifestRow& r) {
                              return r.version.rfind("AC", 0) != 0 || r.version < "AC1015";
                            }),
             rows.end());
  return rows;
}

class CorpusEzdxf : public ::testing::TestWithParam<ManifestRow> {};

TEST_P(CorpusEzdxf, SavedWithObjectDataPassesAuditAndKeepsEverythingElse) {
  if (!HaveEzdxf()) GTEST_SKIP() << "/usr/bin/python3 cannot import ezdxf";
  const ManifestRow& row = GetParam();
  std::string original = CorpusDir() + "/" + row.file;
  auto doc = model::Document::Open(original);
  if (!doc.ok()) GTEST_SKIP() << "veltor does not load it: " << doc.message();

  Expectations expected;
  expected.mode = "corpus";
  expected.original = original;
  expected.version = (*doc)->version();
  Status added = AddSampleObjectData(**doc, expected.tables, expected.entities);
  ASSERT_TRUE(added.ok()) << added.message();
  if (!model::ModelSpaceEntities(**doc).empty()) {
    ASSERT_FALSE(expected.entities.empty());
    EXPECT_EQ(expected.entities[0].records.size(), 3u);
  }

  ScratchDir dir;
  ASSERT_FALSE(dir.path().empty());
  expected.ours = dir.File(row.file);
  Status saved = (*doc)->Save(expected.ours);
  ASSERT_TRUE(saved.ok()) << saved.message();
  ExpectCheckerPasses(expected, dir);
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusEzdxf, ::testing::ValuesIn(FilesThatCanHoldObjectData()),
                         [](const auto& p) { return TestName(p.param.file); });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusEzdxf);

}  // namespace
}  // namespace veltor::oracle
