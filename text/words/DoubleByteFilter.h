// DoubleByteFilter: which characters of a run of double-byte characters can start a word of the list?
//
// The idea. Chinese text is runs of double-byte characters, and inside a run it is known where characters
// start. A word that starts at p or p+2 covers the character at p+2, the key of a bit row (BitRows.h). So
// 枫叶, B7 E3 D2 B6, is entered twice: B7 is allowed before the key D2 B6, and D2 after the key B7 E3.
//
// Invariant: it never rules out a position where a word starts.
//
// Costs: two bit rows and one branch for eight bytes of clean text; 4 to 64 KB.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "gbk/CodePage936.h"
#include "text/words/BitRows.h"

namespace zvuti {

class DoubleByteFilter {
 public:
  static constexpr std::size_t kBlock = 8;  // bytes of text that are checked together

  /// A filter without words, sized for `words`. If they are too many to be told apart, it names all
  /// positions.
  explicit DoubleByteFilter(std::size_t words);

  /// REQUIRES: the word is not empty and is followed by a zero byte. It may end in half a character.
  void Add(std::string_view word);

  /// Skips blocks of double-byte characters in which no word starts, from `at` on; returns where it stopped.
  /// REQUIRES: a character starts at `at`, or the text ends there. A character starts at the result, too.
  std::size_t PassOver(std::string_view text, std::size_t at) const {
    if (!isUseful_) return at;
    for (; at + kBlock <= text.size(); at += kBlock) {
      const char* block = text.data() + at;
      if (!gbk::AreDoubleBytes(block, kBlock) || (FindAt(block) | FindAt(block + kStep)) != 0) break;
    }
    return at;
  }

  /// A bit for each byte of a block, the lowest for the first: set if a word may start there.
  /// REQUIRES: the block is double-byte characters, and one more byte follows.
  unsigned StartsIn(const char* block) const {
    if (!isUseful_) return kAllStarts;
    unsigned starts = 0;
    for (std::size_t i = 0; i < kBlock; i += kStep) starts |= Rows::StartsOf(FindAt(block + i), 2) << i;
    return starts;
  }

 private:
  // One register wide. With half the width come twice as many rows, so that as few words share a bit.
  using Row = std::conditional_t<sizeof(void*) < 8, std::uint32_t, std::uint64_t>;
  using Rows = BitRows<Row>;

  static constexpr std::size_t kStep = 4;       // bytes of the two characters that one bit row answers for
  static constexpr unsigned kAllStarts = 0x55;  // each character of a block

  static std::uint32_t KeyAt(const char* character) {
    return ByteAt(character, 0) | ByteAt(character, 1) << 8;
  }
  Row FindAt(const char* bytes) const {
    return rows_.Find(KeyAt(bytes + 2), ByteAt(bytes, 0), ByteAt(bytes, 4));
  }

  void AllowBeforeLead(std::uint32_t byte, std::uint32_t lead);

  const bool isUseful_;
  Rows rows_;
  std::array<std::uint32_t, 256> beforeLead_{};  // by lead byte: the bytes that AllowBeforeLead was given
};

}  // namespace zvuti
