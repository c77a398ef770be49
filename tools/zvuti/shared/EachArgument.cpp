#include "shared/EachArgument.h"

#include <algorithm>
#include <string_view>

#include "shared/Files.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::string_view kBlanks = " \t\r";

std::vector<std::string> LinesOfInput(const std::string& what) {
  const std::string text = ReadAll("");
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string_view line = std::string_view(text).substr(at, end - at);
    const std::size_t first = line.find_first_not_of(kBlanks);
    if (first != line.npos)
      lines.emplace_back(line.substr(first, line.find_last_not_of(kBlanks) + 1 - first));
    at = end + 1;
  }
  if (lines.empty()) throw Failure("no " + what + " is given, and standard input is empty");
  return lines;
}

}  // namespace

int ForEachArgument(const std::vector<std::string>& arguments, const std::string& what,
                    const std::function<int(const std::string&)>& handle) {
  const bool isInput = arguments.empty() || (arguments.size() == 1 && arguments[0] == "-");
  int result = kOk;
  for (const std::string& argument : isInput ? LinesOfInput(what) : arguments) {
    try {
      result = std::max(result, handle(argument));
    } catch (const Failure& e) {
      Say(e.what());
      result = kUsage;
    }
  }
  return result;
}

}  // namespace tool
