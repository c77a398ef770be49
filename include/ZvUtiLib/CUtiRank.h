// CUtiRank: from a player's score to the name of the rank.
//
// An object serves one thread at a time; lookups alone may run on several.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>

/// One record of a rank file.
struct RankEntry {
  std::string name;            ///< in GBK, as it stands in the file
  std::int64_t threshold = 0;  ///< hundreds of points from which the rank applies
};

/// The rank table of a game: the file "Rank.ini" in the game's folder, pairs of a name without blanks
/// and a threshold, with white space between them, in the order of rising thresholds. The word
/// "[INTRODUCE]" in the place of a name ends the table; free text may follow it. The file is GBK without
/// a byte order mark: a UTF-8 one becomes part of the first name, since EF BB is a GBK character, too.
class ZVUTILIB_API CUtiRank {
 public:
  virtual ~CUtiRank();
  CUtiRank();
  CUtiRank(const CUtiRank& other);
  CUtiRank& operator=(const CUtiRank& other);

  /// Replaces the table by the game's file. False with an empty table when there is no such file, or it
  /// cannot be opened or read. A record that is not a name and a number ends the table: those before it
  /// stay, and the result is true. Throws std::bad_alloc, with an empty table.
  bool LoadRankConfig(unsigned long gameId);
  /// The name of the rank for `score` points, in GBK: score / 100, cut toward zero, against the
  /// thresholds. Below the first threshold it is the first name, on an empty table "".
  std::string GetRank(std::int64_t score) const;

 private:
  std::vector<RankEntry> entries_;  // in the order of the file
};
