// Wire records, bundles and descriptions.
#include <algorithm>
#include <memory>

#include <ZvUtiLib/records/Account.h>
#include <ZvUtiLib/records/Bundles.h>
#include <ZvUtiLib/records/Describe.h>

#include "benchmarks/growth/Growth.h"
#include "benchmarks/records/Data.h"
#include "data/wire/Sinks.h"
#include "records/Units.h"

namespace growth {
namespace {

// A table reads and writes itself.
CStreamWriter& operator<<(CStreamWriter& out, const CUtiBundleTable& table) {
  table.Write(out);
  return out;
}
CStreamReader& operator>>(CStreamReader& in, CUtiBundleTable& table) {
  table.Read(in);
  return in;
}

template <class T>
std::string BytesOf(const T& value) {
  CStreamReader stream;
  stream << value;
  return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
}

template <class T>
Work ReadBack(const T& value) {
  const std::string bytes = BytesOf(value);
  return {bytes.size(), [bytes] {
            CStreamReader stream(bytes);
            T read{};
            stream >> read;
          }};
}

template <class T>
Work Write(const T& value) {
  return {BytesOf(value).size(), [value] {
            CStreamReader stream;
            stream << value;
          }};
}

// Every record, read from the same bytes.
Work ReadEach(const std::string& bytes) {
  return {bytes.size(), [bytes] {
            for (const auto* type : zvuti::wire::AllRecords()) {
              CStreamReader stream(bytes);
              const auto record = type->make();
              try {
                type->read(stream, record.get());
              } catch (const zvuti::wire::UnknownMember&) {
              }
            }
          }};
}

std::vector<AccountRecord> Accounts(std::size_t count) {
  return std::vector<AccountRecord>(count, bench::MakeAccount());
}

// A map of `count` entries whose keys come in this order.
std::string CounterBytes(std::size_t count, bool isFalling) {
  CStreamReader stream;
  stream << static_cast<std::uint16_t>(count);
  for (std::size_t i = 0; i < count; ++i)
    stream << static_cast<std::uint32_t>(isFalling ? count - i : i) << std::uint32_t{1};
  return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
}

CUtiBundleTable Table(std::size_t groups) {
  CUtiBundleTable table;
  for (unsigned i = 0; i < groups; ++i) {
    table.AddToGroup(i, i % 7);
    table.SetBundle(i, BundleRecord{0, 0, i, {{{1, 1}, 0, 0}}});
    table.MarkId(i);
  }
  return table;
}

// Each operation that changes or searches the table, `count` times or over `count` entries.
Work Groups(std::size_t count) {
  return {count * 8, [count] {
            CUtiBundleTable table;
            for (unsigned i = 0; i < count; ++i) table.AddToGroup(i, 1);
            std::vector<std::uint32_t> found;
            table.GetGroup(1, found);
            table.IsInGroup(~0u, 1);
            table.FindGroupsOf(~0u, found);
            table.RemoveGroup(1);
          }};
}

Work Bundles(std::size_t count) {
  return {count * 8, [count] {
            CUtiBundleTable table = Table(count);
            std::vector<std::uint32_t> found;
            table.FindBundlesWithItem(2, found);
            table.FindSingleItemBundles(1, found);
            for (unsigned i = 0; i < count; ++i) table.IsMarked(i);
            table.Clear();
          }};
}

// Bundles of which all but the last entry are alike, in the other order.
Work FindBundle(std::size_t entries) {
  BundleRecord wanted;
  for (std::size_t i = 0; i < entries; ++i)
    wanted.Entries.push_back({{5, 1}, 0, static_cast<std::int32_t>(i)});
  BundleRecord stored = wanted;
  std::reverse(stored.Entries.begin(), stored.Entries.end());
  stored.Entries.back().Count = 2;
  auto table = std::make_shared<CUtiBundleTable>();
  table->SetBundle(6, stored);
  return {entries * sizeof(BundleEntry), [table, wanted] {
            unsigned key = 0;
            table->FindBundle(wanted, key);
          }};
}

Work Dump(const char* record, const std::string& bytes) {
  return {bytes.size(), [record, bytes] {
            zvuti::RecordDump dump;
            zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
          }};
}

// Sets an item of each index, from the first to the last or the other way.
Work Fill(std::size_t count, bool isFalling) {
  std::vector<zvuti::NamedValue> values{{"Items", std::to_string(count)}};
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t index = isFalling ? count - 1 - i : i;
    values.push_back({"Items[" + std::to_string(index) + "].ItemId", "1"});
  }
  return {count * 20, [values] {
            std::string bytes, problem;
            zvuti::FillRecord("PlayerSnapshot", values, bytes, problem);
          }};
}

// Sets an entry of each key of a map.
Work FillMap(std::size_t count) {
  std::vector<zvuti::NamedValue> values;
  for (std::size_t i = count; i > 0; --i) values.push_back({"Attributes[" + std::to_string(i) + "]", "1"});
  return {count * 20, [values] {
            std::string bytes, problem;
            zvuti::FillRecord("PlayerRecord", values, bytes, problem);
          }};
}

}  // namespace

std::vector<Shape> RecordShapes() {
  return {
      {"Records/items", 1000, [](std::size_t n) { return ReadBack(bench::MakeItems(n)); }},
      {"Records/accounts", 50, [](std::size_t n) { return ReadBack(Accounts(n)); }},
      {"Records/written-accounts", 50, [](std::size_t n) { return Write(Accounts(n)); }},
      {"Records/all-ones", 500, [](std::size_t n) { return ReadEach(std::string(n, '\xFF')); }, 150'000,
       50'000},
      {"Records/zeros", 500, [](std::size_t n) { return ReadEach(std::string(n, '\0')); }},
      {"CUtiBundleTable::Read/table", 500, [](std::size_t n) { return ReadBack(Table(n)); }},
      {"CUtiBundleTable::Write/table", 500, [](std::size_t n) { return Write(Table(n)); }},
      {"CUtiBundleTable::FindBundle/alike", 1000, FindBundle},
      {"CUtiBundleTable::AddToGroup/one-group", 1000, Groups},
      {"CUtiBundleTable::SetBundle/many", 1000, Bundles},
      {"DumpRecord/items", 200,
       [](std::size_t n) { return Dump("PlayerSnapshot", BytesOf(bench::MakeSnapshot(n))); }},
      {"DumpRecord/all-ones", 2000,
       [](std::size_t n) { return Dump("AccountRecord", std::string(n, '\xFF')); }},
      {"DumpRecord/falling-keys", 1000,
       [](std::size_t n) { return Dump("CUtiCounterTable", CounterBytes(n, true)); }},
      {"DumpRecord/rising-keys", 1000,
       [](std::size_t n) { return Dump("CUtiCounterTable", CounterBytes(n, false)); }},
      {"FillRecord/rising", 200, [](std::size_t n) { return Fill(n, false); }},
      {"FillRecord/falling", 200, [](std::size_t n) { return Fill(n, true); }},
      {"FillRecord/map", 200, FillMap},
  };
}

}  // namespace growth
