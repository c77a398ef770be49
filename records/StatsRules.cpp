#include <ZvUtiLib/records/Stats.h>

#include <limits>

namespace {

float RatioOf(int count, int total) {
  return total < 1 ? 0.0F : static_cast<float>(count) / static_cast<float>(total);
}

}  // namespace

int PlayerGameStats::GetTotalGames() const {
  // Unsigned arithmetic, so overflow wraps.
  std::uint32_t total = 0;
  for (const std::int32_t count : {WinCount, LoseCount, DrawCount, FleeCount}) {
    total += static_cast<std::uint32_t>(count);
  }
  return static_cast<int>(total);
}

float PlayerGameStats::GetWinRatio() const { return RatioOf(WinCount, GetTotalGames()); }
float PlayerGameStats::GetFleeRatio() const { return RatioOf(FleeCount, GetTotalGames()); }

std::int64_t PlayerGameStats::GetRemainder(std::int64_t amount) const {
  constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
  if (amount < -kLargest) return 0;  // its magnitude exceeds every limit
  const std::int64_t magnitude = amount < 0 ? -amount : amount;
  if (Used > kLargest - magnitude) return 0;
  const std::int64_t need = Used + magnitude;
  if (Limit < need) return 0;
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(Limit) - static_cast<std::uint64_t>(need));
}
