// The pairs of a dictionary in the order of visiting, and the order that is expected.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <ZvUtiLib/data/CStringDict.h>

namespace test {

using Pairs = std::vector<std::pair<std::string, std::string>>;

struct Collector {
  Pairs pairs;
  int Take(const char* key, const char* value) {
    pairs.emplace_back(key, value);
    return 0;
  }
};

inline Pairs PairsOf(const CStringDict& dict) {
  Collector collector;
  dict.Visit(&collector, &Collector::Take);
  return collector.pairs;
}

/// Continues the hash of a dictionary's keys over `key`; bytes of 0x80 and more are negative.
inline std::uint32_t ExpectedHash(const std::string& key, std::uint32_t hash = 2166136261) {
  for (const char byte : key)
    hash = hash * 16777619 ^ static_cast<std::uint32_t>(static_cast<signed char>(byte));
  return hash;
}

/// The pairs in the expected order of visiting, computed from the keys and their number without a hash table.
inline Pairs Ordered(const std::map<std::string, std::string>& model) {
  const std::size_t count = model.size();
  const std::size_t buckets = count < 5 ? 1 : 1 + (count - 1) / 4;
  std::size_t power = 2;
  while (power < buckets) power *= 2;
  std::vector<std::tuple<std::size_t, std::string, std::string>> order;
  for (const auto& [key, value] : model) {
    const std::size_t slot = ExpectedHash(key) % power;
    order.emplace_back(slot < buckets ? slot : slot - power / 2, key, value);
  }
  std::sort(order.begin(), order.end());
  Pairs pairs;
  for (const auto& [bucket, key, value] : order) pairs.emplace_back(key, value);
  return pairs;
}

}  // namespace test
