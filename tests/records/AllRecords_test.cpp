// Rules that every record of the library keeps. A record with a framing of its own has its own tests.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "records/Units.h"
#include "tests/support/Described.h"
#include "tests/support/GoldenRecords.h"
#include "tests/support/LiteralRecords.h"

namespace {

using namespace std::string_literals;
using zvuti::wire::FindRecord;
using zvuti::wire::RecordType;

constexpr int kChangesPerRecord = 150;
constexpr std::size_t kMostReadBack = 10'000;  // bytes; literal reading takes time in their square

// The bytes with up to three of them changed, half of the time cut off somewhere. Most new values are small,
// so that counts stay below a thousand; 0x80 makes some of them large and others negative.
std::string Changed(std::string bytes, std::mt19937& random) {
  const auto below = [&](std::size_t end) { return random() % end; };
  for (auto changes = 1 + below(3); changes > 0; --changes) {
    bytes[below(bytes.size())] = static_cast<char>(below(100) == 0 ? 0x80 : below(4));
  }
  return bytes.substr(0, below(2) == 0 ? bytes.size() : below(bytes.size()));
}

void ExpectLiteral(const RecordType& type, const std::string& bytes) {
  SCOPED_TRACE(std::string(type.name) + " from " + testing::PrintToString(bytes));
  const auto outcomeOf = [&](bool isFilled, const std::function<void(CStreamReader&, void*)>& read) {
    const auto record = isFilled ? test::FilledRecord(type) : type.make();
    CStreamReader stream(bytes);
    test::Outcome outcome = test::OutcomeOf(stream, [&] { read(stream, record.get()); });
    outcome.state = test::StateOf(type, record.get());
    return outcome;
  };
  const auto readLiterally = [&](CStreamReader& in, void* record) { test::ReadLiterally(type, in, record); };
  for (const bool isFilled : {false, true}) {
    const test::Outcome outcome = outcomeOf(isFilled, type.read),
                        literal = outcomeOf(isFilled, readLiterally);
    ASSERT_EQ(outcome.thrown, literal.thrown);
    ASSERT_EQ(outcome.bytes, literal.bytes);
    ASSERT_EQ(outcome.state, literal.state);

    if (outcome.state.size() > kMostReadBack) continue;
    const auto again = type.make();
    CStreamReader written(outcome.state);
    test::ReadLiterally(type, written, again.get());
    ASSERT_EQ(written.Length(), 0);
    ASSERT_EQ(test::StateOf(type, again.get()), outcome.state);
  }
}

const RecordType& Listed(const std::string& name) {
  const RecordType* const type = FindRecord(name);
  if (!type) throw std::out_of_range(name + " is in no unit's list");
  return *type;
}

TEST(AllRecords, AreReadAndWrittenFieldByField) {
  std::mt19937 random(1);
  for (const test::Golden& golden : test::GoldenRecords()) {
    if (golden.kind != "filled") continue;
    const RecordType& type = Listed(golden.record);
    const std::string bytes = golden.Bytes();
    ExpectLiteral(type, bytes + "tail");
    for (std::size_t length = 0; length <= bytes.size(); ++length)
      ExpectLiteral(type, bytes.substr(0, length));
    for (int i = 0; i < kChangesPerRecord; ++i) ExpectLiteral(type, Changed(bytes, random));
    if (HasFatalFailure()) return;
  }
}

TEST(AllRecords, AreEqualIfTheirBytesAreButForReservedOnes) {
  for (const test::Golden& golden : test::GoldenRecords()) {
    if (golden.kind != "filled") continue;
    const RecordType& type = Listed(golden.record);
    const auto record = test::FilledRecord(type);
    for (const zvuti::DumpRow& row : test::Dumped(golden.record, golden.Bytes()).rows) {
      std::string bytes = golden.Bytes();
      bytes[row.offset + row.size - 1] ^= 1;
      CStreamReader stream(bytes);
      const auto other = type.make();
      if (!test::OutcomeOf(stream, [&] { type.read(stream, other.get()); }).thrown.empty()) continue;
      const bool isSame = test::StateOf(type, other.get()) == test::StateOf(type, record.get());
      EXPECT_EQ(type.areEqual(record.get(), other.get()),
                isSame || row.type.form == zvuti::RowForm::kReserved)
          << golden.record << " " << row.path;
    }
  }
}

// The rows that are whole lie side by side. Those of bytes that are whole give the same bytes again.
void ExpectShown(const std::string& record, const std::string& bytes) {
  SCOPED_TRACE(record + " from " + testing::PrintToString(bytes));
  const zvuti::RecordDump dump = test::Dumped(record, bytes);
  std::size_t end = 0;
  for (const auto& row : dump.rows) {
    ASSERT_EQ(row.offset, end) << row.path;
    end += row.size;
  }
  ASSERT_EQ(dump.size, end);
  ASSERT_EQ(dump.isWhole, dump.problem.empty());
  if (dump.isWhole) {
    ASSERT_EQ(test::Filled(record, test::ValuesOf(dump)), bytes.substr(0, end));
  }
}

// Bytes that no writer makes, but that can be shown and filled.
std::vector<test::Golden> StrangeSamples() {
  const std::string none(4, '\0'), one = "\1\0\0\0"s, two = "\2\0\0\0"s, minusOne = "\xFF\xFF\xFF\xFF";
  const std::string bundle(22, '\0'), blocks = one + std::string(12, '\7') + one + std::string(12, '\x8');
  const std::string sameGroups = one + one + two + one + none + one + one + two;
  const auto sample = [](const char* record, const std::string& bytes) {
    return test::Golden{record, "", {{bytes, "", ""}}};
  };
  return {
      sample("PlayerStatus", "\1\2\3\4\5\6\7\x8"),                                // an unknown tag
      sample("CUtiCounterTable", minusOne),                                       // a count below 0
      sample("CUtiCounterTable", two + two + one + two + two),                    // a key twice
      sample("CUtiCounterTable", two + one + one + minusOne + one),               // falling keys
      sample("AmountMap", two + blocks),                                          // two blocks of one key
      sample("CUtiBundleTable", minusOne + minusOne),                             // counts below 0
      sample("CUtiBundleTable", "\3\0\0\0"s + none + sameGroups),                 // groups of one key
      sample("CUtiBundleTable", none + two + minusOne + bundle + none + bundle),  // falling keys
  };
}

TEST(AllRecords, AreShownAsFarAsTheirBytesGoAndFilledAgain) {
  std::vector<test::Golden> samples = StrangeSamples();
  std::ranges::copy(test::GoldenRecords(), std::back_inserter(samples));
  std::mt19937 random(1);
  for (const test::Golden& sample : samples) {
    const std::string bytes = sample.Bytes();
    ExpectShown(sample.record, bytes + "tail");
    EXPECT_TRUE(test::Dumped(sample.record, bytes).isWhole) << sample.record;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      ExpectShown(sample.record, bytes.substr(0, length));
      ASSERT_FALSE(test::Dumped(sample.record, bytes.substr(0, length)).isWhole) << sample.record << length;
    }
    for (int i = 0; i < kChangesPerRecord; ++i) ExpectShown(sample.record, Changed(bytes, random) + "tail");
    if (HasFatalFailure()) return;
  }
}

}  // namespace
