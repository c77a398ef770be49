// What a byte of ASCII is, whatever the locale. Digits and white space lie below 0x40, where no GBK
// character has its trail byte, so both may be asked byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zvuti {

/// True for 0 to 9.
constexpr bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

/// True for a blank and for 9 to 13, the white space of the "C" locale.
constexpr bool IsSpace(char byte) { return byte == ' ' || (byte >= 9 && byte <= 13); }

/// True where no byte has its high bit set: such text is the same in GBK and in UTF-8.
inline bool IsAscii(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080u;
  std::uint64_t word = 0;
  if (text.size() < sizeof word) {
    for (const char byte : text) word |= static_cast<unsigned char>(byte);
    return (word & kHighBits) == 0;
  }
  const std::size_t last = text.size() - sizeof word;  // the last word overlaps the one before
  for (std::size_t i = 0; i < last; i += sizeof word) {
    std::memcpy(&word, text.data() + i, sizeof word);
    if (word & kHighBits) return false;
  }
  std::memcpy(&word, text.data() + last, sizeof word);
  return (word & kHighBits) == 0;
}

}  // namespace zvuti
