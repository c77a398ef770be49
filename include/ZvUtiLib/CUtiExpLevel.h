// CUtiExpLevel: converts a player's experience to a level, and a level to experience.
//
// Use an object from one thread at a time; concurrent lookups are allowed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>

/// One record of a level file.
struct ExpLevelEntry {
  int level = 0;         ///< the number in the file
  std::int64_t exp = 0;  ///< experience from which the level applies
};

/// The level table of a game. It is read from a text file of number pairs, level and experience, with white
/// space between all numbers. A UTF-8 byte order mark at the start is skipped. The file should list the
/// levels 1, 2, 3 and so on with rising experience; this is not checked, and records keep their order.
class ZVUTILIB_API CUtiExpLevel {
 public:
  virtual ~CUtiExpLevel();
  CUtiExpLevel();
  CUtiExpLevel(const CUtiExpLevel& other);
  CUtiExpLevel& operator=(const CUtiExpLevel& other);

  /// Replaces the table with the content of the file at `path` and returns 1. Returns 0, with an empty table,
  /// if the file does not exist or cannot be opened or read. A record that is not two numbers ends the table:
  /// the records before it stay, and the result is 1. Throws std::bad_alloc, leaving the table empty.
  int LoadLevelConfig(const std::string& path);
  /// Returns the level of a player with experience `exp`. In a table of rising experience, that is the level
  /// of the last record whose experience is at most `exp`, or of the first record if all are above it.
  /// Returns 1 for an empty table.
  int GetLevelByExp(std::int64_t exp) const;
  /// Returns the experience of record number `level`, counted from 1; 0 if there is no such record.
  std::int64_t GetExpByLevel(int level) const;

 private:
  std::vector<ExpLevelEntry> entries_;  // in file order
};
