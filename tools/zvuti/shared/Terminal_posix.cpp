#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "shared/Terminal.h"

namespace tool {

void StartTerminal(int&, char**&) { std::ios_base::sync_with_stdio(false); }

bool IsOutputTerminal() { return isatty(STDOUT_FILENO) != 0; }
bool IsErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

bool TakesColor() {
  const char* const terminal = std::getenv("TERM");
  return IsOutputTerminal() && !(terminal && std::string_view(terminal) == "dumb");
}

void PrintBytes(std::string_view bytes) {
  std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::optional<std::string> ReadTyped() { return std::nullopt; }

}  // namespace tool
