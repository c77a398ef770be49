// In which encoding a file is, and conversion from and to it.
#pragma once

#include <string>
#include <string_view>

namespace tool {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
/// Returns true if the bytes start with a UTF-8 byte order mark.
bool HasUtf8Mark(std::string_view bytes);
/// Returns true if the bytes, without a mark, are UTF-8 with at least one character of three or more bytes.
/// GBK text almost never is.
bool LooksLikeUtf8(std::string_view bytes);

/// Guesses the encoding of a file: "utf-8", "utf-16le", "utf-16be" or "big5". Returns "gbk" if it is neither,
/// as for ASCII text.
std::string EncodingOf(std::string_view bytes);

/// Says for people that a file is not in GBK and what to do: "is UTF-8 with a byte order mark, but the client
/// reads GBK; zvuti convert makes it so". Returns "" for GBK and for ASCII text, even after a byte order
/// mark.
std::string ForeignEncoding(std::string_view bytes);

/// Converts bytes from an encoding, other than GBK, to UTF-8, without byte order mark. Returns false if the
/// encoding is unknown or the bytes are invalid in it.
bool FromNamed(const std::string& encoding, std::string_view bytes, std::string& utf8);
/// The same for encodings that the library does not know, such as Big5: the host system converts them.
bool FromForeign(const std::string& encoding, std::string_view bytes, std::string& utf8);

}  // namespace tool
