// BitRows: can a word start at one of two neighboring positions of a text? One bit row answers for both.
//
// The idea. A word covers certain bytes whether it starts at the first or the second position. These bytes
// are the key, which selects a bit row. The low half of the bit row lists the bytes allowed before the key
// (the word starts at the first position), the high half those allowed after it (it starts at the second).
// WordIndex.h has a picture.
//
// Invariant: a byte that was allowed stays allowed. Bytes share bits, and keys share bit rows, so other bytes
// may be allowed, too.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/words/Character.h"

namespace zvuti {

/// `Row` is an unsigned integer; the wider, the fewer bytes share a bit.
template <class Row>
class BitRows {
 public:
  /// 2^logRows empty bit rows, 1 <= logRows <= 31.
  explicit BitRows(unsigned logRows) : rows_(std::size_t{1} << logRows), shift_(32 - logRows) {}

  void AllowBefore(std::uint32_t key, std::uint32_t byte) { RowOf(key) |= kLowBits[byte]; }
  void AllowAfter(std::uint32_t key, std::uint32_t byte) { RowOf(key) |= kHighBits[byte]; }
  void AllowAnyAfter(std::uint32_t key) { RowOf(key) |= kHighHalf; }
  void AllowBeforeAnyKey(std::uint32_t byte) {
    for (Row& row : rows_) row |= kLowBits[byte];
  }

  /// What is allowed of the byte before the key, in the low half, and of the byte after it, in the high half.
  Row Find(std::uint32_t key, std::uint32_t before, std::uint32_t after) const {
    return rows_[HashOf(key) >> shift_] & (kLowBits[before] | kHighBits[after]);
  }
  static bool IsAtFirst(Row found) { return (found & ~kHighHalf) != 0; }
  /// Bit 0 if a word may start at the first position, bit `step` if one may at the second.
  static unsigned StartsOf(Row found, std::size_t step) {
    return (IsAtFirst(found) ? 1u : 0u) | ((found & kHighHalf) != 0 ? 1u : 0u) << step;
  }

  static constexpr unsigned kHalf = sizeof(Row) * 4;  // bits of a half; divides 32: a and A share a bit

 private:
  static constexpr Row kHighHalf = ~Row{0} << kHalf;

  // Reading the bit of a byte is faster than shifting.
  static constexpr std::array<Row, 256> BitsFrom(unsigned first) {
    std::array<Row, 256> bits{};
    for (std::size_t byte = 0; byte < bits.size(); ++byte) bits[byte] = Row{1} << (first + byte % kHalf);
    return bits;
  }
  static constexpr std::array<Row, 256> kLowBits = BitsFrom(0);
  static constexpr std::array<Row, 256> kHighBits = BitsFrom(kHalf);

  Row& RowOf(std::uint32_t key) { return rows_[HashOf(key) >> shift_]; }

  std::vector<Row> rows_;
  const unsigned shift_;  // from a hash to the index of a bit row
};

}  // namespace zvuti
