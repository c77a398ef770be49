// WordScan: where does one word occur in a text? The slow and plain way, for words without an index.
#pragma once

#include <cstddef>
#include <string_view>

namespace zvuti {

/// Gives the matches that a search of the text in capitals would give, left to right without overlaps. It
/// makes no copy. Text and word contain no zero byte and must outlive the scan.
class WordScan {
 public:
  /// REQUIRES: the word is folded and not empty.
  WordScan(std::string_view text, std::string_view word) : text_(text), word_(word) {}

  /// Byte index of the next occurrence, or npos.
  std::size_t Next();

 private:
  bool IsFoundHere() const;

  std::string_view text_, word_;
  std::size_t at_ = 0;         // the next candidate
  std::size_t character_ = 0;  // start of the character that contains it
};

}  // namespace zvuti
