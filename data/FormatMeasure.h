// The measuring pass of CTextString::Format: how much room a format and its arguments are given
// before anything is written.
//
// The result decides the capacity of the string, so it is kept to the byte even where it is generous
// or, in odd cases (a negative star, letters that it does not know, 16-bit text that needs two bytes
// for a character), too small for the text.
#pragma once

#include <cstdarg>
#include <cstdint>

namespace zvuti {

struct FormatMeasure {
  /// Bytes to reserve; 0xFFFFFFFF where they are more than a string can have.
  std::uint32_t total = 0;
  /// A conversion has the prefix ll directly before d.
  bool hasLongLong = false;
};

/// Measures a format; the caller's argument list stays where it is. Argument by argument it moves as
/// the writing does, also over those that it gives no room.
FormatMeasure MeasureFormat(const char* format, va_list arguments);

}  // namespace zvuti
