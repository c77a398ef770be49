#include "benchmarks/records/Data.h"

#include "benchmarks/Random.h"

namespace bench {
namespace {

// Fills a field with a value of typical size.
template <class T>
void Fill(std::mt19937& random, T& field) {
  if constexpr (Record<T>) {
    std::apply([&](auto&... fields) { (Fill(random, fields), ...); }, Fields(field));
  } else if constexpr (std::is_same_v<T, std::string>) {
    field = Hanzi(random, 4 + Below(random, 12));
  } else if constexpr (std::is_same_v<T, StatusKind>) {
    field = static_cast<StatusKind>(Below(random, 9));
  } else if constexpr (std::is_integral_v<T>) {
    field = static_cast<T>(sizeof(T) == 8 ? std::uint64_t{Below(random, 1u << 30)} << 10
                                          : Below(random, sizeof(T) == 1 ? 1u << 8 : 1u << 20));
  }
}

// Code fields travel as one byte.
void FitCodes(std::uint32_t& first, std::uint32_t& second) {
  first &= 0xFF;
  second &= 0xFF;
}

}  // namespace

Items MakeItems(std::size_t count) {
  std::mt19937 random(1);
  Items items(count);
  for (std::size_t i = 0; i < count; ++i) {
    Fill(random, items[i]);
    if (i % 4 != 3) continue;
    items[i].ItemKey = 1'000'000'000 + Below(random, 1u << 20);
    items[i].Count = 1;
  }
  return items;
}

PlayerSnapshot MakeSnapshot(std::size_t items) {
  std::mt19937 random(2);
  PlayerSnapshot snapshot;
  Fill(random, snapshot);
  FitCodes(snapshot.Player.Sex, snapshot.Player.AccountFlags);
  for (int i = 0; i < 8; ++i) snapshot.Player.Attributes[i] = static_cast<std::int32_t>(Below(random, 1000));
  snapshot.Items = MakeItems(items);
  return snapshot;
}

AccountRecord MakeAccount() {
  std::mt19937 random(3);
  AccountRecord account;
  Fill(random, account);
  FitCodes(account.Code1, account.Code2);
  for (int i = 0; i < 10; ++i) account.TextList.push_back(Hanzi(random, 8));
  for (int i = 0; i < 20; ++i) {
    account.State.Table.SetCounter(0x1000000 + i, i * 7);
    account.State.SetFlag(i, i % 2);
  }
  return account;
}

BundleTable MakeBundles(std::size_t count) {
  std::mt19937 random(4);
  BundleTable table;
  for (std::size_t key = 0; key < count; ++key) {
    BundleRecord& bundle = table.Bundles[static_cast<std::uint32_t>(key)];
    Fill(random, bundle);
    bundle.Entries.resize(1 + Below(random, 6));
    for (BundleEntry& entry : bundle.Entries) Fill(random, entry);
    table.Groups[static_cast<std::uint32_t>(key / 100)].push_back(static_cast<std::uint32_t>(key));
  }
  return table;
}

}  // namespace bench
