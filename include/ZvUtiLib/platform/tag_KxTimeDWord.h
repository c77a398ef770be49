// tag_KxTimeDWord: a local calendar time packed into 32 bits.
#pragma once

#include <cstdint>

/// From the high end: year minus 2000 (6 bits), month (4), day (5), hour (5), minute (6), second (6). It has
/// no time zone and no validity flag. Fields are not checked against a calendar.
struct tag_KxTimeDWord {
  std::uint32_t word = 0;  ///< the six fields

  /// Stores the low 32 bits of `value` unchanged.
  void operator=(unsigned long value) { word = static_cast<std::uint32_t>(value); }  // NOLINT(*-assign*)

  int Year() const { return 2000 + static_cast<int>(word >> 26); }   ///< 2000 to 2063
  int Month() const { return static_cast<int>(word >> 22 & 0xF); }   ///< 0 to 15
  int Day() const { return static_cast<int>(word >> 17 & 0x1F); }    ///< 0 to 31
  int Hour() const { return static_cast<int>(word >> 12 & 0x1F); }   ///< 0 to 31
  int Minute() const { return static_cast<int>(word >> 6 & 0x3F); }  ///< 0 to 63
  int Second() const { return static_cast<int>(word & 0x3F); }       ///< 0 to 63
};
