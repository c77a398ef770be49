#include <ZvUtiLib/records/Bundles.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "tests/support/HeapFaults.h"

namespace {

using namespace std::string_literals;
using Keys = std::vector<std::uint32_t>;

BundleEntry Entry(int id, int count = 1, std::uint32_t value1 = 0, int value2 = 0) {
  BundleEntry entry;
  entry.ItemId = id;
  entry.Count = count;
  entry.Value1 = value1;
  entry.Value2 = value2;
  return entry;
}

BundleRecord Bundle(std::vector<BundleEntry> entries, std::uint32_t value = 0) {
  BundleRecord bundle;
  bundle.Value = value;
  bundle.Entries = std::move(entries);
  return bundle;
}

CUtiBundleTable SampleTable() {
  CUtiBundleTable table;
  for (const unsigned member : {7u, 8u, 7u}) table.AddToGroup(member, 0x80000000);
  table.AddToGroup(9, 1);
  table.SetBundle(0x80000001, Bundle({Entry(20), Entry(20, 2)}, 5));
  table.SetBundle(2, Bundle({Entry(30)}, 6));
  return table;
}

std::string Bytes(const CUtiBundleTable& table) {
  CStreamReader stream;
  table.Write(stream);
  return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
}

std::string Word(std::uint32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

std::string EntryBytes(std::uint32_t id, std::uint32_t count) {
  return Word(id) + Word(count) + Word(0) + Word(0);
}

// The table above, row by row; unsigned keys put 0x80000000 behind 1.
std::vector<std::string> SampleRows() {
  const std::string amounts[] = {std::string(8, '\0'), std::string(8, '\0')};
  return {Word(2),          Word(2),                                   // counts
          Word(1),          Word(1),    Word(9),                       // group 1
          Word(0x80000000), Word(3),    Word(7),    Word(8), Word(7),  // group 0x80000000
          Word(2),          amounts[0], amounts[1], Word(6), "\x01\0"s, EntryBytes(30, 1),  // bundle 2
          Word(0x80000001), amounts[0], amounts[1], Word(5), "\x02\0"s, EntryBytes(20, 1), EntryBytes(20, 2)};
}

std::string Joined(const std::vector<std::string>& rows) {
  std::string all;
  for (const std::string& row : rows) all += row;
  return all;
}

TEST(BundleTable, CountsStandInFrontAndKeysAscendUnsigned) {
  EXPECT_EQ(Bytes(SampleTable()), Joined(SampleRows()));
  EXPECT_EQ(Bytes(CUtiBundleTable()), std::string(8, '\0'));
}

TEST(BundleTable, IsReadBackAndOnlyMarkedIdsStay) {
  const std::string bytes = Joined(SampleRows());
  CUtiBundleTable table;
  table.MarkId(3);
  table.AddToGroup(1, 1);
  table.SetBundle(77, {});
  CStreamReader stream(bytes + "more");
  table.Read(stream);
  EXPECT_EQ(Bytes(table), bytes);
  EXPECT_EQ(stream.Length(), 4);
  EXPECT_TRUE(table.IsMarked(3));
  EXPECT_FALSE(table.IsMarked(4));

  CStreamReader empty(std::string(8, '\0'));
  table.Read(empty);
  EXPECT_TRUE(table.Groups.empty());
  EXPECT_TRUE(table.Bundles.empty());
}

TEST(BundleTable, CutShortItKeepsWhatIsCompleteAndLeavesTheRest) {
  const std::vector<std::string> rows = SampleRows();
  const std::string bytes = Joined(rows);
  // Rows behind which a group or a bundle has become larger.
  const std::size_t member[] = {4, 7, 8, 9};
  const std::size_t bundle[] = {15, 22};
  for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
    std::size_t whole = 0;  // rows
    std::size_t taken = 0;  // bytes
    while (taken + rows[whole].size() <= cut) taken += rows[whole++].size();

    CUtiBundleTable table;
    CStreamReader stream(bytes.substr(0, cut));
    table.Read(stream);
    std::size_t members = 0;
    for (const auto& group : table.Groups) {
      EXPECT_FALSE(group.second.empty()) << cut;
      members += group.second.size();
    }
    const auto before = [&](std::size_t row) { return row < whole; };
    EXPECT_EQ(members, static_cast<std::size_t>(std::count_if(std::begin(member), std::end(member), before)))
        << cut;
    EXPECT_EQ(table.Bundles.size(),
              static_cast<std::size_t>(std::count_if(std::begin(bundle), std::end(bundle), before)))
        << cut;
    EXPECT_EQ(static_cast<std::size_t>(stream.Length()), cut - taken) << cut;
  }
}

TEST(BundleTable, HostileCountsCostNothing) {
  const std::string cases[] = {
      Word(0x7FFFFFFF) + Word(0x7FFFFFFF) + Word(1) + Word(0xFFFFFFFF) + Word(5),
      Word(0) + Word(0x7FFFFFFF) + Word(1) + std::string(20, '\0') + "\xFF\xFF",
      Word(0xFFFFFFFF) + Word(0x80000000) + Word(1),
  };
  for (const std::string& bytes : cases) {
    CStreamReader stream(bytes);
    CUtiBundleTable table;
    const test::HeapFaults heap(0);
    table.Read(stream);
    EXPECT_LT(heap.BytesAsked(), 4096u);
    EXPECT_TRUE(table.Bundles.empty());
    EXPECT_LE(table.Groups.size(), 1u);
  }
  CStreamReader negative(cases[2]);
  CUtiBundleTable().Read(negative);
  EXPECT_EQ(negative.Length(), 4);
}

TEST(BundleTable, LargeGroupsAreWrittenInOneReservation) {
  CUtiBundleTable table;
  table.Groups[1].assign(100'000, 3);
  CStreamReader stream;
  const test::HeapFaults heap(0);
  table.Write(stream);
  EXPECT_EQ(heap.Tried(), 1);
  EXPECT_EQ(stream.Length(), 8 + 8 + 400'000);
}

TEST(BundleTable, QuestionsAppendAndCountWhatIsThere) {
  const CUtiBundleTable table = SampleTable();
  Keys out = {99};
  EXPECT_EQ(table.FindGroupsOf(7, out), 3);
  EXPECT_EQ(out, (Keys{99, 0x80000000, 0x80000000}));
  EXPECT_EQ(table.FindBundlesWithItem(20, out), 5);
  EXPECT_EQ(table.FindSingleItemBundles(20, out), 5);
  EXPECT_EQ(table.FindSingleItemBundles(30, out), 6);
  EXPECT_EQ(out, (Keys{99, 0x80000000, 0x80000000, 0x80000001, 0x80000001, 2}));
  EXPECT_EQ(table.GetGroup(5, out), 6);
  EXPECT_EQ(table.GetGroup(0x80000000, out), 3);
  EXPECT_EQ(out, (Keys{7, 8, 7}));
  EXPECT_EQ(table.IsInGroup(8, 0x80000000), 1);
  EXPECT_EQ(table.IsInGroup(9, 0x80000000), 0);
  EXPECT_EQ(table.IsInGroup(9, 5), 0);
  EXPECT_EQ(table.GetBundle(3), nullptr);
  ASSERT_NE(table.GetBundle(2), nullptr);
  EXPECT_EQ(table.GetBundle(2)->Value, 6u);
  EXPECT_EQ(table.Groups.size(), 2u);
  EXPECT_EQ(table.Bundles.size(), 2u);

  CUtiBundleTable copy(table);
  EXPECT_EQ(copy.GetBundle(3), nullptr);
  ASSERT_NE(copy.GetBundle(2), nullptr);
  copy.GetBundle(2)->Value = 7;
  EXPECT_EQ(table.GetBundle(2)->Value, 6u);
  EXPECT_EQ(copy.RemoveGroup(1), 1);
  EXPECT_EQ(copy.RemoveGroup(1), 0);
  EXPECT_EQ(table.IsInGroup(9, 1), 1);
}

TEST(BundleTable, SamenessGoesOneWayAndTheLowestKeyWins) {
  const BundleEntry a = Entry(1);
  const BundleEntry b = Entry(1, 1, 0, 2);  // differs in Value2 only
  EXPECT_TRUE(Bundle({a, b}).IsSameAs(Bundle({b, a})));
  EXPECT_TRUE(Bundle({a, a}).IsSameAs(Bundle({a, b})));
  EXPECT_FALSE(Bundle({a, b}).IsSameAs(Bundle({a, a})));
  EXPECT_FALSE(Bundle({a}).IsSameAs(Bundle({b})));
  for (const BundleEntry& other : {Entry(2), Entry(1, 2), Entry(1, 1, 3)})
    EXPECT_FALSE(Bundle({a}).IsSameAs(Bundle({other})));
  EXPECT_FALSE(Bundle({a}).IsSameAs(Bundle({a, a})));
  EXPECT_FALSE(Bundle({a}, 1).IsSameAs(Bundle({a}, 2)));
  BundleRecord other = Bundle({a});
  other.Amount1 = 1;
  EXPECT_FALSE(Bundle({a}).IsSameAs(other));
  other.Amount1 = 0, other.Amount2 = 1;
  EXPECT_FALSE(Bundle({a}).IsSameAs(other));

  CUtiBundleTable table;
  table.SetBundle(0xF0000000, Bundle({a}));
  table.SetBundle(5, Bundle({a}));
  unsigned key = 42;
  EXPECT_EQ(table.FindBundle(Bundle({a}, 9), key), 0);
  EXPECT_EQ(key, 42u);
  EXPECT_EQ(table.FindBundle(Bundle({a}), key), 1);
  EXPECT_EQ(key, 5u);
}

TEST(BundleTable, IsShownAndFilledByName) {
  std::string bytes;
  std::string problem;
  ASSERT_TRUE(zvuti::FillRecord("CUtiBundleTable",
                                {{"Groups[1][0]", "9"},
                                 {"Groups[2147483648].count", "3"},
                                 {"Groups[2147483648][0]", "7"},
                                 {"Groups[2147483648][1]", "8"},
                                 {"Groups[2147483648][2]", "7"},
                                 {"Bundles[2].Value", "6"},
                                 {"Bundles[2].Entries[0].ItemId", "30"},
                                 {"Bundles[2].Entries[0].Count", "1"},
                                 {"Bundles[2147483649].Value", "5"},
                                 {"Bundles[2147483649].Entries[0].ItemId", "20"},
                                 {"Bundles[2147483649].Entries[0].Count", "1"},
                                 {"Bundles[2147483649].Entries[1].ItemId", "20"},
                                 {"Bundles[2147483649].Entries[1].Count", "2"}},
                                bytes, problem))
      << problem;
  EXPECT_EQ(bytes, Joined(SampleRows()));
  zvuti::RecordDump dump;
  ASSERT_TRUE(zvuti::DumpRecord("CUtiBundleTable", bytes.data(), bytes.size(), dump));
  EXPECT_TRUE(dump.isWhole) << dump.problem;
  EXPECT_EQ(dump.size, bytes.size());
  for (const char* path :
       {"Groups[1]", "Groups[x][0]", "Groups[1][0].x", "Groups[1][0", "Groups[1 ][0]", "Groups",
        "Groups[1][4294967295]", "Bundles[1]", "Bundles[x].Value", "Bundles[1].Nothing", "X"}) {
    EXPECT_FALSE(zvuti::FillRecord("CUtiBundleTable", {{path, "1"}}, bytes, problem)) << path;
  }
  EXPECT_FALSE(zvuti::FillRecord("CUtiBundleTable", {{"Groups[1][0]", "x"}}, bytes, problem));
}

static_assert(std::has_virtual_destructor_v<CUtiBundleTable>);

}  // namespace
