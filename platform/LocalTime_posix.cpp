#include "platform/LocalTime.h"

namespace zvuti {

std::int64_t SecondsOfLocalTime(const std::tm& local) {
  constexpr std::int64_t kMonths = 12;
  const std::int64_t months = (std::int64_t{local.tm_year} + 1900) * kMonths + local.tm_mon;
  if (months < 1970 * kMonths || months >= 3001 * kMonths) return -1;
  std::tm normalised = local;
  static_assert(sizeof(std::time_t) == sizeof(std::int64_t));
  const std::int64_t seconds = std::mktime(&normalised);
  return seconds < 0 ? -1 : seconds;
}

bool LocalTimeOfSeconds(std::int64_t seconds, std::tm& local) {
  constexpr std::int64_t kLast = 32535244799;  // 3001-01-01 07:59:59 UTC
  const std::time_t moment = seconds;
  return seconds >= 0 && seconds <= kLast && localtime_r(&moment, &local) != nullptr;
}

}  // namespace zvuti
