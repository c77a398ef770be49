#include <gtest/gtest.h>

#include <ctime>

#include <ZvUtiLib/platform/Windows.h>

#include "platform/LocalTime.h"

namespace {

std::int64_t Seconds(int year, int month, int day, int hour) {
  std::tm local{};
  local.tm_year = year - 1900, local.tm_mon = month - 1, local.tm_mday = day, local.tm_hour = hour;
  local.tm_isdst = -1;
  return zvuti::SecondsOfLocalTime(local);
}

TEST(LocalTime, FollowsTheZone) {
  TIME_ZONE_INFORMATION zone{};
  GetTimeZoneInformation(&zone);
  if (zone.DaylightDate.wMonth != 0) GTEST_SKIP() << "this zone has daylight saving";
  const std::int64_t west = std::int64_t{zone.Bias} * 60;
  EXPECT_EQ(Seconds(2064, 4, 1, 0), 2'974'233'600 + west);
  EXPECT_EQ(Seconds(1970, 1, 1, 0), west < 0 ? -1 : west);
  EXPECT_EQ(Seconds(1969, 12, 60, 0), -1);
  EXPECT_EQ(Seconds(1969, 13, 3, 0), std::int64_t{2} * 86'400 + west);

  std::tm local{};
  ASSERT_TRUE(zvuti::LocalTimeOfSeconds(2'974'233'600 + west, local));
  EXPECT_EQ(local.tm_year, 2064 - 1900);
  EXPECT_EQ(local.tm_mon, 3);
  EXPECT_EQ(local.tm_hour, 0);
  EXPECT_TRUE(zvuti::LocalTimeOfSeconds(32'535'244'799, local));
  EXPECT_FALSE(zvuti::LocalTimeOfSeconds(32'535'244'800, local));
}

}  // namespace
