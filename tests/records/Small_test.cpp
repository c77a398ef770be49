#include <ZvUtiLib/records/Small.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

#include <ZvUtiLib/data/Crc16.h>

#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;

TEST(AmountMap, ALaterEntryOfTheSameKeyReplacesTheEarlierOne) {
  AmountMap amounts = {{1, {1, {}, 10}}, {-1, {-1, {}, 20}}};
  CStreamReader stream("\x02\0\0\0\x01\0\0\0ABCD\x05\0\0\0\0\0\0\0\x01\0\0\0EFGH\x06\0\0\0\0\0\0\0"s);
  stream >> amounts;
  EXPECT_EQ(test::Written(amounts),
            "\x02\0\0\0\xFF\xFF\xFF\xFF\0\0\0\0\x14\0\0\0\0\0\0\0\x01\0\0\0EFGH\x06\0\0\0\0\0\0\0"s);
}

TEST(AmountMap, APlainMapIsWrittenAndReadAlike) {
  std::map<int, AmountEntry> plain, back;
  for (const int key : {3, -1, 3}) SetAmount(plain, key, std::int64_t{10} * key).Reserved[0] = 7;
  const AmountMap amounts = zvuti::ToSized(plain);
  EXPECT_EQ(amounts.at(3).Key, 3);
  EXPECT_EQ(test::Written(plain), test::Written(amounts));
  CStreamReader(test::Written(plain)) >> back;
  EXPECT_EQ(test::Written(back), test::Written(amounts));
  EXPECT_EQ(SetAmount(back, 3, 30).Reserved[0], 0);
  EXPECT_EQ(zvuti::ToSized(back), amounts);
}

TEST(AmountMap, ChecksumCoversTheWireForm) {
  EXPECT_EQ(GetAmountMapChecksum({}), 0);
  const AmountMap amounts = {{1, {1, {0, 0, 0, 1}, 10}}, {-1, {-1, {}, 20}}};
  const std::string bytes = test::Written(amounts);
  EXPECT_EQ(GetAmountMapChecksum(amounts),
            static_cast<int>(Crc16(0, bytes.data(), static_cast<unsigned>(bytes.size()))));
}

TEST(HighIds, MapBothWays) {
  EXPECT_EQ(ToHighId(0), 65535u);
  EXPECT_EQ(ToHighId(1), 65536u);
  EXPECT_EQ(ToHighId(0xFFFFFFFF), 65534u);
  EXPECT_EQ(FromHighId(65536), 1u);
  EXPECT_EQ(FromHighId(65535), 0u);
  EXPECT_EQ(FromHighId(7), 0u);
}

}  // namespace
