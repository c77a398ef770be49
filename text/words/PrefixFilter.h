// PrefixFilter: finds the places of a text where a word of a list may begin, and passes over all others.
//
// Nearly all text is clean, so this decides what a query costs. Runs of double-byte characters, which Chinese
// text is, go through a filter of their own. Elsewhere it looks at every byte as if a character began there,
// eight of them without a branch: stepping from one character to the next would cost more than all the rest.
// Where characters begin is asked only where a word might.
//
// A word of four bytes or more that begins at a place or right behind it has three bytes in the same three
// places. They choose a row of bits, in which one look tells of both: by the byte before them and by the
// byte behind them.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "text/words/DoubleByteFilter.h"
#include "text/words/FilterBits.h"

namespace zvuti {

/// Words hold one byte at least. No word or text holds a zero byte, but one stands behind each text.
/// Letters of both cases count as equal, and so do some other bytes: the filter may name a place for
/// nothing, but never keeps one back.
class PrefixFilter {
 public:
  /// An empty filter with room for about `words` words; more only make it less sharp.
  explicit PrefixFilter(std::size_t words);

  void Add(std::string_view word);

  /// Calls onStart(at), from left to right, for each character of the text at which a word may begin. It
  /// returns where to go on: at a character behind `at`, or at text.size() to end.
  template <class OnStart>
  void Visit(std::string_view text, OnStart onStart) const {
    pairs_.empty() ? VisitBlocks<false>(text, onStart) : VisitBlocks<true>(text, onStart);
  }

  /// Whether a word of less than four bytes may begin at `at`.
  bool MayBeginShort(std::string_view text, std::size_t at) const {
    const char* bytes = text.data() + at;
    return !pairs_.empty() && pairs_[PairOf(bytes)] != 0;
  }

 private:
  using Row = std::uint32_t;

  static constexpr std::size_t kStep = 2;                          // places that one look tells of
  static constexpr std::size_t kWindow = 5;                        // bytes that it takes
  static constexpr std::size_t kBlock = DoubleByteFilter::kBlock;  // places looked at in one go
  static constexpr std::size_t kReach = kBlock + kWindow - 2;      // bytes looked at from a block
  static constexpr Row kCaseBit = 0x20;                            // a and A differ in it
  static constexpr Row kHashed = 0xDFDFDF00;  // all other bits of the last three bytes of four

  // The bit of a row for a byte: one of its lower half for the byte before the three that choose the row,
  // one of the upper half for the byte behind them.
  static constexpr unsigned kHalf = 16;
  static constexpr Row kHere = 0xFFFF;  // the lower half
  static constexpr auto kBitBefore = BitsOfBytes<Row>(0, kHalf);
  static constexpr auto kBitBehind = BitsOfBytes<Row>(kHalf, kHalf);

  static std::size_t PairOf(const char* bytes) { return ByteAt(bytes, 0) | ByteAt(bytes, 1) << 8; }
  // The row that the last three of four bytes choose.
  std::size_t RowOf(const char* bytes) const {
    return (FourBytesAt(bytes) & kHashed) * 0x9E3779B1u >> shift_;
  }

  // Whether a longer word may begin at `bytes`, in the lower half, and at the byte behind, in the upper one.
  Row LongAt(const char* bytes) const {
    return rows_[RowOf(bytes)] & (kBitBefore[ByteAt(bytes, 0)] | kBitBehind[ByteAt(bytes, 4)]);
  }
  // The same of words of up to three bytes.
  Row ShortAt(const char* bytes) const {
    return pairs_[PairOf(bytes)] | Row{pairs_[PairOf(bytes + 1)]} << kHalf;
  }
  template <bool kWithPairs>
  Row MayBegin(const char* bytes) const {
    if constexpr (kWithPairs) return LongAt(bytes) | ShortAt(bytes);
    return LongAt(bytes);
  }

  // A bit for each place of a block where a word may begin.
  template <bool kWithPairs>
  unsigned PlacesOf(const char* block) const {
    Row any = 0;
    for (std::size_t i = 0; i < kBlock; i += kStep) any |= MayBegin<kWithPairs>(block + i);
    if (any == 0) return 0;
    unsigned places = 0;
    for (std::size_t i = 0; i < kBlock; i += kStep) {
      const Row found = MayBegin<kWithPairs>(block + i);
      places |= ((found & kHere) != 0 ? 1u : 0u) << i | (found >> kHalf != 0 ? 2u : 0u) << i;
    }
    return places;
  }

  template <bool kWithPairs, class OnStart>
  void VisitBlocks(std::string_view text, OnStart& onStart) const;
  template <bool kWithPairs, class OnStart>
  std::size_t VisitDoubleBytes(std::string_view text, std::size_t at, OnStart& onStart) const;

  void AddPairs(std::string_view word);

  DoubleByteFilter characters_;
  std::vector<Row> rows_;            // of the places of longer words
  std::vector<std::uint8_t> pairs_;  // 1 for each two bytes that begin a word of up to three; or empty
  unsigned shift_;                   // of the hash, so that it numbers the rows
};

/// Whether a character of the text begins at `index`, when one begins at `known`, before it or there.
bool IsCharacterStart(std::string_view text, std::size_t known, std::size_t index);

// From `at`, where a character begins, to where something else than double-byte characters begins.
template <bool kWithPairs, class OnStart>
std::size_t PrefixFilter::VisitDoubleBytes(std::string_view text, std::size_t at, OnStart& onStart) const {
  while (true) {
    at = characters_.PassOver(text, at);
    const char* block = text.data() + at;
    if (at + kReach > text.size() || !gbk::AreDoubleBytes(block, kBlock)) return at;
    unsigned places = characters_.PlacesOf(block);
    const auto place = [&] { return at + static_cast<std::size_t>(std::countr_zero(places)); };
    while (places != 0 && (MayBegin<kWithPairs>(text.data() + place()) & kHere) == 0) places &= places - 1;
    at = places == 0 ? at + kBlock : onStart(place());
  }
}

template <bool kWithPairs, class OnStart>
void PrefixFilter::VisitBlocks(std::string_view text, OnStart& onStart) const {
  std::size_t next = 0;  // a character begins here, and no earlier one is wanted
  const auto visit = [&](std::size_t block, unsigned places) {
    for (; places != 0; places &= places - 1) {
      const std::size_t place = block + static_cast<std::size_t>(std::countr_zero(places));
      if (place >= next) next = IsCharacterStart(text, next, place) ? onStart(place) : place + 1;
    }
  };
  std::size_t at = 0;
  while (at + kReach <= text.size()) {
    if (gbk::AreDoubleBytes(text.data() + at, kBlock)) {
      if (next < at) next = IsCharacterStart(text, next, at) ? at : at + 1;
      at = next = VisitDoubleBytes<kWithPairs>(text, next, onStart);
    } else {
      visit(at, PlacesOf<kWithPairs>(text.data() + at));
      at = std::max(next, at + kBlock);
    }
  }
  if (at >= text.size()) return;

  // The last block ends with the terminator, and may look at places again. What it leaves, two places, has
  // room for words of one or two bytes only. A text too short for a block is looked at in a copy.
  char copy[kReach] = {};
  const bool isShort = text.size() + 1 < kReach;
  if (isShort) std::memcpy(copy, text.data(), text.size());
  at = isShort ? 0 : text.size() + 1 - kReach;
  const char* block = isShort ? copy : text.data() + at;
  unsigned places = PlacesOf<kWithPairs>(block);
  if constexpr (kWithPairs) {
    places |=
        pairs_[PairOf(block + kBlock)] * (1u << kBlock) | pairs_[PairOf(block + kBlock + 1)] * (2u << kBlock);
  }
  visit(at, places & ((1u << (text.size() - at)) - 1));
}

}  // namespace zvuti
