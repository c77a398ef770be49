// The measuring pass of CTextString::Format: determines how much room a format and its arguments get before
// anything is written.
//
// The result determines the capacity of the string, so it must stay exact to the byte, even where it is
// generous or too small. It is too small in rare cases: a negative star, unknown letters, 16-bit text that
// needs two bytes for a character.
#pragma once

#include <cstdarg>
#include <cstdint>

namespace zvuti {

struct FormatMeasure {
  /// Bytes to reserve; 0xFFFFFFFF if that is more than a string can hold.
  std::uint32_t total = 0;
  /// True if a conversion has the prefix ll directly before d.
  bool hasLongLong = false;
};

/// Measures a format without advancing the caller's argument list. Consumes arguments exactly as writing
/// does, including those that get no room.
FormatMeasure MeasureFormat(const char* format, va_list arguments);

}  // namespace zvuti
