// PrefixFilter: which positions of a text can start a word of the list?
//
// The idea. A word of four or more bytes that starts at p or p+1 covers bytes p+1..p+3, the key of a bit row
// (BitRows.h). So CHEAP is entered twice: C is allowed before the key HEA, and A after the key CHE. Words of
// one to three bytes are too short for that; a table lists the pairs of bytes that they can start with.
//
// The filter checks every byte as if a character started there, which is cheaper than stepping from character
// to character. The caller drops positions inside a character.
//
// Invariant: it never rules out a position where a word starts.
//
// Costs: four bit rows and one branch for eight bytes of clean text; 8 to 256 KB, 64 KB more with short
// words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "text/words/BitRows.h"

namespace zvuti {

class PrefixFilter {
 public:
  static constexpr std::size_t kBlock = 8;           // positions that are checked together
  static constexpr std::size_t kReach = kBlock + 3;  // bytes read for them

  /// A filter without words, sized for `words`.
  explicit PrefixFilter(std::size_t words);

  /// REQUIRES: the word is not empty. The filter takes upper and lower case for the same.
  void Add(std::string_view word);

  bool HasShortWords() const { return !pairs_.empty(); }

  /// Whether a word of up to three bytes may start at `bytes`. REQUIRES: two bytes.
  bool MayStartShort(const char* bytes) const { return HasShortWords() && pairs_[PairAt(bytes)] != 0; }
  /// Whether any word may start at `bytes`. REQUIRES: five bytes. `kWithShort` is HasShortWords().
  template <bool kWithShort>
  bool MayStart(const char* bytes) const {
    return Rows::IsAtFirst(FindAt<kWithShort>(bytes));
  }

  /// A bit for each position of a block, the lowest for the first: set if a word may start there.
  /// REQUIRES: kReach bytes. `kWithShort` is HasShortWords().
  template <bool kWithShort>
  unsigned StartsIn(const char* block) const {
    Row any = 0;
    for (std::size_t i = 0; i < kBlock; i += kStep) any |= FindAt<kWithShort>(block + i);
    if (any == 0) return 0;
    unsigned starts = 0;
    for (std::size_t i = 0; i < kBlock; i += kStep) {
      starts |= Rows::StartsOf(FindAt<kWithShort>(block + i), 1) << i;
    }
    return starts;
  }

 private:
  using Row = std::uint32_t;
  using Rows = BitRows<Row>;

  static constexpr std::size_t kStep = 2;                // positions that one bit row answers for
  static constexpr std::uint32_t kCaseBit = 0x20;        // differs between a and A
  static constexpr std::uint32_t kKeyBits = 0xDFDFDF00;  // the last three of four bytes, without case

  static std::uint32_t KeyAt(const char* bytes) { return FourBytesAt(bytes) & kKeyBits; }
  static std::size_t PairAt(const char* bytes) { return ByteAt(bytes, 0) | ByteAt(bytes, 1) << 8; }

  template <bool kWithShort>
  Row FindAt(const char* bytes) const {
    const Row found = rows_.Find(KeyAt(bytes), ByteAt(bytes, 0), ByteAt(bytes, 4));
    if constexpr (!kWithShort) return found;
    return found | pairs_[PairAt(bytes)] | Row{pairs_[PairAt(bytes + 1)]} << Rows::kHalf;
  }
  void AddShort(std::string_view word);

  Rows rows_;
  std::vector<std::uint8_t>
      pairs_;  // by two bytes: 1 if a word of up to three can start so; empty if none can
};

}  // namespace zvuti
