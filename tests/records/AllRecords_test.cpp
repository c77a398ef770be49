// Rules that every record of the library keeps. A record with a framing of its own has its own tests.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "records/Units.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/WireBytes.h"

namespace test {

// For the messages of tests.
static std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  return out << "thrown '" << outcome.thrown << "', capacity " << outcome.capacity << ", "
             << testing::PrintToString(outcome.bytes) << ", " << outcome.state;
}

}  // namespace test

namespace {

using zvuti::wire::AllRecords;
using zvuti::wire::RecordType;

// Holds the engine against literal reading and writing: on random records, on every truncation of their
// bytes, on bytes changed at random, with default and with filled targets, on a full heap.
class Comparison {
 public:
  Comparison(const RecordType& type, unsigned seed) : type_(type), random_(seed) {}

  void Round() {
    const auto record = Random(Next());
    const std::string before(Next() % 3 == 0 ? Next() % 2100 : 1024 * (1 + Next() % 3) - Next() % 40, 'b');
    Write(record.get(), before);
    CStreamReader stream;
    test::OutcomeOf(stream, [&] { test::WriteLiterally(type_, stream, record.get()); });
    const std::string bytes = test::Bytes(stream);
    const std::size_t step = bytes.size() / 150 + 1;
    for (std::size_t length = 0; length <= bytes.size(); length += step) Read(bytes.substr(0, length));
    Read(bytes + "tail");
    for (int i = 0; i < 50 && !bytes.empty(); ++i) {
      std::string changed = bytes;
      for (unsigned n = Next() % 6 + 1; n > 0; --n) {
        const unsigned value = Next() % 500 == 0 ? 0x80u : Next() % 4;
        changed[Next() % (n % 2 == 0 ? changed.size() : std::min<std::size_t>(changed.size(), 64))] =
            static_cast<char>(value);
      }
      Read(changed.substr(0, Next() % 2 == 0 ? changed.size() : Next() % changed.size()));
    }
  }

 private:
  RecordType::Object Random(unsigned seed) const {
    auto record = type_.make();
    std::mt19937 random(seed);
    test::FillRandomly(type_, record.get(), random);
    return record;
  }

  void Write(void* record, const std::string& before) {
    for (const int refused : {0, 1, 2}) {
      CStreamReader engine(before), literal(before);
      const auto write = [&](CStreamReader& stream, bool isLiteral) {
        return test::OutcomeOf(stream, [&] {
          // One refused block costs the engine its single reservation, not a field (unless the record
          // is one field); a full heap costs both the fields that find no room.
          const bool isSpared = isLiteral && refused == 1 && type_.blockBytes == 0;
          const test::HeapFaults faults(isSpared ? 0 : std::min(refused, 1), refused == 2);
          isLiteral ? test::WriteLiterally(type_, stream, record) : type_.write(stream, record);
        });
      };
      const test::Outcome seen = write(engine, false);
      ASSERT_EQ(seen, write(literal, true)) << type_.name << ", refused " << refused;
    }
  }

  // Into a default record and into a filled one in turn.
  void Read(const std::string& bytes) {
    isFilled_ = !isFilled_;
    const unsigned seed = Next();
    const auto read = [&](bool isLiteral) {
      const auto record = isFilled_ ? Random(seed) : type_.make();
      CStreamReader stream(bytes);
      test::Outcome outcome = test::OutcomeOf(stream, [&] {
        isLiteral ? test::ReadLiterally(type_, stream, record.get()) : type_.read(stream, record.get());
      });
      outcome.state = test::StateOf(type_, record.get());
      return outcome;
    };
    const test::Outcome seen = read(false);
    // A count read from the wrong place gives tens of thousands of elements; a few of these will do.
    if (seen.state.size() > 50'000 && ++huge_ > 2) return;
    ASSERT_EQ(seen, read(true)) << type_.name << " from " << testing::PrintToString(bytes);
  }

  unsigned Next() { return static_cast<unsigned>(random_()); }

  const RecordType& type_;
  std::mt19937 random_;
  bool isFilled_ = false;
  int huge_ = 0;
};

TEST(AllRecords, AreReadAndWrittenFieldByField) {
  unsigned seed = 740;
  for (const RecordType* type : AllRecords()) {
    if (type->own) continue;
    Comparison comparison(*type, ++seed);
    for (int round = 0; round < 3 && !HasFatalFailure(); ++round) comparison.Round();
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

TEST(AllRecords, WhatADumpShowsFillsTheSameBytesAgain) {
  std::mt19937 random(1);
  for (const RecordType* type : AllRecords()) {
    for (int round = 0; !type->own && round < 20; ++round) {
      const auto record = type->make();
      test::FillRandomly(*type, record.get(), random);
      CStreamReader stream;
      const test::Outcome written = test::OutcomeOf(stream, [&] { type->write(stream, record.get()); });
      const std::string& bytes = written.bytes;
      zvuti::RecordDump dump;
      ASSERT_TRUE(zvuti::DumpRecord(type->name, bytes.data(), bytes.size(), dump));
      if (!written.thrown.empty() || !dump.isWhole || dump.size != bytes.size())
        continue;  // a tag is missing
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
