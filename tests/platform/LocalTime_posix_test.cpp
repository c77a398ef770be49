#include <ZvUtiLib/data/TimeValue.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "platform/LocalTime.h"

namespace {

void SetZone(const char* zone) {
  zone ? setenv("TZ", zone, 1) : unsetenv("TZ");
  tzset();
}

std::int64_t Seconds(int year, int month, int day, int hour, int dst = -1) {
  std::tm local{};
  local.tm_year = year - 1900, local.tm_mon = month - 1, local.tm_mday = day, local.tm_hour = hour;
  local.tm_isdst = dst;
  return zvuti::SecondsOfLocalTime(local);
}

TEST(LocalTime, FollowsTheZoneWithinTheYearsThatTheRuntimesShare) {
  const char* const old = std::getenv("TZ");
  const std::string saved = old ? old : "";
  SetZone("CST-8");
  EXPECT_EQ(Seconds(2064, 4, 1, 8), 2'974'233'600);
  EXPECT_EQ(Seconds(1970, 1, 1, 8), 0);
  EXPECT_EQ(Seconds(1970, 1, 1, 7), -1);
  EXPECT_EQ(Seconds(1969, 12, 60, 0), -1);
  EXPECT_EQ(Seconds(1969, 13, 2, 8), 86'400);
  std::tm local{};
  ASSERT_TRUE(zvuti::LocalTimeOfSeconds(32'535'244'799, local));
  EXPECT_EQ(local.tm_hour, 15);
  EXPECT_FALSE(zvuti::LocalTimeOfSeconds(32'535'244'800, local));

  SetZone("EST5EDT,M3.2.0,M11.1.0");
  EXPECT_EQ(Seconds(2024, 7, 1, 0), 1'719'806'400);
  EXPECT_EQ(Seconds(2024, 7, 1, 0, 0), 1'719'806'400 + 3600);
  for (const int dst : {-1, 0, 1}) {
    EXPECT_EQ(CTimeValue(2024, 7, 1, 0, 0, 0, dst).GetTime(), Seconds(2024, 7, 1, 0, dst)) << dst;
  }
  SetZone(old ? saved.c_str() : nullptr);
}

}  // namespace
