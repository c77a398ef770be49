#include "text/words/WordScan.h"

#include "gbk/CodePage936.h"

namespace zvuti {

// Stepping goes on from the end of a match. Behind a word that ends in half a character this is the
// middle of a character, and the candidates may stay out of step with the text from there on; but which
// bytes are letters to fold is still a matter of the text's own characters.
std::size_t WordScan::Next() {
  while (text_.size() - at_ >= word_.size()) {
    std::size_t behind;
    while ((behind = character_ + gbk::CharLength(text_, character_)) <= at_) character_ = behind;
    const std::size_t candidate = at_;
    const bool isFound = IsFoundHere();
    at_ += isFound ? word_.size() : gbk::CharLength(text_, at_);
    if (isFound) return candidate;
  }
  return std::string_view::npos;
}

bool WordScan::IsFoundHere() const {
  const std::size_t end = at_ + word_.size();
  bool isTrail = false;
  for (std::size_t i = character_; i < end; ++i) {
    const char folded = isTrail ? text_[i] : gbk::ToUpper(text_[i]);
    if (i >= at_ && folded != word_[i - at_]) return false;
    isTrail = !isTrail && gbk::CharLength(text_, i) == 2;
  }
  return true;
}

}  // namespace zvuti
