// The host system's printf, to which the formatter leaves some conversions, and how the systems differ.
#pragma once

#include <cstddef>

namespace zvuti {

struct SystemPrintfTraits {
  /// The length modifiers for integers of each width and for long double.
  const char *plainInt, *charInt, *shortInt, *longInt, *longLong, *max, *size, *difference, *longDouble;
  /// The letter that stands for F.
  char capitalF;
  /// What the flag 0 fills strings and characters with.
  char zeroFlagFill;
  /// The largest precision with which the flag 0 fills integers with zeros; -1 stands for no precision.
  int largestZeroFilled;
};

/// Constant-initialised: strings may be formatted before main.
extern const SystemPrintfTraits kSystemPrintf;

/// Prints into the `room` bytes at `out` and returns the length of the whole text, or a negative number on
/// failure. If the text does not fit, the last byte may or may not be a terminator.
int SystemPrintf(char* out, std::size_t room, const char* format, ...);

/// The same for a format of `*`, `.*` and one conversion of a long double, which a system may narrow to
/// double.
int SystemPrintLongDouble(char* out, std::size_t room, const char* format, int width, int precision,
                          long double value);

}  // namespace zvuti
