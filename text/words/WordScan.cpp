#include "text/words/WordScan.h"

#include "gbk/CodePage936.h"

namespace zvuti {

// After a match the next candidate is the end of the match. If the word ends in half a character, that is
// inside a character of the text, and later candidates may be too. Which bytes are letters, and thus folded,
// still depends on the text's own characters, so both are tracked.
std::size_t WordScan::Next() {
  while (text_.size() - at_ >= word_.size()) {
    std::size_t next;
    while ((next = character_ + gbk::CharLength(text_, character_)) <= at_) character_ = next;
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
