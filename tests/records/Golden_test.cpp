// Every record against bytes that were made without the library; see make_golden.py.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "records/Units.h"
#include "tests/support/GoldenRecords.h"
#include "tests/support/WireBytes.h"

namespace {

using test::Golden;

// A record and its name, for messages.
class Goldens : public testing::TestWithParam<const Golden*> {};

TEST_P(Goldens, IsShownRowByRowAndWrittenFromItsValues) {
  const Golden& golden = *GetParam();
  const std::string bytes = golden.Bytes();
  zvuti::RecordDump dump;
  ASSERT_TRUE(zvuti::DumpRecord(golden.record, bytes.data(), bytes.size(), dump));
  EXPECT_TRUE(dump.isWhole) << dump.problem;
  ASSERT_EQ(dump.rows.size(), golden.rows.size());
  std::vector<zvuti::NamedValue> values;
  for (std::size_t i = 0; i < dump.rows.size(); ++i) {
    const zvuti::DumpRow& row = dump.rows[i];
    EXPECT_EQ(row.path, golden.rows[i].path);
    EXPECT_EQ(row.value, golden.rows[i].value) << row.path;
    EXPECT_EQ(bytes.substr(row.offset, row.size), golden.rows[i].bytes) << row.path;
    // The size of a map follows from its entries, and defaults are there without being given.
    const bool isMap = row.form == "map" || row.form.rfind("map of", 0) == 0;
    if (golden.kind == "filled" && !isMap) values.push_back({row.path, row.value});
  }
  std::string filled, problem;
  ASSERT_TRUE(zvuti::FillRecord(golden.record, values, filled, problem)) << problem;
  EXPECT_EQ(filled, bytes);
}

TEST_P(Goldens, IsReadWholeAndWrittenBackAlike) {
  const Golden& golden = *GetParam();
  const zvuti::wire::RecordType* type = zvuti::wire::FindRecord(golden.record);
  ASSERT_NE(type, nullptr);
  const std::string bytes = golden.Bytes();
  const auto record = type->make();
  CStreamReader stream(bytes + "behind"), back;
  type->read(stream, record.get());
  EXPECT_EQ(stream.Length(), 6);
  type->write(back, record.get());
  EXPECT_EQ(test::Bytes(back), bytes);
}

std::vector<const Golden*> AllGolden() {
  std::vector<const Golden*> all;
  for (const Golden& golden : test::GoldenRecords()) all.push_back(&golden);
  return all;
}

INSTANTIATE_TEST_SUITE_P(All, Goldens, testing::ValuesIn(AllGolden()),
                         [](const auto& row) { return row.param->record + "_" + row.param->kind; });

TEST(Goldens, CoverEveryRecord) {
  std::set<std::string> covered = {"CUtiBundleTable"};  // has a framing, and a test, of its own
  for (const Golden& golden : test::GoldenRecords()) covered.insert(golden.record);
  const std::vector<std::string> names = zvuti::RecordNames();
  EXPECT_EQ(covered, std::set<std::string>(names.begin(), names.end()));
}

}  // namespace
