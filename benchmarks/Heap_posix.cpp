#include <malloc.h>

#include "benchmarks/Common.h"

namespace bench {

std::int64_t HeldBytes() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
}

}  // namespace bench
