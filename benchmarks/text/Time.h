// The point in time that the format rows print.
#pragma once

namespace bench {

struct Time {
  int year, month, day, hour, minute, second;
};
// Volatile, so that no compiler can format the text at compile time.
inline volatile Time kTime = {2026, 11, 23, 8, 5, 9};
inline Time Now() { return {kTime.year, kTime.month, kTime.day, kTime.hour, kTime.minute, kTime.second}; }

inline constexpr const char* kSecondsText = "2026-11-23 08:05:09";
inline constexpr const char* kMinutesText = "2026-11-23 08:05";

}  // namespace bench
