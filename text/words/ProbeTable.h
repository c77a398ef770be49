// ProbeTable: a hash table of small slots in one block of memory, with linear probing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvuti {

/// A default-constructed `Slot` is free; `bool IsFree() const` tells. The caller knows a slot's key: it
/// passes the hash and the comparison. Slots can be added, not removed.
template <class Slot>
class ProbeTable {
 public:
  /// An empty table with room for `count` slots. Throws std::bad_alloc.
  explicit ProbeTable(std::size_t count) : slots_(count * 2 + 1) {}

  /// The slot with that hash for which isSought(slot) is true, or null.
  template <class IsSought>
  const Slot* Find(std::uint32_t hash, IsSought isSought) const {
    for (std::size_t i = HomeOf(hash); !slots_[i].IsFree(); i = After(i)) {
      if (isSought(slots_[i])) return &slots_[i];
    }
    return nullptr;
  }

  /// REQUIRES: no slot has the same key, and fewer than `count` slots were added.
  void Add(const Slot& slot, std::uint32_t hash) {
    std::size_t i = HomeOf(hash);
    while (!slots_[i].IsFree()) i = After(i);
    slots_[i] = slot;
  }

 private:
  // Scales the hash from 32 bits to the size of the table, which need not be a power of two.
  std::size_t HomeOf(std::uint32_t hash) const {
    return static_cast<std::size_t>(std::uint64_t{hash} * slots_.size() >> 32);
  }
  std::size_t After(std::size_t slot) const { return slot + 1 == slots_.size() ? 0 : slot + 1; }

  std::vector<Slot> slots_;  // at most half of them in use, so every search ends, and soon
};

}  // namespace zvuti
