// What the word search reads of a text: bytes as numbers, GBK characters, the first four bytes at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "gbk/CodePage936.h"

namespace zvuti {

inline std::uint32_t ByteAt(const char* bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

/// The first of the four bytes is the lowest of the number.
inline std::uint32_t FourBytesAt(const char* bytes) {
  return ByteAt(bytes, 0) | ByteAt(bytes, 1) << 8 | ByteAt(bytes, 2) << 16 | ByteAt(bytes, 3) << 24;
}

/// Multiplies by 2^32 divided by the golden ratio (Knuth, The Art of Computer Programming 3, section 6.4).
/// Use the upper bits of the result.
constexpr std::uint32_t HashOf(std::uint32_t key) { return key * 0x9E3779B1u; }

/// One character, folded to its capital.
struct Character {
  std::uint16_t code;   // the byte, or lead byte * 256 + trail byte
  std::uint8_t length;  // in bytes
};

/// REQUIRES: a character of a zero-terminated text starts at `text`. A lead byte before the terminator is a
/// character of its own.
inline Character CharacterAt(const char* text) {
  if (gbk::CharLength(text) == 2)
    return {static_cast<std::uint16_t>(ByteAt(text, 0) << 8 | ByteAt(text, 1)), 2};
  return {static_cast<unsigned char>(gbk::ToUpper(*text)), 1};
}

/// Steps through a text byte by byte and marks trail bytes: B0 A1 41 gives 0xB0, 0x1A1 and 0x41.
class ByteSteps {
 public:
  static constexpr std::uint16_t kTrail = 0x100;

  explicit ByteSteps(bool isTrail = false) : isTrail_(isTrail) {}

  /// True if the next byte is the trail byte of a character of the text.
  bool IsTrail() const { return isTrail_; }
  /// The next byte, folded to its capital unless it is a trail byte. REQUIRES: it is at `text`, which is
  /// zero-terminated.
  std::uint16_t Next(const char* text) {
    const std::uint16_t label = NextAsItIs(text);
    return label < kTrail ? static_cast<unsigned char>(gbk::ToUpper(*text)) : label;
  }
  std::uint16_t NextAsItIs(const char* text) {
    const bool isTrail = isTrail_;
    isTrail_ = !isTrail && gbk::CharLength(text) == 2;
    return static_cast<std::uint16_t>(ByteAt(text, 0) | (isTrail ? kTrail : 0u));
  }

 private:
  bool isTrail_;
};

/// True if a character starts at `index`. REQUIRES: `known` <= `index`, and a character starts at `known`.
///
/// The byte after one that is not a lead byte starts a character. In a run of lead bytes each first one takes
/// the next one as its trail byte, so a character starts after every even number of them.
inline bool IsCharacterStart(std::string_view text, std::size_t known, std::size_t index) {
  std::size_t run = index;
  while (run > known && gbk::IsLeadByte(text[run - 1])) --run;
  return (index - run) % 2 == 0;
}

/// The first four bytes of a text or word, folded. If the fourth is the first half of a character, that
/// character counts as outside: 'abc' and the lead byte of a Chinese character have `wholeBytes` 3.
struct Prefix {
  static constexpr std::size_t kBytes = 4;

  /// REQUIRES: four bytes at `text`, where a character starts.
  explicit Prefix(const char* text) {
    if (gbk::IsLeadByte(text[0]) && gbk::IsLeadByte(text[2])) {  // two Chinese characters, nearly always
      bytes = FourBytesAt(text);
      return;
    }
    bool isTrail = false;
    for (std::size_t i = 0; i < kBytes; ++i) {
      const char folded = isTrail ? text[i] : gbk::ToUpper(text[i]);
      bytes |= std::uint32_t{static_cast<unsigned char>(folded)} << 8 * i;
      isTrail = !isTrail && gbk::IsLeadByte(text[i]);
    }
    if (isTrail) wholeBytes = kBytes - 1;
  }

  std::uint32_t bytes = 0;
  std::size_t wholeBytes = kBytes;  // length of the characters that lie within: 3 or 4
};

}  // namespace zvuti
