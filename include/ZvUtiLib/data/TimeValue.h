// CTimeValue and CTimeSpanValue: points in time and time spans in whole seconds, 64 bits wide, with the
// calendar of the system's time zone.
//
// They are plain values: any thread may use them, and nothing is cached. Sums and differences beyond 64
// bits wrap.
#pragma once

#include <cstdint>
#include <ctime>

#include <ZvUtiLib/Export.h>

/// A span of seconds, which may be negative.
class ZVUTILIB_API CTimeSpanValue {
 public:
  /// The four parts may exceed their usual ranges. They are added in 32 bits, so spans beyond
  /// 2,147,483,647 seconds, about 24,855 days, wrap.
  CTimeSpanValue(int days, int hours, int minutes, int seconds);
  /// A span of `seconds`.
  explicit CTimeSpanValue(std::int64_t seconds) : seconds_(seconds) {}

  /// The whole span, in seconds.
  std::int64_t GetTotalSeconds() const { return seconds_; }
  /// The whole hours in the low 32 bits of the seconds, truncated toward zero.
  std::int32_t GetTotalHours() const;

 private:
  std::int64_t seconds_;
};

/// A point in time: seconds since 1970-01-01 00:00 UTC. The calendar covers 0 to 32,535,244,799, which is
/// 3001-01-01 07:59:59 UTC.
class ZVUTILIB_API CTimeValue {
 public:
  /// The time `seconds` after 1970-01-01 00:00 UTC; 32 bits cover 1901 to 2038.
  explicit CTimeValue(std::int32_t seconds) : seconds_(seconds) {}
  /// A local time. Parts outside their ranges carry over: month 13 is January of the next year. A `dst`
  /// above 0 means that daylight saving time is in force, 0 that it is not, and -1 that the system decides.
  /// In a zone without daylight saving time, a `dst` above 0 is ignored on Windows and subtracts an hour on
  /// Linux. The result is -1 if the year, after the months have carried over, is outside 1970 to 3000, or if
  /// the time is before 1970-01-01 00:00 UTC, as the first hours of that day are east of Greenwich.
  CTimeValue(int year, int month, int day, int hour, int minute, int second, int dst);
  /// The same for 64-bit seconds.
  static CTimeValue FromSeconds(std::int64_t seconds);

  /// Seconds since 1970-01-01 00:00 UTC.
  std::int64_t GetTime() const { return seconds_; }

  /// Writes the local calendar fields to `out` and returns it. If `out` is null, the result points to fields
  /// that are valid until this thread's next call with a null `out`. Returns null and leaves `out` unchanged
  /// if the calendar does not cover the time.
  std::tm* GetLocalTm(std::tm* out) const;

  /// Each returns one field of the local calendar, or 0 if the calendar does not cover the time.
  int GetYear() const;    ///< four digits
  int GetMonth() const;   ///< 1 to 12
  int GetDay() const;     ///< 1 to 31
  int GetHour() const;    ///< 0 to 23
  int GetMinute() const;  ///< 0 to 59
  int GetSecond() const;  ///< 0 to 59

  /// Adds a span.
  CTimeValue& operator+=(CTimeSpanValue span);
  CTimeValue operator+(CTimeSpanValue span) const;
  /// The span from `other` to this time.
  CTimeSpanValue operator-(CTimeValue other) const;
  /// Whether this time is at or before `other`.
  bool operator<=(CTimeValue other) const { return seconds_ <= other.seconds_; }

 private:
  std::int64_t seconds_;
};
