// Converts between GBK, used in files, and UTF-8, used on the terminal. All conversions happen here.
//
// GBK means code page 936 including its private-use characters. About a hundred pairs to which later
// standards assigned other characters are not text here; they are shown as bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// Converts GBK to UTF-8. Each byte of an invalid byte or pair becomes \x and two digits.
std::string Shown(std::string_view gbk);

/// Returns the index of the first byte that is not part of a character, or npos.
std::size_t FindBroken(std::string_view gbk);

/// Returns the index of the first character of `utf8` that is not in GBK or not valid UTF-8, or npos.
std::size_t FindForeign(std::string_view utf8);
/// Converts UTF-8 to GBK. If a character is not in GBK, throws a Failure that names `what`, the source of the
/// text.
std::string ToGbk(std::string_view utf8, const std::string& what);

/// Returns true if the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view bytes);
/// Returns true if the bytes are UTF-8 with at least one character of three or more bytes. GBK text almost
/// never is.
bool LooksLikeUtf8(std::string_view bytes);

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
/// Returns true if the bytes start with a UTF-8 byte order mark.
bool HasUtf8Mark(std::string_view bytes);

/// Names the first character of `utf8`: "U+1F600", or "the byte 0xFF" if it is not valid UTF-8.
std::string NameOfFirst(std::string_view utf8);

/// Converts bytes from a named encoding to UTF-8. Returns false if the encoding is unknown or the bytes are
/// invalid in it.
bool FromNamed(const std::string& encoding, std::string_view bytes, std::string& utf8);

}  // namespace tool
