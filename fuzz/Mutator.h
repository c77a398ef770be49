// What the mutators share.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

/// libFuzzer's own mutation, on bytes. Returns the new size.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace fuzz {

/// Puts `bytes` after the first `kept` bytes of the input, cut to `most` in all. Returns the new size.
inline std::size_t PutMutated(const std::string& bytes, std::uint8_t* data, std::size_t kept,
                              std::size_t most) {
  const std::size_t count = std::min(bytes.size(), most - std::min(kept, most));
  std::memcpy(data + kept, bytes.data(), count);
  return kept + count;
}

}  // namespace fuzz
