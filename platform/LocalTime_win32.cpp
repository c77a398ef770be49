#include "platform/LocalTime.h"

namespace zvuti {

// The limits are the runtime library's own.
std::int64_t SecondsOfLocalTime(const std::tm& local) {
  std::tm normalised = local;
  return _mktime64(&normalised);
}

bool LocalTimeOfSeconds(std::int64_t seconds, std::tm& local) {
  const __time64_t moment = seconds;
  const std::tm* const fields = _localtime64(&moment);  // of this thread
  if (fields) local = *fields;
  return fields != nullptr;
}

}  // namespace zvuti
