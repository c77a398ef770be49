// Input and output of the commands: files, standard input, bytes written as hexadecimal digits.
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// All bytes of a file, or of standard input where the path is "" or "-". Throws Failure.
std::string ReadAll(const std::string& path);
/// What a message calls the file of that path.
std::string NameOf(const std::string& path);

/// Writes a file, or standard output where the path is "" or "-". Throws Failure.
void WriteAll(const std::string& path, std::string_view bytes);

/// The bytes that pairs of hexadecimal digits stand for, with white space, "0x" and any of ",;:-"
/// between them. Throws Failure, naming `what` and the line.
std::string FromHex(std::string_view text, const std::string& what);
/// "01 FF": pairs of digits with a blank between them.
std::string ToHex(std::string_view bytes);

}  // namespace tool
