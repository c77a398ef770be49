// Between the GBK of the files and the UTF-8 of the terminal: the one place where the two meet.
//
// GBK is code page 936 with its areas for private use. About a hundred pairs that later standards have
// given other characters count as no text here and show as their bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

/// UTF-8 of GBK bytes. A byte, or a pair, that makes no character shows as \x and two digits for each byte.
std::string Shown(std::string_view gbk);

/// Index of the first byte that is no part of a character, npos where all is text.
std::size_t FindBroken(std::string_view gbk);

/// The start of the first character of `utf8` that GBK has not, or that is no UTF-8; npos without one.
std::size_t FindForeign(std::string_view utf8);
/// GBK bytes of UTF-8. Throws Failure, naming `what`, where GBK has no such character.
std::string ToGbk(std::string_view utf8, const std::string& what);

/// True when the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view bytes);
/// True when the bytes are UTF-8 with characters of three bytes or more: hardly ever GBK, that is.
bool LooksLikeUtf8(std::string_view bytes);

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
/// True when the bytes begin with a UTF-8 byte order mark.
bool HasUtf8Mark(std::string_view bytes);

/// "U+1F600" of the character, or "the byte 0xFF", that `utf8` begins with.
std::string NameOfFirst(std::string_view utf8);

/// Turns bytes of a named encoding into UTF-8; false when there is no such encoding or they break it.
bool FromNamed(const std::string& encoding, std::string_view bytes, std::string& utf8);

}  // namespace tool
