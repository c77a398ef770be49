// WordIndex: does a text contain a word of the list, and where? Start reading here.
//
// How a line is searched. The list is CHEAP, HEAPS and 枫叶 (B7 E3 D2 B6), the line
//
//     buy cheaps, 枫叶 or cheat
//
// 1. Filter (StartFilter.h). Nearly all text is clean, so the filter first finds where a word can start at
//    all. A bit row answers that for two positions at once. Bytes p+1 to p+3 select the bit row; a word of
//    four bytes or more covers them from either start. At the c of "cheaps" they are h, e and a:
//
//        text         p = c    p+1 = h    p+2 = e    p+3 = a    p+4 = p
//                              `---- select the bit row -----'
//
//        the bit row  |     high half: bytes at p+4     |      low half: bytes at p       |
//        of HEA       |  P: HEAPS can start at p+1      |  C: CHEAP can start at p        |
//
//    Both bits are set, so words may start at c and at h. At the c of "cheat" only the low one is: "heat" is
//    ruled out. For letters like those of "buy" no bit is set, and the filter skips them. (The picture leaves
//    out that bit rows are looked up at every second position only, since each answers for two.)
//
//    The bytes of 枫叶 are treated like letters: E3 D2 B6 select a bit row that has B7 in its low half. In
//    longer runs of Chinese characters, of eight bytes or more, the two positions are two characters, p and
//    p+2, and the character at p+2 selects the bit row. There 叶 selects one that has B7 in its low half.
//
// 2. Entry (WordAutomaton.h). The first four bytes, folded to capitals, are looked up. CHEA leads to the node
//    C-H-E-A of the trie of all words, and B7 E3 D2 B6 to the node 枫-叶, where a word ends already. If no
//    word starts with the four bytes, it was a false alarm, and the filter goes on at the next character.
//    Words of one to three bytes have no entry. Where one may start, the search goes on from the root.
//
// 3. Trie. From C-H-E-A the P of "cheaps" leads to C-H-E-A-P, where the word CHEAP ends.
//
// 4. Fallback. No edge leads from there by S. The longest suffix of CHEAP in the trie is H-E-A-P, and from
//    there S leads to HEAPS. In "cheat" no edge leads from C-H-E-A by T. The longest suffix, H-E-A, is
//    shorter than the four bytes that filter and entries look at, so the search ends and the filter goes on
//    at the h. (Scanning word by word, which replaces an index that can't be allocated, is in
//    CUtiBlackList.cpp.)
//
// 5. Mask. Wherever a word ends, asterisks overwrite its bytes. The masks of CHEAP and HEAPS add up:
//
//     buy ******, **** or cheat
//
//    Matches of one word must not overlap: AA in "aaa" gives "**a". So for each word that can overlap itself,
//    Mask keeps the end of its last match.
//
// Invariants:
// - The result is that of WordScan for each word.
// - A match starts only where a character starts: the filter names no other position, and from there on the
//   trie takes whole characters.
// - A word that ends in half a character, a lone lead byte, can end inside a character of the text. Such
// words
//   have an index of their own (HalfWordIndex.h), which is searched after this one.
//
// Costs: time linear in the text and in the matches that are masked, whatever the list: 6 to 12 instructions
// a byte of clean text, some 40 a byte if all words of the text lack their last character. Only Mask
// allocates, and only if it finds a word that can overlap itself. Memory: 12 bytes for each character that no
// earlier word shares, 44 for each word, and 12 to 400 KB for the filters. A list that also has words that
// end in half a character costs as much as two lists.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include <ZvUtiLib/platform/CStringList.h>

#include "text/words/HalfWordIndex.h"
#include "text/words/StartFilter.h"
#include "text/words/WordAutomaton.h"

namespace zvuti {

/// Does not change once built, so any number of threads may query it.
class WordIndex {
 public:
  /// REQUIRES: the words are folded to capitals and not empty. Throws std::bad_alloc.
  explicit WordIndex(const CStringList& words);

  /// True if the text contains a word of the index. REQUIRES: no zero byte in the text, but one after it.
  bool IsMatched(std::string_view text) const;
  /// Masks each word of the index in `out`, a copy of such a text. Returns false, possibly after
  /// masking some words, if scratch memory can't be allocated.
  bool Mask(std::string_view text, char* out) const noexcept;

 private:
  // The words of a list, sorted by whether they end with a whole character.
  struct Sorted {
    explicit Sorted(const CStringList& words);
    std::vector<std::string_view> whole, half;
  };
  explicit WordIndex(const Sorted& words);

  template <class OnWord>
  bool Search(std::string_view text, OnWord onWord) const;
  template <class OnWord>
  std::size_t SearchFrom(std::string_view text, std::size_t at, OnWord& onWord) const;
  bool Enter(std::string_view text, std::size_t& at, WordAutomaton::Index& node) const;

  const bool hasWholeWords_;
  StartFilter filter_;
  WordAutomaton automaton_;
  std::unique_ptr<const HalfWordIndex> halfWords_;  // null if there are none
};

}  // namespace zvuti
