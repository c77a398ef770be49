#include "shared/Terminal.h"

#include <cstdlib>
#include <iostream>

namespace tool {
namespace {

bool ColorByTerminal() {
  const char* const refused = std::getenv("NO_COLOR");
  return !(refused && *refused) && TakesColor();
}

bool& HasColor() {
  static bool hasColor = ColorByTerminal();
  return hasColor;
}

}  // namespace

void Say(const std::string& message) {
  std::cout.flush();
  std::cerr << ("zvuti: " + message + "\n");  // one write, so that two programs' messages do not mix
}

void UseColor(const std::string& when) {
  if (when != "auto") HasColor() = when == "always";
}

std::string Styled(Style style, const std::string& text) {
  if (!HasColor() || style == Style::kPlain || text.empty()) return text;
  const char* const code = style == Style::kDim ? "2" : style == Style::kBold ? "1" : "31";
  return std::string("\x1B[").append(code).append("m").append(text).append("\x1B[0m");
}

std::string Left(std::string_view text, std::size_t width) {
  std::string filled(text);
  if (filled.size() < width) filled.append(width - filled.size(), ' ');
  return filled;
}

std::string Right(std::string_view text, std::size_t width) {
  std::string filled(text.size() < width ? width - text.size() : 0, ' ');
  return filled.append(text);
}

std::string Count(std::size_t number, const std::string& what, const std::string& plural) {
  return std::to_string(number) + " " + (number == 1 ? what : plural.empty() ? what + "s" : plural);
}

}  // namespace tool
