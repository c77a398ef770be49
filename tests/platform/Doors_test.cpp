#include "platform/Doors.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

TEST(Doors, LocalTimeIsTheSystemsOwn) {
  const std::int64_t before = zvuti::TheDoors().clockSeconds();
  SYSTEMTIME now{};
  zvuti::TheDoors().getLocalTime(&now);
  const std::int64_t after = zvuti::TheDoors().clockSeconds();
  std::tm local{};
  local.tm_year = now.wYear - 1900, local.tm_mon = now.wMonth - 1, local.tm_mday = now.wDay;
  local.tm_hour = now.wHour, local.tm_min = now.wMinute, local.tm_sec = now.wSecond, local.tm_isdst = -1;
  const std::int64_t seconds = std::mktime(&local);
  EXPECT_TRUE(before <= seconds && seconds <= after) << before << " " << seconds;
  EXPECT_EQ(local.tm_wday, now.wDayOfWeek);
  for (int i = 0; now.wMilliseconds == 0 && i < 10'000'000; ++i) zvuti::TheDoors().getLocalTime(&now);
  EXPECT_TRUE(now.wMilliseconds > 0 && now.wMilliseconds < 1000) << now.wMilliseconds;
}

TEST(Doors, EventsResetAsAskedForAndNoHandleHasNoDuplicate) {
  const zvuti::KernelDoors kernel = zvuti::SystemKernelDoors();
  const HANDLE once = kernel.createEvent(false, true), held = kernel.createEvent(true, true);
  for (const HANDLE event : {once, held}) EXPECT_EQ(kernel.waitForSingleObject(event, 0), WAIT_OBJECT_0);
  EXPECT_EQ(kernel.waitForSingleObject(once, 0), static_cast<unsigned long>(WAIT_TIMEOUT));
  EXPECT_EQ(kernel.waitForSingleObject(held, 0), WAIT_OBJECT_0);
  EXPECT_EQ(kernel.duplicateHandle(nullptr), nullptr);
  kernel.closeHandle(once);
  kernel.closeHandle(held);
}

}  // namespace
