// The host system's printf, to which the formatter leaves some conversions, and how the systems differ.
#pragma once

#include <cstddef>

namespace zvuti {

/// The length modifiers of the host system's printf, for integers of each width and for long double.
struct SystemPrefixes {
  const char *charInt, *shortInt, *longInt, *longLong, *max, *size, *difference, *longDouble;
};

#if defined(_WIN32)
// The runtime library does not support hh, and treats long double as double.
constexpr SystemPrefixes kSystemPrefixes = {"h", "h", "l", "I64", "I64", "", "", ""};
using SystemLongDouble = double;
constexpr char kSystemCapitalF = 'f';
/// The flag 0 also pads strings and numbers with a precision with zeros.
constexpr bool kZeroFlagAlwaysFills = true;
#else
constexpr SystemPrefixes kSystemPrefixes = {"hh", "h", "l", "ll", "j", "z", "t", "L"};
using SystemLongDouble = long double;
constexpr char kSystemCapitalF = 'F';
constexpr bool kZeroFlagAlwaysFills = false;
#endif

/// Prints into the `room` bytes at `out` and returns the length of the whole text, or a negative number on
/// failure. If the text does not fit, the last byte may or may not be a terminator.
int SystemPrintf(char* out, std::size_t room, const char* format, ...);

}  // namespace zvuti
