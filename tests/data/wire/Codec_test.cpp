// What the engine does beside giving the bytes of each record, which Golden_test and AllRecords_test check.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Small.h>

#include "data/wire/Sinks.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;
using test::Bytes;

TEST(Codec, ASecondByteCodeAfterTheEndTakesTheFirstOnesValue) {
  CStreamReader stream("\x02\0\x05\x06\x07"s + std::string(16, '\0') + "\x05\x07");
  std::vector<CodedAmount> records;
  stream >> records;
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].Code2, 6u);
  EXPECT_EQ(records[0].Code1, 7u);
  EXPECT_EQ(records[1].Code2, 7u);
  EXPECT_EQ(records[1].Code1, 7u);
  CStreamReader ended("\x02\0\x05\x06\x07"s + std::string(16, '\0') + "\x05");
  ended >> records;
  EXPECT_EQ(records.at(3).Code2, 0u);  // each record begins anew
}

TEST(Codec, AnUnknownMemberEndsASequence) {
  CStreamReader in("\x03\0\x09\0\xAD\x31\xF1\x2F\x07\x01\0****rest"s), out;
  std::vector<KindEntry> entries(1);
  const test::Outcome read = test::OutcomeOf(in, [&] { in >> entries; });
  EXPECT_EQ(read.thrown, "unknown enumeration member.");
  EXPECT_EQ(read.bytes, "rest");  // after the tag
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[1].Flag, 7);

  std::string many("\xE8\x03", 2);  // 1000, more than one piece
  for (int i = 0; i < 600; ++i) many += "\1\0\xEA\x4D\x2C\x72\7"s;
  CStreamReader longer(many + "\1\0****rest"s);
  EXPECT_THROW(longer >> entries, std::exception);
  EXPECT_EQ(entries.size(), 602u);
  EXPECT_EQ(Bytes(longer), "rest");
  CStreamReader further("\1\0\1\0\xEA\x4D\x2C\x72\7"s);
  further >> entries;
  EXPECT_EQ(entries.size(), 603u);

  entries[1].Kind = static_cast<BinaryKind>(2);
  entries.resize(2);
  const test::Outcome written = test::OutcomeOf(out, [&] { out << entries; });
  EXPECT_EQ(written.thrown, "unknown enumeration member.");
  EXPECT_EQ(written.bytes, "\x02\0\0\0\xEA\x4D\x2C\x72\0\x09\0"s);  // before the tag
}

TEST(Codec, WhatDoesNotFitIntoACountIsCut) {
  const std::string text(65'538, 'x');
  EXPECT_EQ(test::Written(TextPair{text, "y"}), "\2\0xx\1\0y"s);
  EXPECT_EQ(test::Written(std::vector<std::string>{text, "y"}), "\2\0\2\0xx\1\0y"s);
  EXPECT_EQ(test::Written(std::vector<std::string>(65'537)), "\1\0\0\0"s);
  EXPECT_EQ(test::Written(std::vector<SingleByte>(65'538, {7})), "\2\0\7\7"s);
}

TEST(Codec, OnlyFieldsThatFindNoMemoryAreLost) {
  const TextPair texts{"long text", "x"};
  const std::string before(1020, 'b'), bytes = test::Written(texts);
  CStreamReader refusedOnce(before), full(before);
  {
    const test::HeapFaults heap(1);
    refusedOnce << texts;
  }
  EXPECT_EQ(Bytes(refusedOnce), before + bytes);
  EXPECT_EQ(refusedOnce.Capacity(), 2048);
  {
    const test::HeapFaults heap(1, true);
    full << texts;
  }
  EXPECT_EQ(Bytes(full), before + "\x09\0\x01\0"s);
  for (const std::uint64_t size :
       {std::uint64_t{0x8000'0000}, std::uint64_t{0x1'0000'0008}})  // more than a stream can hold
    EXPECT_EQ(zvuti::wire::Room(full, size).At(), nullptr);
}

TEST(Codec, HostileCountsCostNothing) {
  const std::string count = "\xFF\xFF\xFF\x7F";
  CStreamReader plain(count + "\x01\0\0\0"s), blocks(count + "abc");
  std::map<int, int> map;
  AmountMap amounts;
  plain >> map;
  blocks >> amounts;
  EXPECT_EQ(map, (std::map<int, int>{{0, 0}, {1, 0}}));
  EXPECT_EQ(amounts.size(), 1u);
  EXPECT_EQ(amounts[0].Amount, 0);
  EXPECT_EQ(Bytes(blocks), "abc");
}

}  // namespace
