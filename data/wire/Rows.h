// The row list of a record: what goes over the wire, in which order and at which width.
//
// A list is written once, in the record's source, as calls on a visitor `v` with the record `r`. The writer,
// the reader, the size measurement and everything that shows a record are visitors; RowWalk is what they have
// in common. Codec.h lists the kinds of rows.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

#include <ZvUtiLib/data/RowComparison.h>

// Reading and writing a record should compile to one straight run of moves. Without this the compiler leaves
// calls in it.
#define ZV_INLINE [[gnu::always_inline]] inline

/// Opens the row list of a record type.
#define ZV_ROWS(R_)                                            \
  template <::zvuti::wire::RowWalk V, ::zvuti::wire::Is<R_> R> \
  ZV_INLINE constexpr void Rows([[maybe_unused]] V& v, [[maybe_unused]] R& r)

/// Opens the row list of a block of `bytes` bytes.
#define ZV_BLOCK_ROWS(R_, bytes)                        \
  static_assert(kIsBlock<R_, bytes>);                   \
  template <>                                           \
  inline constexpr std::size_t kBlockBytes<R_> = bytes; \
  ZV_ROWS(R_)

/// Name and field of a row.
#define ZV_ROW(field) #field, r.field

namespace zvuti::wire {

/// R is T, or const T for visitors that write.
template <class R, class T>
concept Is = std::same_as<std::remove_const_t<R>, T>;

/// A record, seen as the record that it extends.
template <class Base, class R>
constexpr auto& BaseOf(R& record) {
  static_assert(std::is_base_of_v<Base, R>);
  if constexpr (std::is_const_v<R>) {
    return static_cast<const Base&>(record);
  } else {
    return static_cast<Base&>(record);
  }
}

template <class T>
inline constexpr bool kIsNumber = std::is_integral_v<T> && !std::is_same_v<std::remove_const_t<T>, bool>;

/// T may travel as its memory image: it has no padding, so every byte of it has a value.
template <class T, std::size_t kBytes>
inline constexpr bool kIsBlock =
    sizeof(T) == kBytes&& std::is_trivially_copyable_v<T>&& std::has_unique_object_representations_v<T>;

/// The size of a block; 0 for a record that travels row by row.
template <class R>
inline constexpr std::size_t kBlockBytes = 0;

/// The wire tags of an enumeration whose members are 0, 1, 2 and so on; no tag is 0.
struct TagTable {
  const char* name;
  const std::uint32_t* tags;
  std::uint32_t count;
  bool unknownThrows;  ///< otherwise an unknown member writes nothing and an unknown tag stores nothing

  /// The tag of a member, or null.
  template <class E>
  constexpr const std::uint32_t* TagOf(E member) const {
    const auto number = static_cast<std::uint32_t>(member);
    return number < count ? tags + number : nullptr;
  }
  /// The number of the member with a tag, or `count`.
  constexpr std::uint32_t MemberOf(std::uint32_t tag) const {
    std::uint32_t number = 0;
    while (number < count && tags[number] != tag) ++number;
    return number;
  }
};

/// The table of an enumeration; the header that knows E's tags gives its value.
template <class E>
inline constexpr TagTable kTags = {nullptr, nullptr, 0, true};

/// The condition of a row: a comparison of a field, an earlier integer of the record, with a constant.
struct Condition {
  const char* field;
  RowComparison comparison;
  std::int64_t constant;
};

template <class R>
struct Codec;

/// What every visitor of rows has: one operation for each kind of row, each taking the row's name and field,
/// and kReads, true if it stores into the fields. Rows for records, blocks and lists take any type.
template <class V>
concept RowWalk = requires(V& v, const char* name, std::uint8_t& number8, std::uint16_t& number16,
                           std::int32_t& number32, std::uint32_t& unsigned32, std::int64_t& number64,
                           std::string& text) {
  { V::kReads } -> std::convertible_to<bool>;
  v.bits8(name, number8);
  v.bits16(name, number16);
  v.bits32(name, number32);
  v.bits64(name, number64);
  v.packedTime(name, unsigned32);
  v.code(name, number32);
  v.text(name, text);
  v.local(name, text);
};

/// The fixed-width bytes of a record's rows, in runs. A row of variable length ends a run. If that row is a
/// text, its count belongs to the run. Example: bits8, bits32, text, bits16 has the runs 7 and 2.
struct Shape {
  std::uint16_t runs[48] = {};
  int rowsBetween = 0;     ///< rows of variable length, one less than there are runs
  int virtualParts = 0;    ///< rows that read and write themselves
  std::size_t fields = 0;  ///< fields that have a row, those of base records included
};

/// Stands for a value of any type when the fields of R are counted. It does not convert to a base record, so
/// that the base's fields count one by one.
template <class R>
struct AnyField {
  template <class T>
  requires(!std::is_base_of_v<T, R>) operator T() const;  // NOLINT(google-explicit-constructor)
};

template <class R, std::size_t... kIndexes>
constexpr bool HasFields(std::index_sequence<kIndexes...>) {
  return requires { R{(static_cast<void>(kIndexes), AnyField<R>())...}; };
}

/// Counts the fields of a structure without arrays, those of its base records included.
template <class R, std::size_t kCount = 1>
consteval std::size_t CountFields() {
  if constexpr (HasFields<R>(std::make_index_sequence<kCount>())) {
    return CountFields<R, kCount + 1>();
  } else {
    return kCount - 1;
  }
}

/// Measures the shape at compile time. Conditional rows count as present, except those under condition number
/// `skipped`.
class Meter {
 public:
  static constexpr bool kReads = false;

  constexpr explicit Meter(int skipped = -1) : skipped_(skipped) {}

  constexpr void bits8(const char*, const auto&) { Fixed(1); }
  constexpr void bits16(const char*, const auto&) { Fixed(2); }
  constexpr void bits32(const char*, const auto&) { Fixed(4); }
  constexpr void bits64(const char*, const auto&) { Fixed(8); }
  constexpr void packedTime(const char*, const auto&) { Fixed(4); }
  constexpr void code(const char*, const auto&) { Fixed(1); }
  constexpr void tag(const char*, const auto&) { Fixed(4); }
  constexpr void block64(const char*, const auto&) { Fixed(64); }
  constexpr void text(const char*, const auto&) {
    Fixed(2);
    EndRun();
  }
  constexpr void list(const char*, const auto&) { Variable(); }
  constexpr void map(const char*, const auto&) { Variable(); }
  constexpr void blockMap(const char*, const auto&, auto) { Variable(); }
  constexpr void record(const char*, const auto&) { Variable(); }
  template <class Base>
  constexpr void base(const Base&) {
    EndRun();
    shape_.fields += CountFields<Base>();
  }
  constexpr void virtualPart(const char*, const auto&) {
    Variable();
    ++shape_.virtualParts;
  }
  constexpr void local(const char*, const auto&) { ++shape_.fields; }
  constexpr bool onlyIf(const Condition&, const auto&, auto) { return conditions_++ != skipped_; }

  constexpr const Shape& Result() const { return shape_; }
  /// The number of conditions met so far.
  constexpr int Conditions() const { return conditions_; }

 private:
  constexpr void Fixed(int bytes) {
    auto& run = shape_.runs[shape_.rowsBetween];
    run = static_cast<std::uint16_t>(run + bytes);
    ++shape_.fields;
  }
  constexpr void Variable() {
    EndRun();
    ++shape_.fields;
  }
  constexpr void EndRun() { ++shape_.rowsBetween; }

  Shape shape_;
  int conditions_ = 0;
  int skipped_;
};

// Meter needs a record to call Rows with, at compile time, but never looks at its fields, and records with
// containers have no compile-time objects. So it gets the name of an object that exists nowhere: declared,
// not defined, and a union, so that not even its constructor is needed.
template <class R>
union Phantom {
  char none;
  R record;
  Phantom();
  ~Phantom();
};
template <class R>
extern Phantom<R> phantom;

#if defined(__clang__)
#  pragma clang diagnostic push
#  pragma clang diagnostic ignored "-Wundefined-var-template"
#endif
template <class R>
constexpr Meter Measured(int skipped = -1) {
  Meter meter(skipped);
  Rows(meter, phantom<R>.record);
  return meter;
}

/// True if no run grows and none appears or disappears, whichever condition fails.
template <class R>
constexpr bool KeepsRuns() {
  const Shape full = Measured<R>().Result();
  for (int skipped = 0; skipped < Measured<R>().Conditions(); ++skipped) {
    const Shape shape = Measured<R>(skipped).Result();
    if (shape.rowsBetween != full.rowsBetween) return false;
    for (int run = 0; run <= full.rowsBetween; ++run) {
      if (shape.runs[run] > full.runs[run]) return false;
    }
  }
  return true;
}

template <class R>
constexpr Shape MeasureShape() {
  static_assert(KeepsRuns<R>(),
                "a conditional row has a fixed width, and no wider row takes its place: texts, lists, maps "
                "and records always travel, empty where they do not matter");
  if constexpr (std::is_aggregate_v<R>) {
    static_assert(Measured<R>().Result().fields == CountFields<R>(),
                  "each field of a record has one row: v.local for a field that does not travel");
  }
  return Measured<R>().Result();
}
#if defined(__clang__)
#  pragma clang diagnostic pop
#endif

template <class R>
inline constexpr Shape kShape = MeasureShape<R>();

}  // namespace zvuti::wire
