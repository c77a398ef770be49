// HalfWordIndex: the search for words that end in half a character, a lone lead byte.
//
// Such words come from lists in a wrong encoding, cut fields and slips. The word 枫 B0 (B7 E3 B0) occurs in
// 枫叶 only by its bytes, but in 枫啊 (B7 E3 B0 A1) it ends inside 啊. The next candidate is the end of the
// match, A1, where no character of the text starts. Stepping goes on from there in pairs that lie across the
// text's own characters, until both meet: at the next byte that is not a lead byte, or one later. So one word
// is looked for at the starts of characters, and after a match also at trail bytes, the shifted positions.
//
// How it works. Two tries of bytes (WordAutomaton) hold all words, in which each byte is marked as a trail
// byte or not. `aligned_` has the marks of a word that starts with a character of the text, `shifted_` those
// of a word that starts at a trail byte. The filter names starts, and from there the search follows the
// aligned trie. From a match that ends inside a character on, it follows both, byte by byte, until stepping
// meets again. For each word that was found, the search keeps where it may be found next: at shifted
// positions from `from` on, at characters from `alignedFrom` on.
//
// Invariant: the result is that of WordScan for each word.
//
// Costs: as WordIndex for clean text, two steps a byte after a match that ends inside a character. Memory: 16
// bytes for each byte that no earlier word shares, in each of the two tries. Mask allocates for each word
// that it finds.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "text/words/StartFilter.h"
#include "text/words/WordAutomaton.h"

namespace zvuti {

/// Does not change once built, so any number of threads may query it.
class HalfWordIndex {
 public:
  /// REQUIRES: the words are folded, end in half a character, are followed by a zero byte, and outlive the
  /// index. Throws std::bad_alloc.
  explicit HalfWordIndex(const std::vector<std::string_view>& words);

  /// As in WordIndex.
  bool IsMatched(std::string_view text) const;
  bool Mask(std::string_view text, char* out) const noexcept;

 private:
  class Search;

  StartFilter filter_;
  WordAutomaton aligned_, shifted_;
  std::vector<std::string_view> words_;  // by their number in both
  std::size_t longest_ = 0;
};

}  // namespace zvuti
