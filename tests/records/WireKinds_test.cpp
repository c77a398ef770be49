#include <ZvUtiLib/records/WireKinds.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/LiteralRecords.h"
#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;

template <class Kind>
void ExpectTags(const std::vector<std::uint32_t>& tags) {
  for (std::size_t member = 0; member < tags.size(); ++member) {
    CStreamReader stream;
    stream << static_cast<Kind>(member);
    EXPECT_EQ(test::Bytes(stream), test::Written(tags[member])) << member;
    auto kind = static_cast<Kind>(99);
    stream >> kind;
    EXPECT_EQ(kind, static_cast<Kind>(member));
    EXPECT_EQ(stream.Length(), 0) << member;
  }
}

TEST(WireKinds, MembersTravelAsTheirTags) {
  ExpectTags<BinaryKind>({0x722C4DEA, 0x2FF131AD});
  ExpectTags<StatusKind>({0xF8CAFFAC, 0x2A4C0070, 0xDD4FAA31, 0x258324D8, 0x77DF3C36, 0xC07985EE, 0x7B42D4C9,
                          0xF7B6D143, 99999});
}

TEST(WireKinds, UnknownOnesThrowInOneAndPassInTheOther) {
  const std::string message = "unknown enumeration member.";
  CStreamReader out;
  EXPECT_EQ(test::OutcomeOf(out, [&] { out << static_cast<BinaryKind>(2); }).thrown, message);
  out << static_cast<StatusKind>(9) << static_cast<StatusKind>(0xFFFFFFFF);
  EXPECT_EQ(out.Length(), 0);

  const std::pair<std::string, std::string> bytesAndRests[] = {
      {"\0\0\0\0x"s, "x"}, {"\x01\x02\x03\x04", ""}, {"\xEA\x4D\x2C", "\xEA\x4D\x2C"}, {"", ""}};
  for (const auto& [bytes, rest] : bytesAndRests) {
    CStreamReader binaryIn(bytes), statusIn(bytes);
    BinaryKind binary = BinaryKind1;
    StatusKind status = StatusKind5;
    EXPECT_EQ(test::OutcomeOf(binaryIn, [&] { binaryIn >> binary; }).thrown, message);
    statusIn >> status;
    EXPECT_EQ(binary, BinaryKind1);
    EXPECT_EQ(status, StatusKind5);
    EXPECT_EQ(test::Bytes(binaryIn), rest);
    EXPECT_EQ(test::Bytes(statusIn), rest);
  }
}

}  // namespace
