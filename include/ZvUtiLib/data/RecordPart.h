// Finds the record that a class extends, and refuses to read or write only that part of it in a sequence.
#pragma once

#include <type_traits>
#include <utility>

#include <ZvUtiLib/data/CStream.h>

namespace zvuti {

/// Makes a call of RecordPart look into this namespace.
struct LookUp {};

namespace wire {

/// The record that T is or extends, as Type; void if there is none.
template <class T, class = void>
struct RecordInside {
  using Type = void;  ///< none
};
/// The record that T is or extends, as Type.
template <class T>
struct RecordInside<T, std::void_t<decltype(RecordPart(std::declval<const T*>(), LookUp()))>> {
  using Type = decltype(RecordPart(std::declval<const T*>(), LookUp()));  ///< the record
};

/// Converts to T, and not to what T extends, so it fits only operators for a T.
template <class T>
struct Only {
  /// Only declared: for use in decltype.
  template <class U, std::enable_if_t<std::is_same_v<std::remove_const_t<U>, T>, int> = 0>
  operator U&() const;  // NOLINT(google-explicit-constructor)
};

/// Whether an element has operators of its own. Otherwise those of the record that it extends would be
/// called.
template <class T, class = void>
inline constexpr bool kReadsItself = false;
template <class T>
inline constexpr bool
    kReadsItself<T, std::void_t<decltype(std::declval<CStreamReader&>() >> std::declval<Only<T>>())>> = true;
/// Whether an element has an operator of its own for writing.
template <class T, class = void>
inline constexpr bool kWritesItself = false;
template <class T>
inline constexpr bool
    kWritesItself<T, std::void_t<decltype(std::declval<CStreamWriter&>() << std::declval<Only<T>>())>> = true;

/// Whether the operators of R are virtual calls, so that a class derived from R travels whole.
template <class R>
inline constexpr bool kIsVirtual = false;

}  // namespace wire

/// The record that T is or extends, void if there is none.
template <class T>
using RecordIn = typename wire::RecordInside<T>::Type;

namespace wire {

/// Whether T extends a record whose operators would lose the fields that T adds.
template <class T>
inline constexpr bool kExtendsRecord =
    !std::is_void_v<RecordIn<T>> && !std::is_same_v<RecordIn<T>, T> && !kIsVirtual<RecordIn<T>>;

/// Refuses elements whose own fields would be lost.
template <bool kIsWhole>
constexpr void RequireWhole() {
  static_assert(kIsWhole,
                "A class that extends a record would lose its own fields here. Declare for it "
                "CStreamWriter& operator<<(CStreamWriter&, const T&) and "
                "CStreamReader& operator>>(CStreamReader&, T&): pass on static_cast<Record&>(value), "
                "then each field.");
}

}  // namespace wire
}  // namespace zvuti
