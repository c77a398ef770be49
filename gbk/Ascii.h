// Classification of ASCII bytes, independent of the locale. Digits and white space are below 0x40, and GBK
// trail bytes are not, so it is safe to test a GBK text byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace zvuti {

/// True for 0 to 9.
constexpr bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

/// True for a space and for bytes 9 to 13, the white space of the "C" locale.
constexpr bool IsSpace(char byte) { return byte == ' ' || (byte >= 9 && byte <= 13); }

/// Length of the ASCII prefix of `text`, in bytes or UTF-16 units. Tests eight bytes at a time: text in files
/// and messages is mostly ASCII, which callers copy in loops much faster than their general ones.
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

/// True if all bytes are below 0x80. Such a text is the same in GBK and in UTF-8.
inline bool IsAscii(std::string_view text) { return AsciiRun(text) == text.size(); }

}  // namespace zvuti
