// What a byte of ASCII is, whatever the locale. Digits and white space lie below 0x40, where no GBK
// character has its trail byte, so both may be asked byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace zvuti {

/// True for 0 to 9.
constexpr bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

/// True for a blank and for 9 to 13, the white space of the "C" locale.
constexpr bool IsSpace(char byte) { return byte == ' ' || (byte >= 9 && byte <= 13); }

/// Bytes, or UTF-16 units, below 0x80 that `text` begins with, looked at eight bytes at a time: most text
/// in files and messages is such a run, and the loops that copy one are far faster than the general ones.
template <class Unit>
std::size_t AsciiRun(std::basic_string_view<Unit> text) {
  constexpr std::size_t kStep = 8 / sizeof(Unit);
  constexpr std::uint64_t kHighBits = sizeof(Unit) == 1 ? 0x8080808080808080u : 0xFF80FF80FF80FF80u;
  std::size_t length = 0;
  for (std::uint64_t word; length + kStep <= text.size(); length += kStep) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if (word & kHighBits) break;
  }
  while (length < text.size() && static_cast<std::make_unsigned_t<Unit>>(text[length]) < 0x80) ++length;
  return length;
}

/// True where no byte has its high bit set: such text is the same in GBK and in UTF-8.
inline bool IsAscii(std::string_view text) { return AsciiRun(text) == text.size(); }

}  // namespace zvuti
