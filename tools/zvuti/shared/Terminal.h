// How the program talks: exit codes, messages, colours, columns.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tool {

enum ExitCode : int {
  kOk = 0,
  kFound = 1,  ///< something was found, or the input is not whole
  kUsage = 2,  ///< wrong use, or a file that cannot be read
};

/// Ends the command with kUsage and the message.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A message of the program on standard error.
void Say(const std::string& message);

/// "auto", "always" or "never".
void UseColor(const std::string& when);

enum class Style { kPlain, kDim, kBold, kAlarm };
/// The text in a style, plain where standard output takes no colours.
std::string Styled(Style style, const std::string& text);

bool IsOutputTerminal();
bool IsErrorTerminal();

/// ASCII text filled up with blanks to a width, at its end or at its start.
std::string Left(std::string_view text, std::size_t width);
std::string Right(std::string_view text, std::size_t width);

/// "1 byte", "2 bytes".
std::string Count(std::size_t number, const std::string& what, const std::string& plural = "");

}  // namespace tool
