#include "data/wire/RecordType.h"

#include <cstring>

namespace zvuti::wire {

std::int64_t NumberRef::Get() const {
  std::uint64_t bits = 0;
  std::memcpy(&bits, at, bytes);
  if (isSigned && bytes < sizeof bits) {
    const std::uint64_t sign = std::uint64_t{1} << (8 * bytes - 1);
    bits = (bits ^ sign) - sign;
  }
  return static_cast<std::int64_t>(bits);
}

void NumberRef::Set(std::int64_t value) const { std::memcpy(at, &value, bytes); }

}  // namespace zvuti::wire
