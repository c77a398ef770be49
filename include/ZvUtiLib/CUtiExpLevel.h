// CUtiExpLevel: from a player's experience to the level, and back.
//
// An object serves one thread at a time; lookups alone may run on several.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <ZvUtiLib/Export.h>

/// One record of a level file.
struct ExpLevelEntry {
  int level = 0;         ///< the number as the file gives it
  std::int64_t exp = 0;  ///< experience from which the level applies
};

/// The level table of a game: a text file of number pairs, level and experience, with white space
/// between all numbers; a UTF-8 byte order mark before the first one is skipped. It is to list the levels
/// 1, 2, 3 and so on with rising experience; records are taken as they come.
class ZVUTILIB_API CUtiExpLevel {
 public:
  virtual ~CUtiExpLevel();
  CUtiExpLevel();
  CUtiExpLevel(const CUtiExpLevel& other);
  CUtiExpLevel& operator=(const CUtiExpLevel& other);

  /// Replaces the table by the content of the file at `path`; returns 1, or 0 with an empty table when
  /// there is no such file, or it cannot be opened or read. A record that is not two numbers ends the
  /// table: those before it stay, and the result is 1. Throws std::bad_alloc, with an empty table.
  int LoadLevelConfig(const std::string& path);
  /// The level of a player with `exp`: that of the last record that is not above it, of the first
  /// record where all are. 1 on an empty table.
  int GetLevelByExp(std::int64_t exp) const;
  /// The experience of the record at place `level`, counted from 1; 0 where there is none.
  std::int64_t GetExpByLevel(int level) const;

 private:
  std::vector<ExpLevelEntry> entries_;  // in the order of the file
};
