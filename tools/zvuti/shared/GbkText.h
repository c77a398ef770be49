// Shows GBK text, which files hold, on the terminal, which is in UTF-8, and takes text from there.
//
// The library converts; here are the forms in which the terminal shows what is not text.
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

/// Names the first character of `utf8`: "U+1F600", or "the byte 0xFF" if it is not valid UTF-8.
std::string NameOfFirst(std::string_view utf8);

}  // namespace tool
