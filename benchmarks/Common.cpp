#include "benchmarks/Common.h"

#include <malloc.h>

namespace bench {

// The first level of the character set, from 0xB0A1 on; its last row is not full and left out.
std::string Hanzi(std::mt19937& random, unsigned characters) {
  std::string text;
  for (unsigned i = 0; i < characters; ++i) {
    text += static_cast<char>(0xB0 + Below(random, 39));
    text += static_cast<char>(0xA1 + Below(random, 94));
  }
  return text;
}

std::int64_t HeldBytes() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
}

}  // namespace bench
