#include <gtest/gtest.h>

#include <ctime>

#include <ZvUtiLib/platform/Windows.h>

#include "platform/LocalTime.h"

namespace {

TEST(LocalTime, FollowsTheZone) {
  std::tm local{};
  local.tm_year = 1969 - 1900, local.tm_mon = 11, local.tm_mday = 60;
  EXPECT_EQ(zvuti::SecondsOfLocalTime(local), -1);
  EXPECT_TRUE(zvuti::LocalTimeOfSeconds(32'535'244'799, local));
  EXPECT_FALSE(zvuti::LocalTimeOfSeconds(32'535'244'800, local));

  TIME_ZONE_INFORMATION zone{};
  GetTimeZoneInformation(&zone);
  if (zone.DaylightDate.wMonth != 0) GTEST_SKIP() << "this zone has daylight saving";
  const std::int64_t seconds = 2'974'233'600 + std::int64_t{zone.Bias} * 60;
  ASSERT_TRUE(zvuti::LocalTimeOfSeconds(seconds, local));
  EXPECT_EQ(local.tm_year, 2064 - 1900);
  EXPECT_EQ(local.tm_mon, 3);
  EXPECT_EQ(local.tm_hour, 0);
  EXPECT_EQ(zvuti::SecondsOfLocalTime(local), seconds);
}

}  // namespace
