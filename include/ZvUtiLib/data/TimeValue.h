// CTimeValue and CTimeSpanValue: moments and spans in whole seconds, 64 bits wide, with the calendar
// of the system's time zone.
//
// Plain values: any thread may use them, and nothing is cached. Sums and differences beyond 64 bits
// wrap.
#pragma once

#include <cstdint>
#include <ctime>

#include <ZvUtiLib/Export.h>

/// A span of seconds, which may be negative.
class ZVUTILIB_API CTimeSpanValue {
 public:
  /// The four parts need not be in their usual ranges. They are summed up in 32 bits, so spans beyond
  /// 2,147,483,647 seconds, about 24,855 days, wrap.
  CTimeSpanValue(int days, int hours, int minutes, int seconds);
  /// A span of `seconds`.
  explicit CTimeSpanValue(std::int64_t seconds) : seconds_(seconds) {}

  /// All of the span, in seconds.
  std::int64_t GetTotalSeconds() const { return seconds_; }
  /// Whole hours of the count's low 32 bits, cut toward zero.
  std::int32_t GetTotalHours() const;

 private:
  std::int64_t seconds_;
};

/// A moment: seconds since 1970-01-01 00:00 UTC. The calendar knows the moments from 0 to 32,535,244,799, the
/// end of the year 3000 in UTC+8.
class ZVUTILIB_API CTimeValue {
 public:
  /// The moment `seconds` after 1970-01-01 00:00 UTC; 32 bits reach from 1901 to 2038.
  explicit CTimeValue(std::int32_t seconds) : seconds_(seconds) {}
  /// A moment of local time. Parts outside their ranges carry over, month 13 into the next year. A
  /// `dst` above 0 says that daylight saving is in force, 0 that it is not, -1 leaves it to the system; in a
  /// zone without daylight saving a `dst` above 0 is ignored on Windows and takes an hour off on Linux.
  /// Gives a moment of -1 when the year, after the months have carried over, is outside 1970 to 3000, and
  /// when the moment lies before 1970-01-01 00:00 UTC, as the first hours of that day do east of Greenwich.
  CTimeValue(int year, int month, int day, int hour, int minute, int second, int dst);
  /// The same for 64 bits.
  static CTimeValue FromSeconds(std::int64_t seconds);

  /// Seconds since 1970-01-01 00:00 UTC.
  std::int64_t GetTime() const { return seconds_; }

  /// Writes the local calendar fields to `out` and returns it. Without an `out` the result points to
  /// fields that are good until this thread's next call without one. Null, with `out` untouched, when
  /// the calendar does not know the moment.
  std::tm* GetLocalTm(std::tm* out) const;

  /// One field of the local calendar each; 0 when the calendar does not know the moment.
  int GetYear() const;    ///< four digits
  int GetMonth() const;   ///< 1 to 12
  int GetDay() const;     ///< 1 to 31
  int GetHour() const;    ///< 0 to 23
  int GetMinute() const;  ///< 0 to 59
  int GetSecond() const;  ///< 0 to 59

  /// The moment a span later.
  CTimeValue& operator+=(CTimeSpanValue span);
  CTimeValue operator+(CTimeSpanValue span) const;
  /// The span from `other` to this moment.
  CTimeSpanValue operator-(CTimeValue other) const;
  /// Whether this moment is not behind `other`.
  bool operator<=(CTimeValue other) const { return seconds_ <= other.seconds_; }

 private:
  std::int64_t seconds_;
};
