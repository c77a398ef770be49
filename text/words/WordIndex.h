// WordIndex: does a text contain a word of the list, and where? This is the door of the word search.
//
// How a line is answered. The list is CHEAP, HEAPS and 枫叶 (B7 E3 D2 B6), the line
//
//     buy cheaps, 枫叶 or cheat
//
// 1. Filter (StartFilter.h). Nearly all text is clean, so first it is asked where a word can start at all. A
//    row of bits answers that for two positions at once. Three bytes select the row: those that a word covers
//    whether it starts at p or at p+1. At the c of "cheaps" they are h, e and a:
//
//        text        p = c    p+1 = h    p+2 = e    p+3 = a    p+4 = p
//                             `------ select the row ------'
//
//        the row     |     high half: bytes at p+4     |      low half: bytes at p       |
//        of HEA      |  P: HEAPS can start at p+1      |  C: CHEAP can start at p        |
//
//    Both bits are set, so words may start at c and at h. At the c of "cheat" only the low one is: "heat" is
//    ruled out. Letters like those of "buy" find no bit set and are passed by.
//
//    In a run of Chinese characters the two positions are two characters, p and p+2, and the character at p+2
//    selects the row. The row of 叶 has B7 in its low half: 枫叶 can start at p.
//
// 2. Entry (WordAutomaton.h). The first four bytes, folded to capitals, are looked up. CHEA leads to the node
//    C-H-E-A of the trie of all words, and B7 E3 D2 B6 to the node 枫-叶, where a word ends already. If no
//    word starts with the four bytes, it was a false alarm, and the filter goes on at the next character.
//
// 3. Trie. From C-H-E-A the P of "cheaps" leads to C-H-E-A-P, where the word CHEAP ends.
//
// 4. Fallback. No edge leads from there by S. The longest suffix of CHEAP in the trie is H-E-A-P, and from
//    there S leads to HEAPS. In "cheat" no edge leads from C-H-E-A by T. The longest suffix, H-E-A, is
//    shorter than the four bytes that filter and entries look at, so the search ends and the filter goes on
//    at the h.
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
// - A word that ends in half a character, a lone lead byte, can end inside a character of the text. It is
//   kept out of the index, in HalfWords, and has to be scanned for.
//
// Costs: time linear in the text and in the matches that are masked, whatever the list: 6 to 12 instructions
// a byte of clean text, some 40 a byte if all words of the text lack their last character. Only Mask
// allocates, and only if it finds a word that can overlap itself. Memory: 12 bytes for each character that no
// earlier word shares, 44 for each word, and 12 to 400 KB for the filters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/platform/CStringList.h>

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
  /// masking some words, if the scratch array for self-overlapping words can't be allocated.
  bool Mask(std::string_view text, char* out) const noexcept;

  /// The words of the list that are not in the index, because they end in half a character.
  const std::vector<std::string>& HalfWords() const { return halfWords_; }

 private:
  template <class OnWord>
  bool Search(std::string_view text, OnWord onWord) const;
  template <class OnWord>
  std::size_t SearchFrom(std::string_view text, std::size_t at, OnWord& onWord) const;
  bool Enter(std::string_view text, std::size_t& at, WordAutomaton::Index& node) const;

  StartFilter filter_;
  WordAutomaton automaton_;
  std::vector<std::string> halfWords_;
};

}  // namespace zvuti
