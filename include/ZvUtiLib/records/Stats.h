// PlayerGameStats: a player's results, and a limit with what was used of it.
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
  std::int64_t Limit = 0;  ///< upper bound of what can be used
  std::int64_t Used = 0;   ///< what was used of Limit
  std::string Text;

  /// Games won, lost, drawn and abandoned; a sum beyond 32 bits wraps.
  int GetTotalGames() const;
  /// Games won as a fraction of all games; 0 without games.
  float GetWinRatio() const;
  /// Games abandoned as a fraction of all games; 0 without games.
  float GetFleeRatio() const;
  /// What remains of Limit once `amount`, whose sign does not matter, is used too; 0 when Limit does not
  /// suffice. Nothing is changed.
  std::int64_t GetRemainder(std::int64_t amount) const;
};

ZVUTILIB_RECORD(PlayerGameStats)
