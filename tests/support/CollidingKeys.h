// Keys that all fall into one bucket of a dictionary of up to 65,536 buckets.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/PlainDict.h"

namespace test {

/// Up to 160,000 keys of 16 small letters and digits, in ascending order. Each is four out of 20 blocks
/// after which the low 16 bits of the hash are what they were before.
inline std::vector<std::string> CollidingKeys(std::size_t count) {
  constexpr std::size_t kBlocks = 20;
  const std::string letters = "0123456789abcdefghijklmnopqrstuvwxyz";
  std::vector<std::string> blocks;
  for (std::uint32_t number = 0; blocks.size() < kBlocks; ++number) {
    std::string block(4, '0');
    for (std::uint32_t i = 4, rest = number; i > 0; rest /= 36) block[--i] = letters[rest % 36];
    if (((ExpectedHash(block) ^ ExpectedHash("")) & 0xFFFF) == 0) blocks.push_back(block);
  }
  std::vector<std::string> keys;
  for (std::size_t i = 0; i < count; ++i) {
    keys.push_back(blocks[i / 8000 % kBlocks] + blocks[i / 400 % kBlocks] + blocks[i / 20 % kBlocks] +
                   blocks[i % kBlocks]);
  }
  return keys;
}

}  // namespace test
