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

}  // namespace zvuti
