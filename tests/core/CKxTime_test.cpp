#include <ZvUtiLib/CKxTime.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <utility>

namespace {

TEST(CKxTime, PrintsAndSplitsWords) {
  const std::pair<unsigned long, const char*> cases[] = {
      {0, "2000-00-00 00:00:00"},          {0x363AC8B8, "2013-08-29 12:34:56"},
      {0x00420000, "2000-01-01 00:00:00"}, {0xFFFFFFFF, "2063-15-31 31:63:63"},
      {~0ul, "2063-15-31 31:63:63"},  // only the low 32 bits count
  };
  for (const auto& [word, text] : cases) {
    EXPECT_EQ(CKxTime::DWord2String(word), text);
    EXPECT_EQ(CKxTime::DWord2StringNoSecond(word), std::string(text, 16).c_str());
    EXPECT_EQ(CKxTime::String2DWord(text), word & 0xFFFFFFFF);
    CString parts;
    parts.Format("%lu-%02lu-%02lu %02lu:%02lu:%02lu", CKxTime::GetYearFromWord(word),
                 CKxTime::GetMonthFromWord(word), CKxTime::GetDayFromWord(word),
                 CKxTime::GetHourFromWord(word), CKxTime::GetMinuteFromWord(word),
                 CKxTime::GetSecondFromWord(word));
    EXPECT_EQ(parts, text);
  }
}

TEST(CKxTime, ReadsBackEveryWordThatItPrinted) {
  std::mt19937 random(20130829);
  for (int i = 0; i < 20'000; ++i) {
    const std::uint32_t word = i < 32 ? 1u << i : static_cast<std::uint32_t>(random());
    ASSERT_EQ(CKxTime::String2DWord(CKxTime::DWord2String(word)), word);
  }
}

TEST(CKxTime, CutsNumbersToTheirFieldsAndLeavesMissingOnesZero) {
  const std::pair<const char*, const char*> cases[] = {
      {"2013-8-29 1:2:3", "2013-08-29 01:02:03"},
      {"  +2013-\t8- 29\n\v1: 2: 3 and more", "2013-08-29 01:02:03"},
      {"2013-8-2913:34:56", "2013-08-01 00:00:00"},  // 2913 is one number, and a colon is not an hour
      {"2064-01-01 00:00:00", "2000-01-01 00:00:00"},
      {"13-01-01 00:00:00", "2061-01-01 00:00:00"},
      {"2000-17-32 32:64:64", "2000-01-00 00:00:00"},
      {"2000-01-01 24:60:60", "2000-01-01 24:60:60"},
      {"2000--1--1 -1:-1:-1", "2000-15-31 31:63:63"},
      {"2000-4294967297-18446744073709551618 99999999999999999999:0:-2147483649", "2000-01-02 31:00:63"},
      {"", "2000-00-00 00:00:00"},
      {"2013 -8-29 1:2:3", "2013-00-00 00:00:00"},  // white space only before numbers
      {"2013-08-29T12:34:56", "2013-08-29 00:00:00"},
      {"2013-08-29 12:34", "2013-08-29 12:34:00"},
      {"2013-08-29\xA0"
       "12:34",
       "2013-08-29 00:00:00"},
  };
  for (const auto& [text, read] : cases)
    EXPECT_EQ(CKxTime::DWord2String(CKxTime::String2DWord(text)), read) << text;
  EXPECT_EQ(CKxTime::String2DWord(nullptr), 0u);
}

}  // namespace
