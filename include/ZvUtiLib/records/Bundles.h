// Bundles: numbered packages of items, and the table that holds them together with keyed groups of numbers.
#pragma once

#include <cstdint>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/SizedMap.h>
#include <ZvUtiLib/records/Items.h>
#include <ZvUtiLib/records/RecordOperators.h>

/// An item in a bundle. Written as a block of 16 bytes: the fields of ItemCount, then its own.
struct BundleEntry : ItemCount {
  std::uint32_t Value1 = 0;
  std::int32_t Value2 = 0;

  /// Adds to Value2; a sum beyond 32 bits wraps.
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

  /// Returns true if the values, the amounts and the number of entries equal those of `other` and each entry
  /// of this record occurs in `other`. The order of entries does not matter, and entries are not matched one
  /// to one: {A, A} is the same as {A, B}, but {A, B} is not the same as {A, A}. n entries cost n log n
  /// steps, or up to n * n if the heap refuses a copy of n entries.
  bool IsSameAs(const BundleRecord& other) const;
};

ZVUTILIB_RECORD(BundleEntry)
ZVUTILIB_RECORD(BundleRecord)

/// All bundles by number, and groups of numbers by key. Keys are ordered as unsigned numbers. A table that
/// was moved from is empty, marked ids included.
///
/// Operations that append to `out` do not clear it; they return its new number of elements.
class ZVUTILIB_API CUtiBundleTable {
 public:
  CUtiBundleTable() = default;
  CUtiBundleTable(const CUtiBundleTable&) = default;
  /// What was moved from is empty.
  CUtiBundleTable(CUtiBundleTable&&) noexcept = default;
  CUtiBundleTable& operator=(const CUtiBundleTable&) = default;
  /// What was moved from is empty.
  CUtiBundleTable& operator=(CUtiBundleTable&&) noexcept = default;
  virtual ~CUtiBundleTable();

  /// Removes all groups and bundles; marked ids stay.
  void Clear();

  /// Appends `value` to the group; creates the group if needed.
  void AddToGroup(unsigned value, unsigned groupKey);
  /// Removes the group; returns the number of groups removed, 0 or 1.
  int RemoveGroup(unsigned groupKey);
  /// Sets `out` to the numbers of the group, or leaves it unchanged if there is no such group. Returns the
  /// size of `out`.
  int GetGroup(unsigned groupKey, std::vector<std::uint32_t>& out) const;
  /// Returns 1 if the group exists and holds `value`, otherwise 0.
  int IsInGroup(unsigned value, unsigned groupKey) const;
  /// Appends the key of each group once for every time that the group holds `value`.
  int FindGroupsOf(unsigned value, std::vector<std::uint32_t>& out) const;

  /// Stores a copy of the record and replaces any earlier one.
  void SetBundle(unsigned key, const BundleRecord& record);
  /// Returns the stored record, which the table owns, or null.
  BundleRecord* GetBundle(unsigned key);
  const BundleRecord* GetBundle(unsigned key) const;
  /// Sets `key` to the lowest key whose bundle is the same as `wanted` (bundle.IsSameAs(wanted)) and returns
  /// 1. Returns 0 and leaves `key` unchanged if there is none.
  int FindBundle(const BundleRecord& wanted, unsigned& key) const;
  /// Appends the key of each bundle once for every entry with the item.
  int FindBundlesWithItem(int itemId, std::vector<std::uint32_t>& out) const;
  /// The same for bundles with exactly one entry.
  int FindSingleItemBundles(int itemId, std::vector<std::uint32_t>& out) const;

  /// Whether the id is marked. Marked ids are not written, and Clear keeps them.
  bool IsMarked(unsigned id) const;
  /// Marks the id.
  void MarkId(unsigned id);

  /// Writes both counts, the groups and the bundles. Reading does not recreate a group without numbers.
  void Write(CStreamWriter& out) const;
  /// Clears the table and reads a new one. If the bytes end early, reading stops at the first incomplete row.
  /// The bytes before that row are consumed. The numbers already read for a group are kept; an incomplete
  /// bundle is dropped. Counts below 0 read nothing.
  void Read(CStreamReader& in);

  zvuti::SizedMap<std::uint32_t, std::vector<std::uint32_t>> Groups;  ///< by group key
  zvuti::SizedMap<std::uint32_t, BundleRecord> Bundles;               ///< by bundle key
  zvuti::SizedSet<std::uint32_t> MarkedIds;                           ///< see IsMarked
};

ZVUTILIB_VALUE(CUtiBundleTable)
