#include <ZvUtiLib/records/Daily.h>

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>
#include <utility>

#include <ZvUtiLib/data/TimeValue.h>
#include <ZvUtiLib/records/Account.h>
#include <ZvUtiLib/records/Bundles.h>

#include "tests/support/DoorsGuard.h"
#include "tests/support/WireBytes.h"

namespace {

using Map = zvuti::SizedMap<std::int32_t, std::int32_t>;

TEST(CUtiCounterTable, KeysAreClassAndIndex) {
  EXPECT_EQ(GetKeyClass(KeyDayCount), 0x03000000);
  EXPECT_EQ(GetKeyClass(-1), 0x7F000000);
  EXPECT_EQ(GetKeyIndex12(-1), 0xFFF);
  EXPECT_EQ(GetKeyIndex20(-1), 0xFFFFF);
}

TEST(CUtiCounterTable, AbsentCountersAreZeroAndSumsWrap) {
  CUtiCounterTable table;
  EXPECT_EQ(table.GetCounter(9), 0);
  EXPECT_TRUE(table.Counters.empty());
  EXPECT_EQ(table.AddCounter(9, 3), 3);
  EXPECT_EQ(table.AddCounter(9, -5), -2);
  table.SetCounter(9, INT_MAX);
  EXPECT_EQ(table.AddCounter(9, 1), INT_MIN);
}

TEST(CUtiCounterTable, TodaySecondsAreCutAtMidnight) {
  const struct {
    int sinceMidnight, elapsed, held, expected;
  } cases[] = {
      {100, 40, 7, 47},
      {100, 99, 7, 106},
      {100, 100, 7, 100},
      {3661, 3661, 7, 3661},
      {86'399, 86'400, 7, 86'399},
      {100, -5, 7, 2},
      {100, 1, INT_MAX, INT_MIN},
      {100, INT_MIN, 7, INT_MIN + 7},
  };
  static std::int64_t now;
  test::DoorsGuard doors;
  doors->clockSeconds = [] { return now; };
  const std::int64_t midnight = CTimeValue(2024, 5, 31, 0, 0, 0, -1).GetTime();
  for (const auto& c : cases) {
    CUtiCounterTable table;
    table.SetCounter(KeyDaySeconds, c.held);
    now = midnight + c.sinceMidnight;
    EXPECT_EQ(table.GetTodaySeconds(static_cast<unsigned>(now - c.elapsed)), c.expected)
        << c.sinceMidnight << " " << c.elapsed;
  }
}

TEST(CUtiCounterTable, HasATextFormThatRestoresIt) {
  CUtiCounterTable table, again;
  CByteBuffer buffer;
  table.AppendAsText(buffer);
  EXPECT_EQ(buffer.Length(), 0);
  table.Counters = {{5, 60}, {7, -1}, {INT_MIN, INT_MAX}, {0, 0}};
  table.AppendAsText(buffer);
  EXPECT_EQ(test::Bytes(buffer), "-2147483648=2147483647&0=0&5=60&7=-1&");
  again.LoadFromText(test::Bytes(buffer).c_str());
  EXPECT_EQ(again.Counters, table.Counters);
}

TEST(CUtiCounterTable, TakesWhatNumbersATextHas) {
  const struct {
    const char* text;
    Map counters;
  } cases[] = {
      {nullptr, {{1, 1}}},
      {"=5&7&&", {{1, 1}}},
      {" 2 = 20x & +3=\t-30", {{1, 1}, {2, 20}, {3, -30}}},
      {"1=2&1=3", {{1, 3}}},
      {"x=4&5=y", {{0, 4}, {1, 1}, {5, 0}}},
  };
  for (const auto& c : cases) {
    CUtiCounterTable table;
    table.SetCounter(1, 1);
    table.LoadFromText(c.text);
    EXPECT_EQ(table.Counters, c.counters) << (c.text ? c.text : "null");
  }
}

TEST(CUtiDailyState, FlagsOfAScopeAreApart) {
  CUtiDailyState state;
  state.SetFlag(7, 2);
  state.SetFlag(7, -1);
  state.SetFlag(8, FlagScopeLasting);
  state.SetFlag(9, FlagScopeDaily);
  EXPECT_EQ(state.LastingFlags, (Map{{8, 1}}));
  EXPECT_EQ(state.DailyFlags, (Map{{9, 1}}));
  state.LastingFlags[8] = -4;
  EXPECT_EQ(state.GetFlag(8, 0), -4);
  EXPECT_EQ(state.GetFlag(9, 1), 1);
  EXPECT_EQ(state.GetFlag(8, 1) | state.GetFlag(9, 0) | state.GetFlag(8, 2), 0);
}

template <class T>
constexpr bool kMoves = std::is_nothrow_move_constructible_v<T>&& std::is_nothrow_move_assignable_v<T>;
static_assert(kMoves<AccountRecord> && kMoves<CUtiBundleTable>);

TEST(CUtiDailyState, MovesAndLeavesNothingBehind) {
  const std::map<int, int> counters{{1, 2}};
  CUtiDailyState state, other;
  state.Table.Counters = zvuti::ToSized(counters);
  state.SetFlag(3, FlagScopeLasting);
  state.SetFlag(4, FlagScopeDaily);
  const CUtiDailyState same = state;
  CUtiDailyState moved(std::move(state));
  other = std::move(moved);
  EXPECT_TRUE(other == same);
  EXPECT_TRUE(state == CUtiDailyState() && moved == CUtiDailyState());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(zvuti::ToStandard(other.Table.Counters), counters);
}

TEST(CUtiDailyState, ANewDayKeepsItsCountAndTheLastingFlags) {
  CUtiDailyState state;
  state.GetTable().Counters = {{KeyDaySeconds, 100}, {KeyDayCount, INT_MAX}};
  state.SetFlag(7, FlagScopeLasting);
  state.SetFlag(8, FlagScopeDaily);
  state.RollOverDay();
  EXPECT_EQ(state.GetTable().Counters, (Map{{KeyDayCount, INT_MIN}}));
  EXPECT_EQ(state.LastingFlags, (Map{{7, 1}}));
  EXPECT_TRUE(state.DailyFlags.empty());
}

}  // namespace
