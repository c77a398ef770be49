#include <ZvUtiLib/records/WireKinds.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/support/LiteralRecords.h"
#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;

template <class Kind>
void ExpectTag(Kind member, const std::string& tag) {
  EXPECT_EQ(test::Written(member), tag);
  CStreamReader stream(tag);
  auto kind = static_cast<Kind>(99);
  stream >> kind;
  EXPECT_EQ(kind, member);
  EXPECT_EQ(stream.Length(), 0);
}

TEST(WireKinds, MembersTravelAsTheirTags) {
  ExpectTag(BinaryKind0, "\xEA\x4D\x2C\x72");
  ExpectTag(BinaryKind1, "\xAD\x31\xF1\x2F");
  ExpectTag(StatusKind0, "\xAC\xFF\xCA\xF8");
  ExpectTag(StatusKind1, "\x70\x00\x4C\x2A"s);
  ExpectTag(StatusKind2, "\x31\xAA\x4F\xDD");
  ExpectTag(StatusKind3, "\xD8\x24\x83\x25");
  ExpectTag(StatusKind4, "\x36\x3C\xDF\x77");
  ExpectTag(StatusKind5, "\xEE\x85\x79\xC0");
  ExpectTag(StatusKind6, "\xC9\xD4\x42\x7B");
  ExpectTag(StatusKind7, "\x43\xD1\xB6\xF7");
  ExpectTag(StatusKind8, "\x9F\x86\x01\x00"s);
}

TEST(WireKinds, UnknownOnesThrowInOneAndPassInTheOther) {
  const std::string message = "unknown enumeration member.";
  CStreamReader out;
  EXPECT_EQ(test::OutcomeOf(out, [&] { out << static_cast<BinaryKind>(2); }).thrown, message);
  out << static_cast<StatusKind>(9) << static_cast<StatusKind>(0xFFFFFFFF);
  EXPECT_EQ(out.Length(), 0);

  const struct {
    std::string bytes, rest;
  } cases[] = {{"\0\0\0\0x"s, "x"}, {"\x01\x02\x03\x04", ""}, {"\xEA\x4D\x2C", "\xEA\x4D\x2C"}, {"", ""}};
  for (const auto& c : cases) {
    CStreamReader binary(c.bytes), status(c.bytes);
    BinaryKind kind = BinaryKind1;
    const test::Outcome outcome = test::OutcomeOf(binary, [&] { binary >> kind; });
    EXPECT_EQ(outcome.thrown, message);
    EXPECT_EQ(outcome.bytes, c.rest);
    EXPECT_EQ(kind, BinaryKind1);
    StatusKind other = StatusKind5;
    status >> other;
    EXPECT_EQ(other, StatusKind5);
    EXPECT_EQ(test::Bytes(status), c.rest);
  }
}

}  // namespace
