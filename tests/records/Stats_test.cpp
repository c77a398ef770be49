#include <ZvUtiLib/records/Stats.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

TEST(PlayerGameStats, RatiosAreFractionsOfAllGames) {
  const struct {
    std::int32_t won, lost, drawn, abandoned;
    int total;
    float winRatio, fleeRatio;
  } cases[] = {
      {0, 0, 0, 0, 0, 0, 0},
      {1, 2, 4, 1, 8, 0.125F, 0.125F},
      {3, 0, 0, -2, 1, 3, -2},
      {0x7FFFFFFF, 1, 0, 0, -0x7FFFFFFF - 1, 0, 0},
      {0x7FFFFFFF, 0x7FFFFFFF, 3, 0, 1, 2147483647.0F, 0},
  };
  for (const auto& c : cases) {
    PlayerGameStats stats;
    stats.WinCount = c.won;
    stats.LoseCount = c.lost;
    stats.DrawCount = c.drawn;
    stats.FleeCount = c.abandoned;
    EXPECT_EQ(stats.GetTotalGames(), c.total);
    EXPECT_EQ(stats.GetWinRatio(), c.winRatio) << c.total;
    EXPECT_EQ(stats.GetFleeRatio(), c.fleeRatio) << c.total;
  }
}

TEST(PlayerGameStats, TheRemainderIsWhatTheLimitLeaves) {
  constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
  constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
  const struct {
    std::int64_t limit, used, amount, remainder;
  } cases[] = {
      {100, 50, 30, 20},      {100, 50, -30, 20},    {100, 50, 50, 0},        {100, 50, 51, 0},
      {-5, -10, 3, 2},        {kMost, 0, kLeast, 0}, {kMost, -10, kLeast, 0}, {kMost, kMost, 1, 0},
      {kLeast, kMost, -1, 0}, {0, kLeast, kMost, 1}, {kMost, kLeast, 5, -6},
  };
  for (const auto& c : cases) {
    PlayerGameStats stats;
    stats.Limit = c.limit;
    stats.Used = c.used;
    EXPECT_EQ(stats.GetRemainder(c.amount), c.remainder) << c.limit << " " << c.used << " " << c.amount;
  }
}

}  // namespace
