// PrefixFilter: finds the places of a text where a word of a list may begin, and passes over all others.
//
// Nearly all text is clean, so this decides what a query costs. It looks at every byte as if a character
// began there, eight at a time and without a branch; stepping from one character to the next would cost
// more than all the rest. Where characters begin is asked only where a word might.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

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
    return (!pairs_.empty() && pairs_[PairOf(bytes)] != 0) ||
           (text.size() - at >= 3 && rows_[RowOf(bytes)] == kFullRow);
  }

 private:
  using Row = std::uint32_t;

  static constexpr Row kFullRow = 0xFFFFFFFF;
  static constexpr std::size_t kBlock = 8;                     // places looked at in one go
  static constexpr std::size_t kWindow = 4;                    // bytes looked at from each place
  static constexpr std::size_t kReach = kBlock + kWindow - 1;  // bytes looked at from a block
  static constexpr Row kCaseBit = 0x20;                        // a and A differ in it

  // What takes part in the hash: all but the case bits of three bytes, and the two highest bits of the
  // fourth, whose lowest five choose the bit of the row.
  static constexpr Row kHashed = 0xC0DFDFDF;

  // 1 shifted by the lowest five bits of a byte; looking it up is faster than shifting.
  static constexpr auto kBitOfByte = [] {
    std::array<Row, 256> bits{};
    for (std::size_t byte = 0; byte < bits.size(); ++byte) bits[byte] = Row{1} << byte % 32;
    return bits;
  }();

  static Row ByteAt(const char* bytes, std::size_t index) { return static_cast<unsigned char>(bytes[index]); }
  static Row BitOf(const char* bytes) { return kBitOfByte[ByteAt(bytes, 3)]; }
  static std::size_t PairOf(const char* bytes) { return ByteAt(bytes, 0) | ByteAt(bytes, 1) << 8; }
  std::size_t RowOf(const char* bytes) const {
    const Row window =
        ByteAt(bytes, 0) | ByteAt(bytes, 1) << 8 | ByteAt(bytes, 2) << 16 | ByteAt(bytes, 3) << 24;
    return (window & kHashed) * 0x9E3779B1u >> shift_;
  }

  // Not 0 when a word may begin at `bytes`, of which kWindow can be read.
  template <bool kWithPairs>
  Row MayBegin(const char* bytes) const {
    const Row bit = rows_[RowOf(bytes)] & BitOf(bytes);
    if constexpr (kWithPairs) return bit | pairs_[PairOf(bytes)];
    return bit;
  }

  // A bit for each place of a block where a word may begin.
  template <bool kWithPairs>
  unsigned PlacesOf(const char* block) const {
    Row any = 0;
    for (std::size_t i = 0; i < kBlock; ++i) any |= MayBegin<kWithPairs>(block + i);
    if (any == 0) return 0;
    unsigned places = 0;
    for (std::size_t i = 0; i < kBlock; ++i) places |= (MayBegin<kWithPairs>(block + i) != 0 ? 1u : 0u) << i;
    return places;
  }

  template <bool kWithPairs, class OnStart>
  void VisitBlocks(std::string_view text, OnStart& onStart) const;

  void AddTriple(std::string_view word);
  void AddPairs(std::string_view word);

  std::vector<Row> rows_;            // of the places of longer words, and full ones for words of three bytes
  std::vector<std::uint8_t> pairs_;  // 1 for each two bytes that begin with a word of one or two; or empty
  unsigned shift_;                   // of the hash, so that it numbers the rows
};

/// Whether a character of the text begins at `index`, when one begins at `known`, before it or there.
bool IsCharacterStart(std::string_view text, std::size_t known, std::size_t index);

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
  for (; at + kReach <= text.size(); at = next > at + kBlock ? next : at + kBlock) {
    visit(at, PlacesOf<kWithPairs>(text.data() + at));
  }

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
