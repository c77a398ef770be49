// What the engine does beside giving the bytes of each record, which Golden_test and AllRecords_test check.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Small.h>

#include "tests/support/HeapFaults.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;
using test::Bytes;

TEST(Codec, ASecondByteCodeBehindTheEndTakesTheFirstOnesValue) {
  CStreamReader stream("\x05\x07"s), sequence("\x02\0\x05\x06\x07"s + std::string(16, '\0') + "\x05");
  CodedAmount record;
  stream >> record;
  EXPECT_EQ(record.Code2, 7u);
  EXPECT_EQ(record.Code1, 7u);
  std::vector<CodedAmount> records;
  sequence >> records;
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].Code1, 7u);
  EXPECT_EQ(records[1].Code2, 0u);  // each record begins anew
}

TEST(Codec, AnUnknownMemberEndsASequenceBehindItsTag) {
  CStreamReader stream("\x03\0\x09\0\xAD\x31\xF1\x2F\x07\x01\0****rest"s);
  std::vector<KindEntry> entries(1);
  const test::Outcome outcome = test::OutcomeOf(stream, [&] { stream >> entries; });
  EXPECT_EQ(outcome.thrown, "unknown enumeration member.");
  EXPECT_EQ(outcome.bytes, "rest");
  EXPECT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[1].Flag, 7);
}

TEST(Codec, AnUnknownMemberEndsTheWritingInFrontOfIt) {
  std::vector<KindEntry> entries(2);
  entries[1].Kind = static_cast<BinaryKind>(2);
  CStreamReader stream;
  EXPECT_THROW(stream << entries, std::exception);
  EXPECT_EQ(Bytes(stream), "\x02\0\0\0\xEA\x4D\x2C\x72\0\0\0"s);
}

TEST(Codec, WhatDoesNotFitIntoACountIsCut) {
  const std::string text(65'538, 'x');
  EXPECT_EQ(test::Written(TextPair{text, "y"}), "\2\0xx\1\0y"s);
  EXPECT_EQ(test::Written(std::vector<std::string>{text, "y"}), "\2\0\2\0xx\1\0y"s);
  EXPECT_EQ(test::Written(std::vector<std::string>(65'537)), "\1\0\0\0"s);
  EXPECT_EQ(test::Written(std::vector<SingleByte>(65'538, {7})), "\2\0\7\7"s);
}

TEST(Codec, WritingTakesOneBlockAndReadingOnePerContainer) {
  const std::vector<CodedAmount> records(65'535);
  std::map<int, int> map;
  for (int i = 0; i < 1000; ++i) map[i] = i;
  CStreamReader stream, mapStream;
  {
    const test::HeapFaults counter(0);
    stream << records;
    mapStream << map;
    EXPECT_EQ(counter.Tried(), 2);
  }
  EXPECT_EQ(Bytes(stream), "\xFF\xFF" + std::string(std::size_t{19} * 65'535, '\0'));
  std::vector<CodedAmount> again;
  const test::HeapFaults counter(0);
  stream >> again;
  EXPECT_EQ(counter.Tried(), 1);
  EXPECT_EQ(again.size(), records.size());
  EXPECT_EQ(stream.Length(), 0);
}

TEST(Codec, HostileCountsCostNothing) {
  const std::string count = "\xFF\xFF\xFF\x7F";
  CStreamReader plain(count + "\x01\0\0\0"s), blocks(count + "abc");
  std::map<int, int> map;
  AmountMap amounts;
  {
    const test::HeapFaults counter(0);
    plain >> map;
    blocks >> amounts;
    EXPECT_EQ(counter.Tried(), 3);  // a node for each entry
  }
  EXPECT_EQ(map, (std::map<int, int>{{0, 0}, {1, 0}}));
  EXPECT_EQ(amounts.size(), 1u);
  EXPECT_EQ(amounts[0].Amount, 0);
  EXPECT_EQ(Bytes(blocks), "abc");
}

}  // namespace
