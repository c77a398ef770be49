// Bundles: numbered packages of items, and the table that holds all of them with named groups of numbers.
#pragma once

#include <cstdint>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/SizedMap.h>
#include <ZvUtiLib/records/Items.h>
#include <ZvUtiLib/records/RecordOperators.h>

/// An item in a bundle. Goes as a block of 16 bytes: the fields of ItemCount, then its own.
struct BundleEntry : ItemCount {
  std::uint32_t Value1 = 0;
  std::int32_t Value2 = 0;

  /// Adds to Value2; beyond 32 bits the sum wraps.
  void AddValue2(int delta) {
    Value2 =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(Value2) + static_cast<std::uint32_t>(delta));
  }

  /// Compare all fields.
  friend bool operator==(const BundleEntry& a, const BundleEntry& b) {
    return a.ItemId == b.ItemId && a.Count == b.Count && a.Value1 == b.Value1 && a.Value2 == b.Value2;
  }
  friend bool operator!=(const BundleEntry& a, const BundleEntry& b) { return !(a == b); }
};

/// A package of items, with two amounts and a value.
struct ZVUTILIB_API BundleRecord {
  std::int64_t Amount1 = 0;
  std::int64_t Amount2 = 0;
  std::uint32_t Value = 0;
  std::vector<BundleEntry> Entries;

  /// True when the values, the amounts and the number of entries are those of `other`, and each entry of
  /// this record occurs in `other`. Their order does not matter, and they are not paired off: {A, A} is
  /// the same as {A, B}, while {A, B} is not the same as {A, A}. n entries cost n log n steps; on a heap
  /// that refuses a copy of n entries, up to n by n.
  bool IsSameAs(const BundleRecord& other) const;
};

ZVUTILIB_RECORD(BundleEntry)
ZVUTILIB_RECORD(BundleRecord)

/// All bundles by their number, and groups of numbers by their key. Keys order as unsigned numbers.
///
/// Operations that append to `out` do not clear it, and return the number of elements that it has then.
class ZVUTILIB_API CUtiBundleTable {
 public:
  CUtiBundleTable() = default;
  CUtiBundleTable(const CUtiBundleTable&) = default;
  CUtiBundleTable& operator=(const CUtiBundleTable&) = default;
  virtual ~CUtiBundleTable();

  /// Empties groups and bundles; marked ids stay.
  void Clear();

  /// Appends `value` to the group, which is made if it is not there.
  void AddToGroup(unsigned value, unsigned groupKey);
  /// Removes the group; returns how many there were, 0 or 1.
  int RemoveGroup(unsigned groupKey);
  /// Sets `out` to the numbers of the group, or leaves it where there is none; returns the size of `out`.
  int GetGroup(unsigned groupKey, std::vector<std::uint32_t>& out) const;
  /// 1 when the group is there and holds `value`, otherwise 0.
  int IsInGroup(unsigned value, unsigned groupKey) const;
  /// Appends the key of each group, as often as it holds `value`.
  int FindGroupsOf(unsigned value, std::vector<std::uint32_t>& out) const;

  /// Stores a copy of the record in the place of an earlier one.
  void SetBundle(unsigned key, const BundleRecord& record);
  /// The stored record, which stays the table's, or null.
  BundleRecord* GetBundle(unsigned key);
  const BundleRecord* GetBundle(unsigned key) const;
  /// 1 and the lowest key whose bundle is the same as `wanted` (as its IsSameAs says); 0, with `key`
  /// untouched, without one.
  int FindBundle(const BundleRecord& wanted, unsigned& key) const;
  /// Appends the key of each bundle, as often as it has an entry with the item.
  int FindBundlesWithItem(int itemId, std::vector<std::uint32_t>& out) const;
  /// The same among the bundles of exactly one entry.
  int FindSingleItemBundles(int itemId, std::vector<std::uint32_t>& out) const;

  /// Whether the id is among the marked ones, which neither travel nor go with Clear.
  bool IsMarked(unsigned id) const;
  /// Adds the id to the marked ones.
  void MarkId(unsigned id);

  /// Writes both counts, the groups and the bundles. A group without numbers does not survive reading.
  void Write(CStreamWriter& out) const;
  /// Clears the table and reads it anew. On bytes that end early, reading stops at the first row that is
  /// not there in full: what was read before it is taken off the stream, numbers of a group stay, and a
  /// bundle that is not complete is dropped. Counts below 0 read nothing.
  void Read(CStreamReader& in);

  zvuti::SizedMap<std::uint32_t, std::vector<std::uint32_t>> Groups;  ///< by group key
  zvuti::SizedMap<std::uint32_t, BundleRecord> Bundles;               ///< by bundle key
  zvuti::SizedSet<std::uint32_t> MarkedIds;                           ///< see IsMarked
};
