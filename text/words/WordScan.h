// WordScan: the occurrences of one folded word in a text, the slow and plain way.
#pragma once

#include <cstddef>
#include <string_view>

namespace zvuti {

/// Walks the occurrences as searching a copy of the text, folded to capitals, again and again from behind
/// the last match would give them; no copy is made. Text and word hold no zero byte; both must stay.
class WordScan {
 public:
  /// REQUIRES: `word` is folded and not empty.
  WordScan(std::string_view text, std::string_view word) : text_(text), word_(word) {}

  /// Byte index of the next occurrence, or npos.
  std::size_t Next();

 private:
  bool IsFoundHere() const;

  std::string_view text_, word_;
  std::size_t at_ = 0;         // the candidate
  std::size_t character_ = 0;  // start of the text's character that holds the candidate
};

}  // namespace zvuti
