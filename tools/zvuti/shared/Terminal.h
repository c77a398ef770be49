// Output to the user: exit codes, messages, colours, columns.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tool {

enum ExitCode : int {
  kOk = 0,
  kFound = 1,  ///< something was found, or the input is incomplete
  kUsage = 2,  ///< wrong usage, or a file that cannot be read
};

/// Ends the program with the message and the exit code kUsage.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Prints "zvuti: " and the message to standard error.
void Say(const std::string& message);

/// Sets when to use colours: "auto", "always" or "never".
void UseColor(const std::string& when);

enum class Style { kPlain, kDim, kBold, kAlarm };
/// Returns the text in a style, or unchanged if colours are off.
std::string Styled(Style style, const std::string& text);

/// Prepares the standard streams, and makes the arguments UTF-8 where the system gives others. Call it first.
void StartTerminal(int& argc, char**& argv);
bool IsOutputTerminal();
bool IsErrorTerminal();
/// Returns true if standard output is a terminal that knows colours.
bool TakesColor();
/// Writes bytes to standard output as they are.
void PrintBytes(std::string_view bytes);
/// Reads what the user types until the end of the input, in UTF-8. Returns nothing if standard input can be
/// read as any file: on Windows if it is redirected, and elsewhere always.
std::optional<std::string> ReadTyped();

/// Pads ASCII text with spaces to a width. Left pads at the end, Right at the start.
std::string Left(std::string_view text, std::size_t width);
std::string Right(std::string_view text, std::size_t width);

/// "1 byte", "2 bytes".
std::string Count(std::size_t number, const std::string& what, const std::string& plural = "");

}  // namespace tool
