// Bytes as text, in the forms that other tools print or that source code has.
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// Returns the bytes that a text describes. It may be:
///   - pairs of hexadecimal digits, with or without white space, "0x" and any of ",;:-" between them
///   - a dump with offsets: of xxd, `hexdump -C`, `od -A x -t x1`, tcpdump -x, a packet as text. A line "*"
///     repeats the line before it.
///   - escapes: \x01\x02
///   - a text in quotes as in C or Python, or several: "\x05" "AB\n"
///   - an array as in C: everything before the brace is skipped, numbers without "0x" are decimal
/// Throws a Failure that names `what`, the source of the text, with the line, the column and the word that
/// is not valid.
std::string FromHex(std::string_view text, const std::string& what);

}  // namespace tool
