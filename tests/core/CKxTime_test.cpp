#include <ZvUtiLib/CKxTime.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <utility>

namespace {

TEST(CKxTime, PrintsAndSplitsWords) {
  const struct {
    unsigned long word;
    const char* text;
    unsigned long fields[6];
  } cases[] = {
      {0, "2000-00-00 00:00:00", {2000, 0, 0, 0, 0, 0}},
      {0x363AC8B8, "2013-08-29 12:34:56", {2013, 8, 29, 12, 34, 56}},
      {0x00420000, "2000-01-01 00:00:00", {2000, 1, 1, 0, 0, 0}},
      {0xFFFFFFFF, "2063-15-31 31:63:63", {2063, 15, 31, 31, 63, 63}},
      {~0ul, "2063-15-31 31:63:63", {2063, 15, 31, 31, 63, 63}},  // only the low 32 bits count
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CKxTime::DWord2String(c.word), c.text);
    EXPECT_EQ(CKxTime::DWord2StringNoSecond(c.word), std::string(c.text, 16).c_str());
    EXPECT_EQ(CKxTime::String2DWord(c.text), c.word & 0xFFFFFFFF);
    const unsigned long fields[] = {CKxTime::GetYearFromWord(c.word),   CKxTime::GetMonthFromWord(c.word),
                                    CKxTime::GetDayFromWord(c.word),    CKxTime::GetHourFromWord(c.word),
                                    CKxTime::GetMinuteFromWord(c.word), CKxTime::GetSecondFromWord(c.word)};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(fields[i], c.fields[i]) << c.text << " field " << i;
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
      {"2013-8-2913:34:56", "2013-08-01 00:00:00"},  // 2913 is one number, and a colon no hour
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
