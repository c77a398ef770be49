// Reproducible random numbers and texts.
#pragma once

#include <random>
#include <string>

namespace bench {

/// A number from 0 to `bound` - 1. The standard distributions give different numbers in different standard
/// libraries; this function does not.
inline unsigned Below(std::mt19937& random, unsigned bound) {
  return static_cast<unsigned>(random()) % bound;
}

/// A text of `characters` common GBK characters, two bytes each.
std::string Hanzi(std::mt19937& random, unsigned characters);

}  // namespace bench
