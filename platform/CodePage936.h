// Code page 936 (GBK): the one place that knows lead bytes, stepping and conversion.
//
// The page is fixed; nothing here asks the locale. Text is walked from its start: a lead byte takes
// the byte behind it along, whatever that byte is, unless it is the end of the text; a lead byte at
// the end is a character of its own. All functions are pure and may run on any thread.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace zvuti::gbk {

/// True for 0x81 to 0xFE, the bytes that begin a double-byte character.
constexpr bool IsLeadByte(char byte) {
  return static_cast<unsigned char>(static_cast<unsigned char>(byte) - 0x81) < 0xFE - 0x81 + 1;
}

/// Bytes that AreLeadBytes looks at, as many as a register holds; an even number.
inline constexpr std::size_t kRegister = sizeof(std::size_t);

/// Whether kRegister bytes are lead bytes, all of them. No sum carries into the next byte: the first one has
/// the highest bit of each byte but 0x80, the second one of 0xFF only.
inline bool AreLeadBytes(const char* bytes) {
  constexpr std::size_t kOnes = ~std::size_t{0} / 0xFF;
  constexpr std::size_t kHigh = kOnes * 0x80;
  std::size_t all;
  std::memcpy(&all, bytes, sizeof all);
  const std::size_t low = all & ~kHigh;
  return (all & (low + kOnes * 0x7F) & ~(low + kOnes) & kHigh) == kHigh;
}

/// Whether the `length` bytes, a multiple of kRegister, are double-byte characters, all of them, when a
/// character begins with the first and none is zero. Only each second byte matters. No sum carries into the
/// next pair: the first one has the highest bit but one of 0x81 to 0xFF, the second one of 0xFF only.
inline bool AreDoubleBytes(const char* bytes, std::size_t length) {
  constexpr std::size_t kOnes = ~std::size_t{0} / 0xFFFF;
  std::size_t leads = kOnes * 0x100;
  for (std::size_t i = 0; i < length; i += kRegister) {
    std::size_t all;
    std::memcpy(&all, bytes + i, sizeof all);
    const std::size_t first = all & kOnes * 0xFF;
    leads &= (first + kOnes * 0x7F) & ~(first + kOnes);
  }
  return leads == kOnes * 0x100;
}

/// Bytes of the character at `text`, 1 or 2, in a zero-terminated text; 1 at the terminator.
constexpr std::size_t CharLength(const char* text) { return IsLeadByte(text[0]) && text[1] != '\0' ? 2 : 1; }

/// Bytes of the character at `index` of a text with a known length; needs index < text.size().
/// A zero byte is an ordinary byte here, but no trail byte, so both forms walk a text alike.
constexpr std::size_t CharLength(std::string_view text, std::size_t index) {
  return IsLeadByte(text[index]) && index + 1 < text.size() && text[index + 1] != '\0' ? 2 : 1;
}

/// Longest prefix of `text` that has at most `limit` bytes and ends with a whole character.
std::string_view CutWhole(std::string_view text, std::size_t limit);

/// Byte index of the first occurrence of `word` in `text` at or after `start`, or npos. Candidates
/// are the starts of characters, stepping from `start`; the comparison is byte by byte.
/// An empty word is found at `start`, if that lies within the text or at its end.
std::size_t Find(std::string_view text, std::string_view word, std::size_t start = 0);

/// The capital of a to z, the small letter of A to Z; any other byte stays. For single bytes only: a trail
/// byte can have the value of a letter.
constexpr char ToUpper(char byte) {
  return static_cast<unsigned char>(byte - 'a') < 26 ? static_cast<char>(byte - 'a' + 'A') : byte;
}
constexpr char ToLower(char byte) {
  return static_cast<unsigned char>(byte - 'A') < 26 ? static_cast<char>(byte - 'A' + 'a') : byte;
}

/// Folds the letters a to z to capitals in place; trail bytes and double-byte letters stay.
void FoldToUpper(char* text, std::size_t length);
/// Folds A to Z to small letters in the same way.
void FoldToLower(char* text, std::size_t length);

/// UTF-16 of GBK bytes. A lone lead byte, or one with a trail that makes no character, becomes a
/// question mark together with that trail. 0x80 is the euro sign, user-defined areas are private use.
std::u16string ToUtf16(std::string_view text);
/// The same into `out`, which must have room for text.size() units; returns how many it wrote.
std::size_t ToUtf16(std::string_view text, char16_t* out);
/// GBK bytes of UTF-16. Characters outside GBK become their best fit where the page has one,
/// a question mark otherwise (two for a surrogate pair).
std::string FromUtf16(std::u16string_view text);

/// UTF-8 of GBK bytes, replaced as by ToUtf16. `isWhole` tells whether nothing was replaced: each byte is
/// part of a character that the page has.
std::string ToUtf8(std::string_view text, bool* isWhole = nullptr);
/// GBK bytes of UTF-8; every byte that is not part of a well-formed sequence becomes a question mark.
std::string FromUtf8(std::string_view text);

/// UTF-8 of UTF-16; a surrogate without its partner becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view text);
/// UTF-16 of UTF-8; every byte that is not part of a well-formed sequence becomes U+FFFD.
std::u16string Utf8ToUtf16(std::string_view text);
/// The same into `out`, which must have room for text.size() units; returns how many it wrote.
std::size_t Utf8ToUtf16(std::string_view text, char16_t* out);

}  // namespace zvuti::gbk
