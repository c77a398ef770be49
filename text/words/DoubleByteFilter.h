// DoubleByteFilter: passes over double-byte characters where no word of a list begins.
//
// Chinese text is runs of them. Within a run it is known where characters begin, and one look tells of two
// characters: of a word that begins at the first, and of one that begins at the second. Both have the second
// character, which chooses a row of bits; the byte before it and the byte behind it choose the bits. What it
// does not pass over, something slower has to look at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "gbk/CodePage936.h"
#include "text/words/FilterBits.h"

namespace zvuti {

/// Words hold one byte at least and end with a whole character. No word or text holds a zero byte, but one
/// stands behind each text.
class DoubleByteFilter {
 public:
  static constexpr std::size_t kBlock = 8;  // bytes looked at in one go

  /// An empty filter with room for about `words` words; more only make it less sharp.
  explicit DoubleByteFilter(std::size_t words);

  void Add(std::string_view word);

  /// How far no word begins from `at` on; a character begins there, too, or the text ends.
  /// REQUIRES: a character begins at `at`, or the text ends there.
  std::size_t PassOver(std::string_view text, std::size_t at) const {
    if (rows_.empty()) return at;
    for (; at + kBlock <= text.size(); at += kBlock) {
      const char* block = text.data() + at;
      if (!gbk::AreDoubleBytes(block, kBlock) || (FoundAt(block) | FoundAt(block + kStep)) != 0) break;
    }
    return at;
  }

  /// A bit for each byte of a block where a word may begin. REQUIRES: the block is double-byte characters.
  unsigned PlacesOf(const char* block) const {
    if (rows_.empty()) return kAllPlaces;
    unsigned places = 0;
    for (unsigned i = 0; i < kBlock; i += kStep) {
      const Row found = FoundAt(block + i);
      places |= ((found & kBefore) != 0 ? 1u : 0u) << i | ((found & kBehind) != 0 ? 4u : 0u) << i;
    }
    return places;
  }

 private:
  using Row = std::uint64_t;

  static constexpr std::size_t kStep = 4;       // bytes of two characters, which one look tells of
  static constexpr unsigned kAllPlaces = 0x55;  // each character of a block

  // The bit of a row for a byte: one of its lower half for the byte that the character before begins with,
  // one of the upper half for the byte behind.
  static constexpr unsigned kHalf = 32;
  static constexpr Row kBefore = ~Row{0} >> kHalf;
  static constexpr Row kBehind = ~Row{0} << kHalf;
  static constexpr auto kBitBefore = BitsOfBytes<Row>(0, kHalf);
  static constexpr auto kBitBehind = BitsOfBytes<Row>(kHalf, kHalf);

  std::size_t RowOf(const char* character) const {
    return (ByteAt(character, 0) | ByteAt(character, 1) << 8) * 0x9E3779B1u >> shift_;
  }
  // Whether a word may begin with the character at `bytes`, in the lower half, and with the next one, in the
  // upper one.
  Row FoundAt(const char* bytes) const {
    return rows_[RowOf(bytes + 2)] & (kBitBefore[ByteAt(bytes, 0)] | kBitBehind[ByteAt(bytes, 4)]);
  }

  std::vector<Row> rows_;
  unsigned shift_ = 0;  // of the hash, so that it numbers the rows
};

}  // namespace zvuti
