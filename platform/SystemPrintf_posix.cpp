#include "platform/SystemPrintf.h"

#include <cstdarg>
#include <cstdio>

namespace zvuti {

int SystemPrintf(char* out, std::size_t room, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(out, room, format, arguments);
  va_end(arguments);
  return length;
}

}  // namespace zvuti
