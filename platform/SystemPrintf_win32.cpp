#include "platform/SystemPrintf.h"

#include <cstdarg>
#include <cstdio>

namespace zvuti {

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

}  // namespace zvuti
