// ProbeTable: a hash table of small slots in one block of memory, with linear probing.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvuti {

/// A default-constructed `Slot` is free; it has `bool IsFree() const`. The caller knows what a slot's key
/// is: it hands in the hash and the comparison. Slots can only be added. Making room may throw
/// std::bad_alloc.
template <class Slot>
class ProbeTable {
 public:
  ProbeTable() : slots_(kLeastSlots) {}

  /// The slot of that hash for which `isSought` is true, null where there is none.
  template <class IsSought>
  const Slot* Find(std::uint32_t hash, IsSought isSought) const {
    for (std::size_t i = HomeOf(hash); !slots_[i].IsFree(); i = Behind(i)) {
      if (isSought(slots_[i])) return &slots_[i];
    }
    return nullptr;
  }

  /// Makes room for `count` slots and as many free ones. REQUIRES: the table is empty.
  void Reserve(std::size_t count) { slots_.assign(SizeFor(count), Slot()); }

  /// Adds a slot whose key is not there yet. REQUIRES: room was made for it.
  void Add(const Slot& slot, std::uint32_t hash) {
    std::size_t i = HomeOf(hash);
    while (!slots_[i].IsFree()) i = Behind(i);
    slots_[i] = slot;
  }

  /// Calls `change` for each slot; it must leave the key as it is.
  template <class Change>
  void ForEach(Change change) {
    for (Slot& slot : slots_) {
      if (!slot.IsFree()) change(slot);
    }
  }

 private:
  static constexpr std::size_t kLeastSlots = 64;

  static std::size_t SizeFor(std::size_t count) { return std::max(kLeastSlots, count * 2); }

  // Where the search for a hash begins: its share of all hashes is that of the slots before.
  std::size_t HomeOf(std::uint32_t hash) const {
    return static_cast<std::size_t>(std::uint64_t{hash} * slots_.size() >> 32);
  }
  std::size_t Behind(std::size_t slot) const { return slot + 1 == slots_.size() ? 0 : slot + 1; }

  std::vector<Slot> slots_;  // at most half in use, so that each search ends, and soon
};

}  // namespace zvuti
