// Every record against bytes that were made without the library; see make_golden.py.
#include <gmock/gmock.h>

#include <set>
#include <string>

#include "records/Units.h"
#include "tests/support/Described.h"
#include "tests/support/GoldenRecords.h"
#include "tests/support/LiteralRecords.h"

namespace {

using test::Golden;

class Goldens : public testing::TestWithParam<Golden> {};

TEST_P(Goldens, IsShownRowByRowAndWrittenFromItsValues) {
  const Golden& golden = GetParam();
  const std::string bytes = golden.Bytes();
  const zvuti::RecordDump dump = test::Dumped(golden.record, bytes);
  EXPECT_TRUE(dump.isWhole) << dump.problem;
  ASSERT_EQ(dump.rows.size(), golden.rows.size());
  test::Values values;
  for (std::size_t i = 0; i < dump.rows.size(); ++i) {
    const zvuti::DumpRow& row = dump.rows[i];
    EXPECT_EQ(row.path, golden.rows[i].path);
    EXPECT_EQ(row.value, golden.rows[i].value) << row.path;
    EXPECT_EQ(bytes.substr(row.offset, row.size), golden.rows[i].bytes) << row.path;
    // The size of a map follows from its entries, and defaults are there without being given.
    const bool isMap = row.type.form == zvuti::RowForm::kMap;
    if (golden.kind == "filled" && !isMap) values.push_back({row.path, row.value});
  }
  EXPECT_EQ(test::Filled(golden.record, values), bytes);
}

TEST_P(Goldens, IsWhatItsRecordWrites) {
  const zvuti::wire::RecordType* type = zvuti::wire::FindRecord(GetParam().record);
  ASSERT_NE(type, nullptr);
  const auto record = GetParam().kind == "filled" ? test::FilledRecord(*type) : type->make();
  EXPECT_EQ(test::StateOf(*type, record.get()), GetParam().Bytes());
}

INSTANTIATE_TEST_SUITE_P(All, Goldens, testing::ValuesIn(test::GoldenRecords()),
                         [](const auto& row) { return row.param.record + "_" + row.param.kind; });

TEST(Goldens, CoverEveryRecord) {
  std::set<std::string> covered = {"CUtiBundleTable"};  // has a framing, and a test, of its own
  for (const Golden& golden : test::GoldenRecords()) covered.insert(golden.record);
  EXPECT_THAT(zvuti::RecordNames(), testing::UnorderedElementsAreArray(covered));
}

}  // namespace
