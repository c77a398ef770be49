// Splits a rank or level file into tokens as the library does, and reports the line of each.
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
  std::string text;  ///< the whole token, which starts with the number
  std::size_t line = 0;
  bool isThere = false;   ///< false at the end of the file
  bool isNumber = false;  ///< true if the token starts with a number that fits T
  bool isRunOn = false;   ///< other text follows the number directly
};

class TableTokens {
 public:
  explicit TableTokens(const std::string& bytes) : bytes_(bytes), in_(bytes) {
    in_.imbue(std::locale::classic());
  }

  /// Reads the next word and its line. Returns false at the end of the file.
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

  /// Returns the line of the last byte.
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
  std::ptrdiff_t counted_ = 0;  // line_ includes the line ends before this offset
  std::size_t line_ = 1;
};

}  // namespace tool
