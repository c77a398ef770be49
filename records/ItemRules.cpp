#include <ZvUtiLib/data/TimeValue.h>
#include <ZvUtiLib/platform/tag_KxTimeDWord.h>
#include <ZvUtiLib/records/Items.h>

#include "platform/Doors.h"

namespace {

constexpr std::uint64_t kRefundPercent = 40;

CTimeValue EndOf(const ItemRecord& item, int hours, int minutes, int seconds) {
  tag_KxTimeDWord start;
  start = item.StartTime;
  return CTimeValue(start.Year(), start.Month(), start.Day(), start.Hour(), start.Minute(), start.Second(),
                    -1) +
         CTimeSpanValue(item.ValidDays, hours, minutes, seconds);
}

CTimeValue Now() { return CTimeValue::FromSeconds(zvuti::TheDoors().clockSeconds()); }

// The product uses unsigned arithmetic, so overflow wraps.
std::int64_t RefundOf(std::uint64_t amount) {
  return static_cast<std::int64_t>(amount * kRefundPercent) / 100;
}

}  // namespace

CTextString ItemRecord::GetExpiryText() const {
  if (!HasExpiry()) return "\xD3\xC0\xBE\xC3";  // 永久
  const CTimeValue end = EndOf(*this, 0, 0, 0);
  CTextString text;
  text.Format("%.4d-%.2d-%.2d %.2d:%.2d:%.2d", end.GetYear(), end.GetMonth(), end.GetDay(), end.GetHour(),
              end.GetMinute(), end.GetSecond());
  return text;
}

std::int64_t ItemRecord::GetExpiryTime() const { return EndOf(*this, 0, 0, 0).GetTime(); }

bool ItemRecord::IsExpired() const { return HasExpiry() && EndOf(*this, 0, 0, 0) <= Now(); }

int ItemRecord::GetRemainingDays(int hours, int minutes, int seconds) const {
  if (!HasExpiry()) return 0;
  const CTimeValue end = EndOf(*this, hours, minutes, seconds), now = Now();
  if (end <= now) return 0;
  return static_cast<int>((end - now).GetTotalSeconds() / 3600 / 24);
}

std::int64_t ItemRecord::GetRefundValue() const {
  if (DailyValue == 0) return 0;
  const int days = GetRemainingDays(0, 0, 0);
  return days < 1 ? 0 : RefundOf(static_cast<std::uint64_t>(days) * DailyValue);
}

std::int64_t ItemRecord::GetRefundOf(std::int64_t amount) const {
  return RefundOf(static_cast<std::uint64_t>(amount));
}
