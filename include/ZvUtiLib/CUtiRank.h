// CUtiRank: converts a player's score to the name of a rank.
//
// Use an object from one thread at a time; concurrent lookups are allowed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>

/// One record of a rank file.
struct RankEntry {
  std::string name;            ///< in GBK, as in the file
  std::int64_t threshold = 0;  ///< lowest score of the rank, in hundreds of points
};

/// The rank table of a game. It is read from the file "Rank.ini" in the game's folder: pairs of a name
/// without blanks and a threshold, separated by white space, with rising thresholds. The word "[INTRODUCE]"
/// in place of a name ends the table; free text may follow it. The file is GBK without a byte order mark: a
/// UTF-8 mark becomes part of the first name, since EF BB is also a GBK character.
class ZVUTILIB_API CUtiRank {
 public:
  virtual ~CUtiRank();
  CUtiRank();
  CUtiRank(const CUtiRank& other);
  CUtiRank& operator=(const CUtiRank& other);

  /// Replaces the table with the content of the game's file. Returns false, with an empty table, if the file
  /// does not exist or cannot be opened or read. A record that is not a name and a number ends the table: the
  /// records before it stay, and the result is true. Throws std::bad_alloc, leaving the table empty.
  bool LoadRankConfig(unsigned long gameId);
  /// Returns the name, in GBK, of the rank for `score` points: score / 100, rounded toward zero, is compared
  /// with the thresholds. A score below the first threshold gets the first name. Returns "" for an empty
  /// table.
  std::string GetRank(std::int64_t score) const;

 private:
  std::vector<RankEntry> entries_;  // in file order
};
