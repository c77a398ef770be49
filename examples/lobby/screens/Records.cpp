#include <string>
#include <type_traits>
#include <vector>

#include "Files.h"
#include "Screens.h"

namespace {

// Writes an answer to the outbox, reads it back and prints it field by field.
template <class Write>
void Answer(Report& report, const char* record, const char* name, Write write) {
  CStreamReader stream;
  write(stream);
  const std::string path = std::string("outbox/") + name;
  WriteBytes(path, stream.Data(), static_cast<std::size_t>(stream.Length()));

  const std::string bytes = ReadBytes(path);
  zvuti::RecordDump dump;
  zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
  report.Line("wrote %s, %d bytes of %s%s:", path.c_str(), static_cast<int>(bytes.size()), record,
              dump.isWhole ? "" : ", incomplete");
  for (const zvuti::DumpRow& row : dump.rows) {
    if (row.value.empty() || row.value == "0") continue;  // skip unset fields
    report.Line("  %6d  %s %s", static_cast<int>(row.offset), Padded(row.path, 34).c_str(),
                row.value.c_str());
    report.Did();
  }
}

template <class Record>
Record ReadRecord(const char* name) {
  const std::string bytes = ReadBytes(std::string("inbox/") + name);
  CStreamReader stream(bytes);
  Record record;
  if constexpr (std::is_same_v<Record, CUtiBundleTable>) {
    record.Read(stream);
  } else {
    stream >> record;
  }
  return record;
}

void HandleSnapshot(Report& report) {
  auto snapshot = ReadRecord<PlayerSnapshot>("snapshot.bin");
  PlayerRecord& player = snapshot.Player;
  report.Line("%s (%s), a %s%s", player.Text2.c_str(), player.Text1.c_str(),
              GetAccountLabel(static_cast<int>(player.AccountFlags & 15), 0).c_str(),
              player.IsFemale() ? ", female" : "");
  report.Line("won %d of %d games, flees %.1f%%, %lld of the limit left", snapshot.Stats.WinCount,
              snapshot.Stats.GetTotalGames(), 100.0 * snapshot.Stats.GetFleeRatio(),
              static_cast<long long>(snapshot.Stats.GetRemainder(0)));

  const struct {
    std::int64_t amount;
    int kind;
  } charges[] = {{-28'500, PurseKind1}, {-301, PurseKind2}, {250, PurseKind8}};
  for (const auto& charge : charges) {
    const int taken = player.AddToPurse(charge.amount, charge.kind);
    report.Line("purse %d: %lld %s, now %lld", charge.kind, static_cast<long long>(charge.amount),
                taken ? "booked" : "refused", static_cast<long long>(player.GetPurse(charge.kind)));
  }

  std::vector<ItemRecord> kept;
  for (const ItemRecord& item : snapshot.Items) {
    const bool isExpired = item.IsExpired();
    report.Line("item %d x%d, valid until %s%s", item.GetId(), item.GetCount(), item.GetExpiryText().c_str(),
                isExpired ? ": expired, removed" : "");
    if (isExpired) continue;
    if (item.GetRefundValue() > 0) {
      player.AddToPurse(item.GetRefundValue(), PurseKind1);
      report.Line("item %d returned for a refund", item.GetId());
      continue;
    }
    kept.push_back(item);
  }
  snapshot.Items = kept;
  report.Did(9);
  Answer(report, "PlayerSnapshot", "snapshot.bin", [&](CStreamReader& out) { out << snapshot; });
}

void HandleAccount(Report& report) {
  auto account = ReadRecord<AccountRecord>("account.bin");
  CUtiDailyState& state = account.State;
  report.Line("day %d of %s: %d seconds, flag 7 is %d", state.GetTable().GetCounter(KeyDayCount),
              account.Text2.c_str(), state.GetTable().GetCounter(KeyDaySeconds),
              state.GetFlag(7, FlagScopeDaily));
  state.RollOverDay();
  CByteBuffer counters;
  state.GetTable().AppendAsText(counters);
  report.Line("a new day: %s", std::string(reinterpret_cast<const char*>(counters.Data()),
                                           static_cast<std::size_t>(counters.Length()))
                                   .c_str());
  report.Did(2);
  Answer(report, "AccountRecord", "account.bin", [&](CStreamReader& out) { out << account; });
}

void HandleReward(Report& report) {
  const auto reward = ReadRecord<RewardRecord>("reward.bin");
  const auto rule = ReadRecord<BonusRule>("bonus.bin");
  report.Line("reward package: %s, %d pieces of item 7101", reward.IsEmpty() ? "empty" : "full",
              reward.GetId7101Count());
  BonusGrant grant;
  constexpr std::int64_t kPaid = 10'000;
  if (rule.IsUsable()) rule.FillGrant(kPaid, grant);
  report.Line("bonus by rule %d for %lld: %lld, total %lld", rule.RuleId, static_cast<long long>(kPaid),
              static_cast<long long>(rule.GetBonus(kPaid)),
              static_cast<long long>(rule.GetTotalValue(kPaid)));
  report.Did(2);
  Answer(report, "BonusGrant", "grant.bin", [&](CStreamReader& out) { out << grant; });
}

void HandleBundles(Report& report) {
  auto table = ReadRecord<CUtiBundleTable>("bundles.bin");
  std::vector<std::uint32_t> keys;
  report.Line("%d bundles, %d entries with item 7101, %d bundles with nothing else",
              static_cast<int>(table.Bundles.size()), table.FindBundlesWithItem(7101, keys), [&] {
                std::vector<std::uint32_t> single;
                return table.FindSingleItemBundles(7101, single);
              }());
  unsigned key = 0;
  if (table.FindBundle(*table.GetBundle(102), key)) report.Line("bundle 102 is found as %u", key);
  table.AddToGroup(103, 1);
  report.Line("group 1 contains 103: %d", table.IsInGroup(103, 1));
  report.Did(3);
  Answer(report, "CUtiBundleTable", "bundles.bin", [&](CStreamReader& out) { table.Write(out); });
}

}  // namespace

void ShowRecords(Report& report) {
  report.Section("Records");
  CKxIOUti::CreateDir(AppFile("outbox").c_str());
  HandleSnapshot(report);
  HandleAccount(report);
  HandleReward(report);
  HandleBundles(report);
}
