// Comparer: the walk over the rows of two records that finds out whether their fields are equal.
//
// It walks over the rows of the first record. The field of the second one lies at the same distance from it
// as the second record from the first.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "data/wire/Rows.h"

namespace zvuti::wire {

/// Compares every field, whether it travels or not, but no reserved bytes.
class Comparer {
 public:
  static constexpr bool kReads = false;

  template <class R>
  Comparer(const R& record, const R& other)
      : distance_(AddressOf(std::addressof(other)) - AddressOf(std::addressof(record))) {}

  bool AreEqual() const { return areEqual_; }

  void bits8(const char*, const auto& field) { Compare(field); }
  void bits16(const char*, const auto& field) { Compare(field); }
  void bits32(const char*, const auto& field) { Compare(field); }
  void bits64(const char*, const auto& field) { Compare(field); }
  void packedTime(const char*, const auto& field) { Compare(field); }
  void code(const char*, const auto& field) { Compare(field); }
  void tag(const char*, const auto& field) { Compare(field); }
  void text(const char*, const std::string& field) { Compare(field); }
  void list(const char*, const std::vector<std::string>& texts) { Compare(texts); }
  void map(const char*, const auto& entries) { Compare(entries); }
  void blockMap(const char*, const auto& entries, auto) { Compare(entries); }
  void local(const char*, const auto& field) { Compare(field); }
  void reserved(const char*, const auto&) {}

  template <class R>
  void list(const char*, const std::vector<R>& records) {
    const std::vector<R>& others = Other(records);
    areEqual_ = areEqual_ && records.size() == others.size();
    for (std::size_t i = 0; areEqual_ && i < records.size(); ++i) {
      areEqual_ = Codec<R>::AreEqual(records[i], others[i]);
    }
  }

  void block64(const char*, const auto& block) { CompareRecords(block); }
  void record(const char*, const auto& nested) { CompareRecords(nested); }
  void base(const auto& part) { CompareRecords(part); }
  /// What a derived class adds to the part is unknown here and not compared.
  void virtualPart(const char*, const auto& part) { CompareRecords(part); }

  /// A field is compared even if its row does not travel.
  bool onlyIf(const Condition&, const auto&, auto) { return true; }

 private:
  static std::uintptr_t AddressOf(const void* object) { return reinterpret_cast<std::uintptr_t>(object); }

  template <class T>
  const T& Other(const T& field) const {
    return *reinterpret_cast<const T*>(AddressOf(std::addressof(field)) + distance_);
  }
  template <class T>
  void Compare(const T& field) {
    areEqual_ = areEqual_ && field == Other(field);
  }
  template <class R>
  void CompareRecords(const R& part) {
    areEqual_ = areEqual_ && Codec<R>::AreEqual(part, Other(part));
  }

  std::uintptr_t distance_;
  bool areEqual_ = true;
};

}  // namespace zvuti::wire
