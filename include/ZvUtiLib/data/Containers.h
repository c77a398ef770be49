// Stream operators of containers: std::vector of any type that has << and >>, std::map of 32-bit numbers.
//
// Reading adds to what the target holds: elements are appended, and map entries replace those with the same
// key. The library's records have their own operators for sequences, which do the same in time linear in
// the bytes (except accounts with a derived state). Elements of other types, including nested sequences,
// are read and written one by one. Each such read moves the rest of the stream down: n elements in a stream
// of m bytes cost n times m, so the host must bound both.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/Cursor.h>
#include <ZvUtiLib/data/RecordPart.h>

namespace zvuti::wire {

/// True if sequences of T are copied as one block.
template <class T>
inline constexpr bool kIsBulk = kIsPlain<T> && !std::is_same_v<T, bool>;

/// True if a map of these types can be written: 32-bit keys and values.
template <class Key, class Value>
inline constexpr bool kIsPlainEntry = kIsPlain<Key> && sizeof(Key) == 4 && kIsPlain<Value> &&
                                      sizeof(Value) == 4;

}  // namespace zvuti::wire

/// Sequences of texts: a 16-bit count, then each text in its text form. Reading appends.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const std::vector<std::string>& texts);
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, std::vector<std::string>& texts);

/// Writes a 16-bit count and the elements. If the sequence is longer than 65,535 elements, the count is the
/// low 16 bits of its size, and only that many leading elements are written.
template <class T, class Allocator>
CStreamWriter& operator<<(CStreamWriter& out, const std::vector<T, Allocator>& items) {
  zvuti::wire::RequireWhole<!zvuti::wire::kExtendsRecord<T> || zvuti::wire::kWritesItself<T>>();
  const auto count = static_cast<std::uint16_t>(items.size());
  if constexpr (zvuti::wire::kIsBulk<T>) {
    const unsigned bytes = count * static_cast<unsigned>(sizeof(T));
    if (out.Reserve(static_cast<int>(sizeof count + bytes), GrowRounded)) {
      out << count;
      if (count > 0) out.Write(items.data(), bytes);
      return out;
    }
  }
  out << count;
  for (std::uint16_t i = 0; i < count; ++i) out << items[i];
  return out;
}

/// Reads a 16-bit count and appends that many elements, each default-constructed and then read.
template <class T, class Allocator>
CStreamReader& operator>>(CStreamReader& in, std::vector<T, Allocator>& items) {
  zvuti::wire::RequireWhole<!zvuti::wire::kExtendsRecord<T> || zvuti::wire::kReadsItself<T>>();
  std::uint16_t count = 0;
  in >> count;
  if constexpr (zvuti::wire::kIsBulk<T>) {
    const std::size_t first = items.size();
    items.resize(first + count);
    const std::size_t present =
        std::min<std::size_t>(count, static_cast<std::size_t>(in.Length()) / sizeof(T));
    in.Read(items.data() + first, static_cast<int>(present * sizeof(T)));
  } else {
    for (std::uint16_t i = 0; i < count; ++i) {
      T item{};
      in >> item;
      items.push_back(std::move(item));
    }
  }
  return in;
}

/// Writes a 32-bit count and the entries in key order, each as key and value.
template <class Key, class Value, class Order, class Allocator,
          std::enable_if_t<zvuti::wire::kIsPlainEntry<Key, Value>, int> = 0>
CStreamWriter& operator<<(CStreamWriter& out, const std::map<Key, Value, Order, Allocator>& map) {
  constexpr std::size_t kLargest = std::numeric_limits<int>::max();
  // Reserves once. If that fails, each entry is appended as far as memory allows.
  out.Reserve(static_cast<int>(std::min(kLargest, 4 + std::min(kLargest / 8, map.size()) * 8)), GrowRounded);
  out << static_cast<std::uint32_t>(map.size());
  for (const auto& [key, value] : map) out << key << value;
  return out;
}

/// Reads a signed 32-bit count and assigns that many entries; a count below 1 reads none.
template <class Key, class Value, class Order, class Allocator,
          std::enable_if_t<zvuti::wire::kIsPlainEntry<Key, Value>, int> = 0>
CStreamReader& operator>>(CStreamReader& in, std::map<Key, Value, Order, Allocator>& map) {
  zvuti::wire::Cursor cursor(in);
  zvuti::wire::TakeMap(cursor, map);
  return in;
}
