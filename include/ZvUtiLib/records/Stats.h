// PlayerGameStats: a player's game results, and a limit with the amount used.
#pragma once

#include <cstdint>
#include <string>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/records/RecordOperators.h>

struct ZVUTILIB_API PlayerGameStats {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::int32_t WinCount = 0;
  std::int32_t LoseCount = 0;
  std::int32_t DrawCount = 0;
  std::int32_t FleeCount = 0;  ///< games abandoned
  std::uint32_t Value3 = 0;
  std::uint32_t Value4 = 0;
  std::int64_t Amount1 = 0;
  std::int64_t Limit = 0;  ///< amount that may be used
  std::int64_t Used = 0;   ///< amount used so far
  std::string Text;

  /// Returns the games won, lost, drawn and abandoned in total; a sum beyond 32 bits wraps.
  int GetTotalGames() const;
  /// Returns the games won as a fraction of all games; 0 if there are no games.
  float GetWinRatio() const;
  /// Returns the games abandoned as a fraction of all games; 0 if there are no games.
  float GetFleeRatio() const;
  /// Returns what would remain of Limit after also using `amount`, or 0 if Limit is too small. The sign of
  /// `amount` is ignored. Nothing is changed.
  std::int64_t GetRemainder(std::int64_t amount) const;
};

ZVUTILIB_RECORD(PlayerGameStats)
