// SparseArray: an array of which most elements are never set, without the memory for all of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvuti {

/// Elements lie in blocks; a block is there when one of its elements was set. Setting one may throw
/// std::bad_alloc. Holds less than 2 to the power of 32 elements.
template <class Value>
class SparseArray {
 public:
  void Set(std::size_t index, Value value) {
    const std::size_t block = index / kBlock;
    if (block >= firsts_.size()) firsts_.resize(block + 1, kNone);
    std::uint32_t& first = firsts_[block];
    if (first == kNone) {
      values_.resize(values_.size() + kBlock);
      first = static_cast<std::uint32_t>(values_.size() - kBlock);
    }
    values_[first + index % kBlock] = value;
  }

  /// REQUIRES: the element was set.
  Value operator[](std::size_t index) const { return values_[firsts_[index / kBlock] + index % kBlock]; }

  /// Gives back the memory that only more elements would need.
  void ShrinkToFit() {
    firsts_.shrink_to_fit();
    values_.shrink_to_fit();
  }

 private:
  static constexpr std::size_t kBlock = 16;
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  std::vector<std::uint32_t> firsts_;  // of each block: index of its first element in `values_`, or kNone
  std::vector<Value> values_;
};

}  // namespace zvuti
