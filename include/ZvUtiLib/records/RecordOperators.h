// ZVUTILIB_RECORD: the stream operators of a record, alone and in a sequence, and == and != of records.
#pragma once

#include <type_traits>
#include <utility>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/Containers.h>

namespace zvuti {

/// Whether T is a record of the library, and not a class that extends one.
template <class T>
inline constexpr bool kIsRecord = std::is_same_v<T, RecordIn<T>>;

/// What == of records calls.
template <class R>
bool AreEqual(const R& a, const R& b);

}  // namespace zvuti

/// Compare all fields of two records: numbers as they are in memory, sequences in order, fields that do not
/// travel, too. Reserved bytes do not count, nor does what a class derived from CUtiDailyState adds. A class
/// that extends a record has no ==, as this one would compare a part of it; it declares its own.
template <class R, std::enable_if_t<zvuti::kIsRecord<R>, int> = 0>
bool operator==(const R& a, const R& b) {
  return zvuti::AreEqual(a, b);
}
/// The opposite of ==.
template <class R, std::enable_if_t<zvuti::kIsRecord<R>, int> = 0>
bool operator!=(const R& a, const R& b) {
  return !(a == b);
}

// NOLINTBEGIN(bugprone-macro-parentheses): R is a type

/// Makes R a value with == and !=. RecordPart is never called; it finds the record that a class extends.
#define ZVUTILIB_VALUE(R)                             \
  namespace zvuti {                                   \
  template <>                                         \
  ZVUTILIB_API bool AreEqual(const R& a, const R& b); \
  R RecordPart(const R* record, LookUp);              \
  }

/// Declares the operators that write and read an R, field by field in wire order, and a sequence of R: a
/// 16-bit count and the elements. Reading appends to the containers in the target. If the stream ends early,
/// an incomplete number, tag or block leaves its field unchanged, and reading continues with the next field.
/// Some fields are set even then: a text (empty if its length is missing, otherwise of that length), a byte
/// code (0, or the previous code in the record), the Count of a single piece (1), and a sequence or map, by
/// its count. A BinaryKind throws. See docs/wire-format.md, "Bytes that end early". Makes R a value.
#define ZVUTILIB_RECORD(R)                                                                   \
  ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const R& record);               \
  ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, R& record);                      \
  ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const std::vector<R>& records); \
  ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, std::vector<R>& records);        \
  ZVUTILIB_VALUE(R)

// NOLINTEND(bugprone-macro-parentheses)
