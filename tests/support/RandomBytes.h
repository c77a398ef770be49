// Random words and texts over few bytes, so that words and half words meet often.
#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace test {

/// The bytes are letters of both cases (they are trail bytes, too), lead bytes, and what is neither.
class RandomBytes {
 public:
  explicit RandomBytes(unsigned seed) : random_(seed) {
    std::string all = "aAbBz\\ \x80\xFF\x81\xB0\xFE";
    std::shuffle(all.begin(), all.end(), random_);
    alphabet_ = all.substr(0, 2 + Below(5));
  }

  std::size_t Below(std::size_t limit) { return random_() % limit; }
  std::string Text(std::size_t length) {
    std::string text(length, '\0');
    for (char& byte : text) byte = alphabet_[Below(alphabet_.size())];
    return text;
  }
  std::vector<std::string> List(std::size_t count, std::size_t longest) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < count; ++i) words.push_back(Text(1 + Below(longest)));
    return words;
  }
  /// Double-byte characters.
  std::string Run(std::size_t characters) {
    std::string text;
    for (std::size_t i = 0; i < characters; ++i) text += {"\x81\xB0\xFE"[Below(3)], Text(1)[0]};
    return text;
  }

 private:
  std::mt19937 random_;
  std::string alphabet_;
};

}  // namespace test
