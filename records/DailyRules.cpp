#include <ZvUtiLib/records/Daily.h>

#include <cstdio>

#include <ZvUtiLib/data/CStringDict.h>
#include <ZvUtiLib/data/ParseInt.h>
#include <ZvUtiLib/data/TimeValue.h>

#include "platform/Doors.h"

namespace {

using Map = zvuti::SizedMap<std::int32_t, std::int32_t>;

int ValueOf(const Map& map, int key) {
  const auto found = map.find(key);
  return found == map.end() ? 0 : found->second;
}

// Uses unsigned arithmetic, so overflow wraps.
int Sum(int a, int b) { return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b)); }

struct Loader {
  CUtiCounterTable& table;

  void Take(const char* key, const char* value) {
    constexpr unsigned kWhole = 0xFFFFFFFF;
    table.SetCounter(ParseInt(key, kWhole), ParseInt(value, kWhole));
  }
};

}  // namespace

int GetKeyClass(int key) { return key & 0x7F000000; }
int GetKeyIndex12(int key) { return key & 0xFFF; }
int GetKeyIndex20(int key) { return key & 0xFFFFF; }

int CUtiCounterTable::GetCounter(int key) const { return ValueOf(Counters, key); }
void CUtiCounterTable::SetCounter(int key, int value) { Counters[key] = value; }

int CUtiCounterTable::AddCounter(int key, int delta) {
  std::int32_t& counter = Counters[key];
  counter = Sum(counter, delta);
  return counter;
}

void CUtiCounterTable::Clear() { Counters.clear(); }

int CUtiCounterTable::GetTodaySeconds(unsigned periodStart) const {
  const auto now = static_cast<std::uint32_t>(zvuti::TheDoors().clockSeconds());
  const auto elapsed = static_cast<int>(now - periodStart);
  const CTimeValue time(static_cast<std::int32_t>(now));
  const int sinceMidnight = time.GetHour() * 3600 + time.GetMinute() * 60 + time.GetSecond();
  return sinceMidnight > elapsed ? Sum(GetCounter(KeyDaySeconds), elapsed) : sinceMidnight;
}

void CUtiCounterTable::AppendAsText(CByteBuffer& buffer) const {
  for (const auto& [key, value] : Counters) {
    char text[64] = {};
    std::snprintf(text, sizeof text, "%d=%d&", key, value);
    buffer.AppendText(text);
  }
}

void CUtiCounterTable::LoadFromText(const char* text) {
  CStringDict pairs;
  pairs.Parse(text, "=&", -1);
  Loader loader{*this};
  pairs.Visit(&loader, &Loader::Take);
}

int CUtiDailyState::GetFlag(int key, int scope) const {
  switch (scope) {
    case FlagScopeLasting:
      return ValueOf(LastingFlags, key);
    case FlagScopeDaily:
      return ValueOf(DailyFlags, key);
    default:
      return 0;
  }
}

void CUtiDailyState::SetFlag(int key, int scope) {
  if (scope == FlagScopeLasting) LastingFlags[key] = 1;
  if (scope == FlagScopeDaily) DailyFlags[key] = 1;
}

void CUtiDailyState::RollOverDay() {
  const int days = Table.GetCounter(KeyDayCount);
  Table.Clear();
  Table.SetCounter(KeyDayCount, Sum(days, 1));
  DailyFlags.clear();
}
