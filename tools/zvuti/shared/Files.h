// Input and output: files, standard input and output, bytes as hexadecimal text.
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// Returns all bytes of a file, or of standard input if the path is "" or "-". Throws Failure.
std::string ReadAll(const std::string& path);
/// Returns the name of a file for messages: its path or "standard input".
std::string NameOf(const std::string& path);

/// Writes a file, or to standard output if the path is "" or "-". Throws Failure.
void WriteAll(const std::string& path, std::string_view bytes);

/// Parses pairs of hexadecimal digits, which may have white space, "0x" and any of ",;:-" between them. On
/// other text throws a Failure that names `what`, the source of the text, and the line.
std::string FromHex(std::string_view text, const std::string& what);
/// Formats bytes as "01 FF".
std::string ToHex(std::string_view bytes);

}  // namespace tool
