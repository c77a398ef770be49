// The system's own printf, for the conversions that the formatter leaves to it, and where the systems part.
#pragma once

#include <cstddef>

namespace zvuti {

/// What the system's printf calls the widths of integers, and of a long double.
struct SystemPrefixes {
  const char *charInt, *shortInt, *longInt, *longLong, *max, *size, *difference, *longDouble;
};

#if defined(_WIN32)
// The runtime library knows no hh, and takes long double for another name of double.
constexpr SystemPrefixes kSystemPrefixes = {"h", "h", "l", "I64", "I64", "", "", ""};
using SystemLongDouble = double;
constexpr char kSystemCapitalF = 'f';
/// The flag 0 fills with zeros in front of texts, and of numbers with a precision, too.
constexpr bool kZeroFlagAlwaysFills = true;
#else
constexpr SystemPrefixes kSystemPrefixes = {"hh", "h", "l", "ll", "j", "z", "t", "L"};
using SystemLongDouble = long double;
constexpr char kSystemCapitalF = 'F';
constexpr bool kZeroFlagAlwaysFills = false;
#endif

/// Prints into `room` bytes, of which the last may hold a terminator or text when the text is cut, and
/// returns the length of the whole text; negative when the system refuses.
int SystemPrintf(char* out, std::size_t room, const char* format, ...);

}  // namespace zvuti
