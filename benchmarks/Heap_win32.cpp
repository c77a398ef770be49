#include <malloc.h>

#include "benchmarks/Common.h"

namespace bench {

std::int64_t HeldBytes() {
  std::int64_t held = 0;
  _HEAPINFO block{};
  while (_heapwalk(&block) == _HEAPOK) {
    if (block._useflag == _USEDENTRY) held += static_cast<std::int64_t>(block._size);
  }
  return held;
}

}  // namespace bench
