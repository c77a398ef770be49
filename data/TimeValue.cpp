#include <ZvUtiLib/data/TimeValue.h>

#include "platform/LocalTime.h"

namespace {

// Uses unsigned arithmetic, so overflow is defined and wraps like two's complement.
std::int64_t Sum(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}
std::int64_t Difference(std::int64_t a, std::int64_t b) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}
int Less(int value, unsigned by) { return static_cast<int>(static_cast<unsigned>(value) - by); }

std::int32_t SecondsOf(int days, int hours, int minutes, int seconds) {
  std::uint32_t sum = static_cast<std::uint32_t>(days);
  sum = sum * 24 + static_cast<std::uint32_t>(hours);
  sum = sum * 60 + static_cast<std::uint32_t>(minutes);
  sum = sum * 60 + static_cast<std::uint32_t>(seconds);
  return static_cast<std::int32_t>(sum);
}

std::int64_t MomentOf(int year, int month, int day, int hour, int minute, int second, int dst) {
  std::tm local{};
  local.tm_year = Less(year, 1900);
  local.tm_mon = Less(month, 1);
  local.tm_mday = day;
  local.tm_hour = hour;
  local.tm_min = minute;
  local.tm_sec = second;
  local.tm_isdst = dst;
  return zvuti::SecondsOfLocalTime(local);
}

int FieldOf(std::int64_t seconds, int std::tm::*field, int base) {
  std::tm local{};
  return zvuti::LocalTimeOfSeconds(seconds, local) ? local.*field + base : 0;
}

}  // namespace

CTimeSpanValue::CTimeSpanValue(int days, int hours, int minutes, int seconds)
    : seconds_(SecondsOf(days, hours, minutes, seconds)) {}

std::int32_t CTimeSpanValue::GetTotalHours() const {
  return static_cast<std::int32_t>(static_cast<std::uint64_t>(seconds_)) / 3600;
}

CTimeValue::CTimeValue(int year, int month, int day, int hour, int minute, int second, int dst)
    : seconds_(MomentOf(year, month, day, hour, minute, second, dst)) {}

CTimeValue CTimeValue::FromSeconds(std::int64_t seconds) {
  CTimeValue moment(0);
  moment.seconds_ = seconds;
  return moment;
}

std::tm* CTimeValue::GetLocalTm(std::tm* out) const {
  thread_local std::tm shared;
  std::tm local{};
  if (!zvuti::LocalTimeOfSeconds(seconds_, local)) return nullptr;
  if (!out) out = &shared;
  *out = local;
  return out;
}

int CTimeValue::GetYear() const { return FieldOf(seconds_, &std::tm::tm_year, 1900); }
int CTimeValue::GetMonth() const { return FieldOf(seconds_, &std::tm::tm_mon, 1); }
int CTimeValue::GetDay() const { return FieldOf(seconds_, &std::tm::tm_mday, 0); }
int CTimeValue::GetHour() const { return FieldOf(seconds_, &std::tm::tm_hour, 0); }
int CTimeValue::GetMinute() const { return FieldOf(seconds_, &std::tm::tm_min, 0); }
int CTimeValue::GetSecond() const { return FieldOf(seconds_, &std::tm::tm_sec, 0); }

CTimeValue& CTimeValue::operator+=(CTimeSpanValue span) {
  seconds_ = Sum(seconds_, span.GetTotalSeconds());
  return *this;
}

CTimeValue CTimeValue::operator+(CTimeSpanValue span) const { return CTimeValue(*this) += span; }

CTimeSpanValue CTimeValue::operator-(CTimeValue other) const {
  return CTimeSpanValue(Difference(seconds_, other.seconds_));
}
