// Local time: moments in seconds since 1970-01-01 00:00 UTC, and the calendar of the system's zone.
//
// Both directions know the years from 1970 to 3000 only, and nothing before 1970-01-01 00:00 UTC, as
// the runtime library of our Windows target does; other systems would go further. Any thread may call.
#pragma once

#include <cstdint>
#include <ctime>

namespace zvuti {

/// The moment of local calendar fields, which carry over where they exceed their ranges; a tm_isdst
/// below 0 leaves daylight saving to the system. -1 when the date is not known. A year outside 1970 to
/// 3000, after months have carried over, is not known, whatever the day would make of it.
std::int64_t SecondsOfLocalTime(const std::tm& local);

/// Writes the local calendar fields of a moment; false, with `local` untouched, when it is not known.
bool LocalTimeOfSeconds(std::int64_t seconds, std::tm& local);

}  // namespace zvuti
