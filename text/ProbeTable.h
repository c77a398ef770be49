// ProbeTable: a hash table of small slots in one block of memory, with linear probing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zvuti {

/// A default-constructed `Slot` is free; it has `bool IsFree() const`. The caller knows what a slot's key
/// is: it hands in the hash and the comparison. Slots can only be added. Growing may throw std::bad_alloc.
template <class Slot>
class ProbeTable {
 public:
  ProbeTable() : slots_(std::size_t{1} << kLeastLog) {}

  /// The slot of that hash for which `isSought` is true, null where there is none.
  template <class IsSought>
  const Slot* Find(std::uint32_t hash, IsSought isSought) const {
    for (std::size_t i = hash >> shift_; !slots_[i].IsFree(); i = (i + 1) & (slots_.size() - 1)) {
      if (isSought(slots_[i])) return &slots_[i];
    }
    return nullptr;
  }

  /// Adds a slot whose key is not there yet; `hashOf` gives the hash of a slot.
  template <class HashOf>
  void Add(Slot slot, HashOf hashOf) {
    if ((count_ + 1) * 4 > slots_.size() * 3) Grow(hashOf);
    Put(slot, hashOf(slot));
    ++count_;
  }

  /// Calls `change` for each slot; it must leave the key as it is.
  template <class Change>
  void ForEach(Change change) {
    for (Slot& slot : slots_) {
      if (!slot.IsFree()) change(slot);
    }
  }

 private:
  static constexpr unsigned kLeastLog = 6;

  template <class HashOf>
  void Grow(HashOf hashOf) {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    --shift_;
    for (const Slot& slot : old) {
      if (!slot.IsFree()) Put(slot, hashOf(slot));
    }
  }

  void Put(const Slot& slot, std::uint32_t hash) {
    std::size_t i = hash >> shift_;
    while (!slots_[i].IsFree()) i = (i + 1) & (slots_.size() - 1);
    slots_[i] = slot;
  }

  std::vector<Slot> slots_;  // a power of two of them, at most three quarters in use
  unsigned shift_ = 32 - kLeastLog;
  std::size_t count_ = 0;
};

}  // namespace zvuti
