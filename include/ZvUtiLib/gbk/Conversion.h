// Conversion of text between GBK, in which the library reads and returns all text, and UTF-8 and UTF-16.
//
// GBK is code page 936 as the platform converts it, on every system and in every locale: 0x80 is the euro
// sign, 0xFF is U+F8F5, the user-defined characters are the private use area, and a character outside GBK
// becomes its best fit if the code page defines one (U+00B2, a small 2, becomes "2"), otherwise a question
// mark. Zero bytes are ordinary characters. Time and memory are in proportion to the text; only the result is
// allocated. All functions are pure and may be called on any thread. They throw std::bad_alloc or
// std::length_error if there is no memory for the result.
//
//     CString name(zvuti::Utf8ToGbk(u8Name).text);
//     std::cout << zvuti::GbkToUtf8(masked.GetString()).text;
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <ZvUtiLib/Export.h>

namespace zvuti {

/// What a conversion gives. `Text` is std::string or std::u16string. Indexes count bytes, or units of UTF-16.
template <class Text>
struct Converted {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);  ///< no place

  Text text;                      ///< the result
  std::size_t lostAt = kNone;     ///< in the source: the first place that `text` does not represent, or kNone
  std::size_t standInAt = 0;      ///< in `text`: what stands in its place
  std::size_t standInLength = 0;  ///< 0 if nothing was lost

  /// True if `text` represents all of the source, so that converting it back gives the source again.
  bool IsWhole() const { return lostAt == kNone; }
  /// What stands in `text` for the first place that was lost: "?" or the best fit.
  std::basic_string_view<typename Text::value_type> StandIn() const {
    return {text.data() + standInAt, standInLength};
  }
};

/// Converts GBK. A lead byte at the end or before a zero byte, or a pair of lead and trail byte that is not a
/// character, is lost: one question mark stands for it.
ZVUTILIB_API Converted<std::string> GbkToUtf8(std::string_view gbk);
/// Converts GBK in the same way.
ZVUTILIB_API Converted<std::u16string> GbkToUtf16(std::string_view gbk);

/// Converts to GBK. A character outside GBK is lost: its best fit, one question mark, or two question marks
/// from U+10000 on stand for it. Each byte that is not part of a well-formed sequence is lost as well, and
/// becomes a question mark. A byte order mark is a character like any other.
ZVUTILIB_API Converted<std::string> Utf8ToGbk(std::string_view utf8);
/// Converts to GBK in the same way. Half of a surrogate pair becomes a question mark.
ZVUTILIB_API Converted<std::string> Utf16ToGbk(std::u16string_view utf16);

/// Converts UTF-8. Each byte that is not part of a well-formed sequence is lost; U+FFFD stands for it.
ZVUTILIB_API Converted<std::u16string> Utf8ToUtf16(std::string_view utf8);
/// Converts UTF-16. Half of a surrogate pair is lost; U+FFFD stands for it.
ZVUTILIB_API Converted<std::string> Utf16ToUtf8(std::u16string_view utf16);

/// True if all bytes belong to characters of GBK. A text in UTF-8 can be valid GBK, too: test for UTF-8
/// first.
ZVUTILIB_API bool IsValidGbk(std::string_view bytes);
/// True if all bytes belong to well-formed sequences: shortest forms up to U+10FFFF, no surrogates. ASCII
/// text is valid, and the same in both encodings.
ZVUTILIB_API bool IsValidUtf8(std::string_view bytes);

}  // namespace zvuti
