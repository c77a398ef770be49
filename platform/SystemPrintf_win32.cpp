#include "platform/SystemPrintf.h"

#include <climits>
#include <cstdarg>
#include <cstdio>

namespace zvuti {

// The runtime library does not support hh, and treats long double as double.
constinit const SystemPrintfTraits kSystemPrintf = {
    .plainInt = "",
    .charInt = "h",
    .shortInt = "h",
    .longInt = "l",
    .longLong = "I64",
    .max = "I64",
    .size = "",
    .difference = "",
    .longDouble = "",
    .capitalF = 'f',
    .zeroFlagFill = '0',
    .largestZeroFilled = INT_MAX,
};

// Calls the runtime library's functions. The compiler replaces the standard names with functions that follow
// C99, which differ in exponents, pointers and infinities.
int SystemPrintf(char* out, std::size_t room, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = _vscprintf(format, arguments);
  va_end(arguments);
  if (length > 0 && room > 0) {
    va_start(arguments, format);
    _vsnprintf(out, room, format, arguments);
    va_end(arguments);
  }
  return length;
}

int SystemPrintLongDouble(char* out, std::size_t room, const char* format, int width, int precision,
                          long double value) {
  return SystemPrintf(out, room, format, width, precision, static_cast<double>(value));
}

}  // namespace zvuti
