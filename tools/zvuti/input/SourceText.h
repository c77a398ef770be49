// Bytes as source code has them: an array in braces, a text in quotes.
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// Returns true if a text has an array or a quoted text, at its start or after a declaration.
bool IsSourceText(std::string_view text);

/// Returns the bytes of the first array, or of the first quoted text and those that follow it immediately.
/// Comments are skipped. In an array, numbers are from -128 to 255, as in C (0x0A, 10), or characters ('a').
/// In a text, escapes are those of C, with exactly two digits after \x. Throws a Failure that names `what`,
/// the source of the text, and the place.
std::string FromSourceText(std::string_view text, const std::string& what);

}  // namespace tool
