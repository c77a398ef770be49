// WordIndex: answers the queries of a word list without walking the list.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/platform/CStringList.h>

#include "text/words/PrefixFilter.h"
#include "text/words/WordAutomaton.h"

namespace zvuti {

/// Texts hold no zero byte, but one stands behind each. Constant once built: any number of threads may ask.
class WordIndex {
 public:
  /// REQUIRES: the words are folded and not empty. Throws std::bad_alloc.
  explicit WordIndex(const CStringList& words);

  /// True when the text contains a word of the index. Allocates nothing.
  bool IsMatched(std::string_view text) const;
  /// Overwrites, in `out`, a copy of the text, each byte of each word found in it by an asterisk. False,
  /// with no more than a part done, when there is no memory for what words that can overlap themselves take.
  bool Mask(std::string_view text, char* out) const noexcept;

  /// Words that end in half a character, a lone lead byte. Such a word ends within a character of a text,
  /// and the search goes on from there, out of step with all others: they are no part of the index, and
  /// whoever asks it has to scan for them. No sound list has one.
  const std::vector<std::string>& HalfWords() const { return halfWords_; }

 private:
  bool Enter(std::string_view text, std::size_t& at, WordAutomaton::Index& node) const;
  template <class OnWord>
  bool Walk(std::string_view text, OnWord onWord) const;

  PrefixFilter filter_;
  WordAutomaton automaton_;
  std::vector<std::string> halfWords_;
};

}  // namespace zvuti
