#include "benchmarks/Random.h"

namespace bench {

// Picks from rows 0xB0 to 0xD6 of GB 2312 level 1. The last row, 0xD7, is incomplete and left out.
std::string Hanzi(std::mt19937& random, unsigned characters) {
  std::string text;
  for (unsigned i = 0; i < characters; ++i) {
    text += static_cast<char>(0xB0 + Below(random, 39));
    text += static_cast<char>(0xA1 + Below(random, 94));
  }
  return text;
}

}  // namespace bench
