#include <ZvUtiLib/data/Crc16.h>

#include <gtest/gtest.h>

#include <string_view>

namespace {

unsigned Of(unsigned init, std::string_view bytes) {
  return Crc16(init, bytes.data(), static_cast<unsigned>(bytes.size()));
}

TEST(Crc16, GivesThePublishedCheckValuesAlsoInTwoRuns) {
  EXPECT_EQ(Of(0, "123456789"), 0x31C3u);
  EXPECT_EQ(Of(0xFFFF, "123456789"), 0x29B1u);
  EXPECT_EQ(Of(0x7FFFFFFF, "123456789"), 0x29B1u);  // only 16 bits of the start count
  EXPECT_EQ(Of(Of(0, "1234"), "56789"), 0x31C3u);
  EXPECT_EQ(Of(0, "\xFF"), 0x1EF0u);
  EXPECT_EQ(Crc16(0x12345678, nullptr, 0), 0x12345678u);
}

}  // namespace
