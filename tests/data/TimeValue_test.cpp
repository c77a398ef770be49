#include <ZvUtiLib/data/TimeValue.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>
#include <thread>

namespace {

std::string Fields(const CTimeValue& t) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.GetYear(), t.GetMonth(), t.GetDay(),
                t.GetHour(), t.GetMinute(), t.GetSecond());
  return text;
}

TEST(CTimeSpanValue, WorksIn32BitsAndWraps) {
  EXPECT_EQ(CTimeSpanValue(1, -1, 90, -30).GetTotalSeconds(), 86'400 - 3600 + 5400 - 30);
  EXPECT_EQ(CTimeSpanValue(24'855, 3, 14, 8).GetTotalSeconds(), INT32_MIN);
  EXPECT_EQ(CTimeSpanValue(INT_MAX, 0, 0, 0).GetTotalSeconds(), -86'400);
  EXPECT_EQ(CTimeSpanValue(-7199).GetTotalHours(), -1);
  EXPECT_EQ(CTimeSpanValue(0x1'0000'0000 + 7200).GetTotalHours(), 2);
}

TEST(CTimeValue, AddsAndSubtractsIn64BitsAndWraps) {
  CTimeValue t = CTimeValue::FromSeconds(INT64_MAX - 1);
  t += CTimeSpanValue(std::int64_t{3});
  EXPECT_EQ(t.GetTime(), INT64_MIN + 1);
  EXPECT_EQ((CTimeValue(10) + CTimeSpanValue(0, 0, 0, -20)).GetTime(), -10);
  EXPECT_EQ((CTimeValue(INT32_MIN) - CTimeValue(INT32_MAX)).GetTotalSeconds(), -4'294'967'295);
  EXPECT_EQ((CTimeValue::FromSeconds(INT64_MIN) - CTimeValue(1)).GetTotalSeconds(), INT64_MAX);
  EXPECT_TRUE(CTimeValue(-1) <= CTimeValue(-1));
  EXPECT_FALSE(CTimeValue(1) <= CTimeValue(-1));
}

TEST(CTimeValue, CarriesPartsOverAndRefusesDatesOutsideItsCalendar) {
  EXPECT_EQ(Fields({2001, 2, 29, 23, 59, 59, -1}), "2001-03-01 23:59:59");
  EXPECT_EQ(Fields({2000, 0, 0, 0, 0, 0, -1}), "1999-11-30 00:00:00");
  EXPECT_EQ(Fields({2063, 15, 31, 31, 63, 63, -1}), "2064-04-01 08:04:03");
  for (const int year : {INT_MIN, -1, 1900, 1969, 3001, INT_MAX}) {
    EXPECT_EQ(CTimeValue(year, 6, 1, 0, 0, 0, -1).GetTime(), -1) << year;
  }
  EXPECT_EQ(CTimeValue(3000, 13, 1, 0, 0, 0, -1).GetTime(), -1);
  EXPECT_EQ(CTimeValue(2000, INT_MIN, 1, 0, 0, 0, -1).GetTime(), -1);
}

TEST(CTimeValue, GivesFieldsOnlyOfMomentsInsideItsCalendar) {
  std::tm local{};
  for (const std::int64_t seconds : {std::int64_t{-1}, std::int64_t{32'535'244'800}, INT64_MIN, INT64_MAX}) {
    const CTimeValue time = CTimeValue::FromSeconds(seconds);
    EXPECT_EQ(time.GetLocalTm(&local), nullptr);
    EXPECT_EQ(local.tm_mday, 0);
    EXPECT_EQ(time.GetLocalTm(nullptr), nullptr);
    EXPECT_EQ(Fields(time), "0000-00-00 00:00:00");
  }
  const CTimeValue time(2024, 2, 29, 12, 34, 56, -1);
  EXPECT_EQ(time.GetLocalTm(&local), &local);
  EXPECT_EQ(local.tm_yday, 59);
  const std::tm* const mine = time.GetLocalTm(nullptr);
  std::thread([] { CTimeValue(86'400).GetLocalTm(nullptr); }).join();  // each thread has fields of its own
  EXPECT_EQ(mine->tm_year, 124);
}

}  // namespace
