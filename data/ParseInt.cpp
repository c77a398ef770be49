#include <ZvUtiLib/data/ParseInt.h>

#include <algorithm>
#include <cstdlib>

std::int32_t ParseInt(const char* text, unsigned length) {
  constexpr unsigned kLongest = 31;
  char buffer[kLongest + 1] = {};
  for (unsigned i = 0; text && i < std::min(length, kLongest) && text[i] != '\0'; ++i) buffer[i] = text[i];
  // long has 64 bits on some targets, and results must not depend on that.
  const long long value = std::strtoll(buffer, nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long long>(value, INT32_MIN, INT32_MAX));
}
