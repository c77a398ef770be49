// The tokens of a rank or level file, read as the library reads them, with the lines where they stand.
#pragma once

#include <algorithm>
#include <cstddef>
#include <locale>
#include <sstream>
#include <string>

namespace tool {

template <class T>
struct NumberToken {
  T value{};
  std::string text;  ///< the whole token that the number begins
  std::size_t line = 0;
  bool isThere = false;   ///< false at the end of the file
  bool isNumber = false;  ///< that T can hold
  bool isRunOn = false;   ///< something other than white space stands directly behind it
};

class TableTokens {
 public:
  explicit TableTokens(const std::string& bytes) : bytes_(bytes), in_(bytes) {
    in_.imbue(std::locale::classic());
  }

  /// False at the end of the file.
  bool TakeWord(std::string& word, std::size_t& line) {
    if (!SkipSpace(line)) return false;
    return static_cast<bool>(in_ >> word);
  }

  template <class T>
  NumberToken<T> TakeNumber() {
    NumberToken<T> token;
    token.isThere = SkipSpace(token.line);
    if (!token.isThere) return token;
    const auto begin = static_cast<std::size_t>(in_.tellg());
    const std::size_t end = std::min(bytes_.find_first_of(" \t\n\v\f\r", begin), bytes_.size());
    token.text = bytes_.substr(begin, end - begin);
    token.isNumber = static_cast<bool>(in_ >> token.value);
    if (token.isNumber && !in_.eof()) token.isRunOn = static_cast<std::size_t>(in_.tellg()) < end;
    return token;
  }

  /// The line of the last byte.
  std::size_t LastLine() const {
    const auto ends = static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), '\n'));
    return std::max<std::size_t>(1, ends + (bytes_.empty() || bytes_.back() == '\n' ? 0 : 1));
  }

 private:
  bool SkipSpace(std::size_t& line) {
    if (!(in_ >> std::ws) || in_.eof()) return false;
    const auto at = static_cast<std::ptrdiff_t>(in_.tellg());
    line_ += static_cast<std::size_t>(std::count(bytes_.begin() + counted_, bytes_.begin() + at, '\n'));
    counted_ = at;
    line = line_;
    return true;
  }

  const std::string& bytes_;
  std::istringstream in_;
  std::ptrdiff_t counted_ = 0;  // line ends up to here are in line_
  std::size_t line_ = 1;
};

}  // namespace tool
