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

using namespace std::string_literals;
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
    if (type->framing) continue;
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

// What the dump of the bytes shows, put into a record again. What is not whole has no promise but that it
// comes to an end.
bool IsTakenBack(const RecordType& type, const std::string& bytes) {
  zvuti::RecordDump dump;
  zvuti::DumpRecord(type.name, bytes.data(), bytes.size(), dump);
  std::vector<zvuti::NamedValue> values;
  for (const auto& row : dump.rows) values.push_back({row.path, row.value});
  std::string again, problem;
  const bool isFilled = zvuti::FillRecord(type.name, values, again, problem);
  if (dump.isWhole) {
    EXPECT_EQ(again, bytes.substr(0, dump.size)) << type.name << " " << problem;
  } else {
    EXPECT_EQ(again.empty(), !isFilled) << type.name;
  }
  return dump.isWhole;
}

std::string RandomBytes(const RecordType& type, std::mt19937& random) {
  if (type.framing) {
    return "\2\0\0\0\2\0\0\0\1\0\0\0\2\0\0\0\7\0\0\0\x8\0\0\0\2\0\0\0\0\0\0\0\3\0\0\0"s +
           std::string(20, '\4') + "\1\0"s + std::string(16, '\5') + std::string(26, '\0');
  }
  const auto record = type.make();
  test::FillRandomly(type, record.get(), random);
  CStreamReader stream;
  return test::OutcomeOf(stream, [&] { type.write(stream, record.get()); }).bytes;
}

// Any bytes that decode whole: those that a writer makes and those that none would, with unknown tags,
// keys that come twice or do not rise, and counts below 0.
TEST(AllRecords, WhatADumpShowsFillsTheSameBytesAgain) {
  std::mt19937 random(1);
  for (const RecordType* type : AllRecords()) {
    int whole = 0;
    for (int round = 0; round < 20 && !HasFailure(); ++round) {
      const std::string bytes = RandomBytes(*type, random);
      whole += IsTakenBack(*type, bytes);
      for (std::size_t length = 0; length < bytes.size(); length += bytes.size() / 20 + 1)
        IsTakenBack(*type, bytes.substr(0, length));
      for (int i = 0; i < 30; ++i) {
        std::string changed = bytes;
        for (auto n = random() % 3 + 1; n > 0 && !changed.empty(); --n)
          changed[random() % changed.size()] = static_cast<char>(random() % 2 ? random() % 4 : random());
        whole += IsTakenBack(*type, changed + "behind");
      }
      std::string noise(random() % 200, '\0');
      for (char& byte : noise) byte = static_cast<char>(random() % 3 ? random() % 3 : random());
      whole += IsTakenBack(*type, noise);
    }
    EXPECT_GT(whole, 100) << type->name;
  }
}

}  // namespace
