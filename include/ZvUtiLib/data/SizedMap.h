// The ordered containers of the record layer. Their nodes are sized blocks.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <utility>

#include <ZvUtiLib/data/SizedMemory.h>

namespace zvuti {

/// std::map whose nodes are sized blocks.
template <class Key, class Value, class Order = std::less<Key>>
using SizedMap = std::map<Key, Value, Order, SizedAllocator<std::pair<const Key, Value>>>;

/// std::set whose nodes are sized blocks.
template <class Key, class Order = std::less<Key>>
using SizedSet = std::set<Key, Order, SizedAllocator<Key>>;

/// Copy a map or a set with any allocator into one of the record layer, as in
/// `player.Attributes = zvuti::ToSized(map)`.
template <class Key, class Value, class Order, class Allocator>
SizedMap<Key, Value, Order> ToSized(const std::map<Key, Value, Order, Allocator>& map) {
  return {map.begin(), map.end(), map.key_comp()};
}
/// The same for a set.
template <class Key, class Order, class Allocator>
SizedSet<Key, Order> ToSized(const std::set<Key, Order, Allocator>& set) {
  return {set.begin(), set.end(), set.key_comp()};
}

/// Copy a map or a set of the record layer into a plain one, as in `std::map<int, int> map =
/// zvuti::ToStandard(player.Attributes)`.
template <class Key, class Value, class Order, class Allocator>
std::map<Key, Value, Order> ToStandard(const std::map<Key, Value, Order, Allocator>& map) {
  return {map.begin(), map.end(), map.key_comp()};
}
/// The same for a set.
template <class Key, class Order, class Allocator>
std::set<Key, Order> ToStandard(const std::set<Key, Order, Allocator>& set) {
  return {set.begin(), set.end(), set.key_comp()};
}

}  // namespace zvuti
