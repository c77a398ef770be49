// Rules that every record of the library keeps. A record with a framing of its own has its own tests.

#include <gtest/gtest.h>

#include <exception>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "records/Units.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/RecordComparison.h"

namespace {

using zvuti::wire::AllRecords;
using zvuti::wire::RecordType;

std::string RandomBytes(const RecordType& type, unsigned seed) {
  std::mt19937 random(seed);
  const auto record = type.make();
  test::FillRandomly(type, record.get(), random);
  CStreamReader stream;
  try {
    type.write(stream, record.get());
  } catch (const std::exception&) {
    return RandomBytes(type, seed + 1000);  // an enumeration got what is no member
  }
  return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
}

TEST(AllRecords, AreReadAndWrittenFieldByField) {
  unsigned seed = 740;
  for (const RecordType* type : AllRecords()) {
    if (!type->own) test::ExpectLiteralResults(*type, ++seed, 3);
  }
}

TEST(AllRecords, HaveNamesOfTheirOwnAndRows) {
  std::set<std::string> names;
  for (const std::string& name : zvuti::RecordNames()) {
    std::vector<zvuti::RecordRow> rows;
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_TRUE(zvuti::ListRecord(name, rows)) << name;
    EXPECT_FALSE(rows.empty()) << name;
    for (const auto& row : rows)
      EXPECT_TRUE(row.type.empty() || zvuti::wire::FindRecord(row.type)) << row.type;
  }
}

TEST(AllRecords, BlocksHaveTheirRowsWhereTheirFieldsAre) {
  for (const RecordType* type : AllRecords()) {
    if (type->blockBytes == 0) continue;
    const std::string bytes = RandomBytes(*type, 1);
    zvuti::RecordDump dump;
    ASSERT_TRUE(zvuti::DumpRecord(type->name, bytes.data(), bytes.size(), dump));
    std::size_t end = 0;
    for (const auto& row : dump.rows) {
      EXPECT_EQ(row.offset, end) << type->name << " " << row.path;
      end += row.size;
    }
    EXPECT_EQ(end, type->blockBytes) << type->name;
  }
}

TEST(AllRecords, WhatADumpShowsFillsTheSameBytesAgain) {
  for (const RecordType* type : AllRecords()) {
    if (type->own) continue;
    for (unsigned seed = 0; seed < 20; ++seed) {
      const std::string bytes = RandomBytes(*type, seed);
      zvuti::RecordDump dump;
      ASSERT_TRUE(zvuti::DumpRecord(type->name, bytes.data(), bytes.size(), dump));
      if (!dump.isWhole || dump.size != bytes.size()) continue;  // a tag is missing
      std::vector<zvuti::NamedValue> values;
      for (const auto& row : dump.rows) {
        if (row.form == "map entry" || row.form.rfind("map", 0) != 0) values.push_back({row.path, row.value});
      }
      std::string again, problem;
      ASSERT_TRUE(zvuti::FillRecord(type->name, values, again, problem)) << type->name << " " << problem;
      EXPECT_EQ(again, bytes) << type->name;
    }
  }
}

}  // namespace
