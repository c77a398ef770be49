// Code page 936 (GBK): stepping through text, case and conversion. No other code knows lead bytes.
//
// Text must be stepped through from its start. A lead byte and the byte after it form one character, whatever
// that second byte is; a lead byte at the end of the text is a character by itself. Example: "A", 0x81, "A",
// 0x81 are three characters of 1, 2 and 1 bytes. Nothing depends on the locale. All functions are pure and
// may be called on any thread.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace zvuti::gbk {

/// True for 0x81 to 0xFE, the first bytes of double-byte characters.
constexpr bool IsLeadByte(char byte) {
  return static_cast<unsigned char>(static_cast<unsigned char>(byte) - 0x81) < 0xFE - 0x81 + 1;
}

/// True for a lead byte and a trail byte, 0x40 to 0xFE but 0x7F. All these pairs are characters: converted to
/// Unicode and back they are the same. (Some are user-defined.)
constexpr bool IsDoubleByte(char lead, char trail) {
  const auto byte = static_cast<unsigned char>(trail);
  return IsLeadByte(lead) && byte >= 0x40 && byte <= 0xFE && byte != 0x7F;
}

/// Number of bytes that AreDoubleBytes tests at once: the size of a register, which is even.
inline constexpr std::size_t kRegister = sizeof(std::size_t);

/// True if every second byte, from the first on, is a lead byte. If the first byte starts a character, all
/// bytes then belong to double-byte characters. REQUIRES: `length` is a multiple of kRegister, and no byte is
/// zero.
///
/// `first` has every second byte, each in 16 bits, so no sum carries into the next one. Adding 0x7F sets bit
/// 8 for 0x81 to 0xFF; adding 1 sets it for 0xFF only.
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

/// Length in bytes, 1 or 2, of the character at `text` in a zero-terminated text; 1 at the terminator.
constexpr std::size_t CharLength(const char* text) { return IsLeadByte(text[0]) && text[1] != '\0' ? 2 : 1; }

/// The same at `index` in a text of known length. REQUIRES: index < text.size(). Zero bytes are ordinary
/// characters here, but never trail bytes, so both functions step through a text in the same way.
constexpr std::size_t CharLength(std::string_view text, std::size_t index) {
  return IsLeadByte(text[index]) && index + 1 < text.size() && text[index + 1] != '\0' ? 2 : 1;
}

/// The longest prefix of `text` that has at most `limit` bytes and does not end within a character.
std::string_view CutWhole(std::string_view text, std::size_t limit);

/// Byte index of the first occurrence of `word` in `text` at or after `start`, or npos. Steps from character
/// to character, starting at `start`, and compares bytes. An empty word is found at `start` if `start` is at
/// most text.size().
std::size_t Find(std::string_view text, std::string_view word, std::size_t start = 0);

/// Convert a to z to upper case, or A to Z to lower case; other bytes stay the same. Only for single-byte
/// characters, since a trail byte can have the value of a letter.
constexpr char ToUpper(char byte) {
  return static_cast<unsigned char>(byte - 'a') < 26 ? static_cast<char>(byte - 'a' + 'A') : byte;
}
constexpr char ToLower(char byte) {
  return static_cast<unsigned char>(byte - 'A') < 26 ? static_cast<char>(byte - 'A' + 'a') : byte;
}

/// Converts a to z to upper case in place. Trail bytes and double-byte letters stay the same.
void FoldToUpper(char* text, std::size_t length);
/// Converts A to Z to lower case in the same way.
void FoldToLower(char* text, std::size_t length);

/// Converts GBK to UTF-16. A lone lead byte, or a pair of lead and trail byte that is not a character,
/// becomes one question mark. 0x80 is the euro sign; user-defined characters map to the private use area.
std::u16string ToUtf16(std::string_view text);
/// The same into `out`, which must have room for text.size() units. Returns the number of units written.
std::size_t ToUtf16(std::string_view text, char16_t* out);
/// Converts UTF-16 to GBK. A character outside GBK becomes its best fit if the code page defines one,
/// otherwise a question mark (two for a surrogate pair).
std::string FromUtf16(std::u16string_view text);

/// Converts GBK to UTF-8, with question marks as in ToUtf16. Sets `isWhole` to whether every byte was part of
/// a valid character.
std::string ToUtf8(std::string_view text, bool* isWhole = nullptr);
/// Converts UTF-8 to GBK, with best fits and question marks as in FromUtf16. Every byte that is not part of a
/// well-formed sequence becomes a question mark.
std::string FromUtf8(std::string_view text);

/// Removes one code point from the front of a UTF-8 text and returns it. If the sequence is malformed,
/// removes one byte and returns U+FFFD. REQUIRES: the first byte is not ASCII.
char32_t TakeUtf8(std::string_view& text);
/// Converts UTF-16 to UTF-8. A surrogate without its partner becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view text);
/// Converts UTF-8 to UTF-16. Every byte that is not part of a well-formed sequence becomes U+FFFD.
std::u16string Utf8ToUtf16(std::string_view text);
/// The same into `out`, which must have room for text.size() units. Returns the number of units written.
std::size_t Utf8ToUtf16(std::string_view text, char16_t* out);

}  // namespace zvuti::gbk
