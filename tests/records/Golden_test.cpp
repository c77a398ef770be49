// Every record against bytes that were made without the library; see make_golden.py.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "records/Units.h"
#include "tests/support/GoldenRecords.h"

namespace {

using test::Golden;
using zvuti::wire::RecordType;

std::string Written(const RecordType& type, const void* record) {
  CStreamReader stream;
  type.write(stream, record);
  return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
}

// A record and its name, for messages.
class Goldens : public testing::TestWithParam<const Golden*> {};

TEST_P(Goldens, IsWrittenFromItsValues) {
  const Golden& golden = *GetParam();
  const std::string wanted = golden.Bytes();
  zvuti::RecordDump dump;
  ASSERT_TRUE(zvuti::DumpRecord(golden.record, wanted.data(), wanted.size(), dump));
  ASSERT_EQ(dump.rows.size(), golden.rows.size());
  std::vector<zvuti::NamedValue> values;
  for (std::size_t i = 0; i < golden.rows.size(); ++i) {
    // The size of a map follows from its entries, and defaults are there without being given.
    const bool isMap = dump.rows[i].form == "map" || dump.rows[i].form.rfind("map of", 0) == 0;
    if (golden.kind == "filled" && !isMap) values.push_back({golden.rows[i].path, golden.rows[i].value});
  }
  std::string bytes;
  std::string problem;
  ASSERT_TRUE(zvuti::FillRecord(golden.record, values, bytes, problem)) << problem;
  EXPECT_EQ(bytes, wanted);
}

TEST_P(Goldens, IsShownRowByRow) {
  const Golden& golden = *GetParam();
  const std::string bytes = golden.Bytes();
  zvuti::RecordDump dump;
  ASSERT_TRUE(zvuti::DumpRecord(golden.record, bytes.data(), bytes.size(), dump));
  EXPECT_TRUE(dump.isWhole) << dump.problem;
  ASSERT_EQ(dump.rows.size(), golden.rows.size());
  for (std::size_t i = 0; i < dump.rows.size(); ++i) {
    EXPECT_EQ(dump.rows[i].path, golden.rows[i].path);
    EXPECT_EQ(dump.rows[i].value, golden.rows[i].value) << golden.rows[i].path;
    EXPECT_EQ(bytes.substr(dump.rows[i].offset, dump.rows[i].size), golden.rows[i].bytes)
        << golden.rows[i].path;
  }
}

TEST_P(Goldens, IsReadWholeAndWrittenBackAlike) {
  const Golden& golden = *GetParam();
  const RecordType* type = zvuti::wire::FindRecord(golden.record);
  ASSERT_NE(type, nullptr);
  const std::string bytes = golden.Bytes();
  const RecordType::Object record = type->make();
  CStreamReader stream(bytes + "behind");
  type->read(stream, record.get());
  EXPECT_EQ(stream.Length(), 6);
  EXPECT_EQ(Written(*type, record.get()), bytes);
}

std::vector<const Golden*> AllGolden() {
  std::vector<const Golden*> all;
  for (const Golden& golden : test::GoldenRecords()) all.push_back(&golden);
  return all;
}

INSTANTIATE_TEST_SUITE_P(All, Goldens, testing::ValuesIn(AllGolden()),
                         [](const auto& row) { return row.param->record + "_" + row.param->kind; });

TEST(Goldens, CoverEveryRecord) {
  for (const std::string& name : zvuti::RecordNames()) {
    if (name == "CUtiBundleTable") continue;  // has a framing, and a test, of its own
    EXPECT_TRUE(std::any_of(test::GoldenRecords().begin(), test::GoldenRecords().end(), [&](const Golden& g) {
      return g.record == name;
    })) << name;
  }
}

}  // namespace
