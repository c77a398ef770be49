#include "platform/SystemPrintf.h"

#include <cstdarg>
#include <cstdio>

namespace zvuti {

constinit const SystemPrintfTraits kSystemPrintf = {
    .plainInt = "",
    .charInt = "hh",
    .shortInt = "h",
    .longInt = "l",
    .longLong = "ll",
    .max = "j",
    .size = "z",
    .difference = "t",
    .longDouble = "L",
    .capitalF = 'F',
    .zeroFlagFill = ' ',
    .largestZeroFilled = -1,
};

int SystemPrintf(char* out, std::size_t room, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(out, room, format, arguments);
  va_end(arguments);
  return length;
}

int SystemPrintLongDouble(char* out, std::size_t room, const char* format, int width, int precision,
                          long double value) {
  return SystemPrintf(out, room, format, width, precision, value);
}

}  // namespace zvuti
