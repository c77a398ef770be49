// The records that every codec encodes and decodes, and their fields in declaration order.
#pragma once

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <ZvUtiLib/records/Account.h>
#include <ZvUtiLib/records/Bundles.h>
#include <ZvUtiLib/records/Player.h>

namespace bench {

using Items = std::vector<ItemRecord>;
struct BundleTable {
  zvuti::SizedMap<std::uint32_t, std::vector<std::uint32_t>> Groups;
  zvuti::SizedMap<std::uint32_t, BundleRecord> Bundles;
};

/// Every fourth item is a single piece, which has no count on the wire.
Items MakeItems(std::size_t count);
PlayerSnapshot MakeSnapshot(std::size_t items);
AccountRecord MakeAccount();
BundleTable MakeBundles(std::size_t count);

inline auto Fields(ItemRecord& r) {
  return std::tie(r.ItemId, r.Count, r.StartTime, r.ValidDays, r.DailyValue, r.Tag, r.ItemKey, r.TailByte);
}
inline auto Fields(PlayerStatus& r) { return std::tie(r.Kind, r.Word1, r.Word2); }
inline auto Fields(PlayerRecord& r) {
  return std::tie(r.Byte1, r.Byte2, r.Byte3, r.Byte4, r.Byte5, r.Byte6, r.SlotA, r.SlotB, r.Sex,
                  r.AccountFlags, r.Value1, r.Value2, r.Value3, r.Value4, r.Value5, r.Value6, r.Value7,
                  r.Value8, r.Purse2, r.Wide1, r.Wide2, r.Purse8, r.Purse1, r.Purse4, r.Status, r.Text1,
                  r.Text2, r.Attributes, r.Value9, r.Value10);
}
inline auto Fields(PlayerProfile& r) {
  return std::tie(r.ProfileByte1, r.ProfileByte2, r.ProfileText1, r.ProfileText2, r.ProfileText3,
                  r.ProfileText4, r.ProfileText5, r.ProfileText6, r.ProfileText7, r.ProfileText8);
}
inline auto Fields(PlayerGameStats& r) {
  return std::tie(r.Value1, r.Value2, r.WinCount, r.LoseCount, r.DrawCount, r.FleeCount, r.Value3, r.Value4,
                  r.Amount1, r.Limit, r.Used, r.Text);
}
inline auto Fields(PlayerSnapshot& r) { return std::tie(r.Player, r.Profile, r.Stats, r.Items); }
inline auto Fields(AccountExtra& r) { return std::tie(r.Flag, r.Value, r.Amount); }
inline auto Fields(CUtiDailyState& r) { return std::tie(r.Table.Counters, r.DailyFlags, r.LastingFlags); }
inline auto Fields(AccountRecord& r) {
  return std::tie(r.Value1, r.Value2, r.Text1, r.Text2, r.Text3, r.Byte1, r.Code1, r.Code2, r.Value3,
                  r.Value4, r.Value5, r.Amount1, r.Amount2, r.Amount3, r.Amount4, r.Byte2, r.Text4, r.Text5,
                  r.Text6, r.Text7, r.ProfileByte1, r.ProfileByte2, r.ProfileText1, r.ProfileText2,
                  r.ProfileText3, r.ProfileText4, r.ProfileText5, r.ProfileText6, r.ProfileText7,
                  r.ProfileText8, r.Byte3, r.Byte4, r.Value6, r.Value7, r.TextList, r.Amount5, r.State,
                  r.Extra);
}
inline auto Fields(BundleEntry& r) { return std::tie(r.ItemId, r.Count, r.Value1, r.Value2); }
inline auto Fields(BundleRecord& r) { return std::tie(r.Amount1, r.Amount2, r.Value, r.Entries); }
inline auto Fields(BundleTable& r) { return std::tie(r.Groups, r.Bundles); }

template <class T>
concept Record = requires(T& record) {
  Fields(record);
};

/// Whether all fields are equal.
template <class T>
bool IsSame(const T& a, const T& b) {
  if constexpr (Record<T>) {
    const auto left = Fields(const_cast<T&>(a));
    const auto right = Fields(const_cast<T&>(b));
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
      return (IsSame(std::get<I>(left), std::get<I>(right)) && ...);
    }
    (std::make_index_sequence<std::tuple_size_v<decltype(left)>>());
  } else if constexpr (requires { typename T::mapped_type; }) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](auto& x, auto& y) {
             return x.first == y.first && IsSame(x.second, y.second);
           });
  } else if constexpr (
      requires { a.begin(); } && !requires { a.c_str(); }) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](auto& x, auto& y) { return IsSame(x, y); });
  } else {
    return a == b;
  }
}

}  // namespace bench
