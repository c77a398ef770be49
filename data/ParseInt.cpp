#include <ZvUtiLib/data/ParseInt.h>

#include <algorithm>

#include "gbk/LeadingInt.h"

std::int32_t ParseInt(const char* text, unsigned length) {
  constexpr unsigned kLongest = 31;
  const unsigned most = std::min(length, kLongest);
  unsigned size = 0;
  while (text && size < most && text[size] != '\0') ++size;
  return zvuti::LeadingInt({text, size});
}
