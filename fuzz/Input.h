// Input: takes the bytes of a fuzz input apart into numbers and texts.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "fuzz/Check.h"

namespace fuzz {

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : bytes_(BytesOf(data, size)) {}

  bool IsEmpty() const { return bytes_.empty(); }
  /// The next bytes as a number; missing ones are zero.
  template <class T>
  T Number() {
    T value = 0;
    const std::string_view taken = Take(sizeof value);
    std::memcpy(&value, taken.data(), taken.size());
    return value;
  }
  /// A number below `end`, from one byte.
  unsigned Below(unsigned end) { return Number<std::uint8_t>() % end; }
  /// A text of up to `most` bytes: its length in one byte, and what is there of it.
  std::string Text(unsigned most) { return std::string(Take(Below(most + 1))); }

 private:
  std::string_view Take(std::size_t count) {
    const std::string_view taken = bytes_.substr(0, count);
    bytes_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view bytes_;
};

/// True for about one input of `all`: for what is too slow to be tried with each one.
inline bool IsChosen(std::string_view input, std::uint32_t all) {
  std::uint32_t hash = 2166136261;
  for (const char byte : input) hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619;
  return (hash >> 8) % all == 0;
}

}  // namespace fuzz
