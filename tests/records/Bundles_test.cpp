#include <ZvUtiLib/records/Bundles.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "tests/support/HeapFaults.h"
#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;
using Keys = std::vector<std::uint32_t>;

BundleEntry Entry(int id, int count = 1, std::uint32_t value1 = 0, int value2 = 0) {
  return {{id, count}, value1, value2};
}

BundleRecord Bundle(const std::vector<BundleEntry>& entries, std::uint32_t value = 0) {
  return {0, 0, value, entries};
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
  return test::Bytes(stream);
}

// The table above, row by row; unsigned keys put 0x80000000 behind 1.
std::vector<std::string> SampleRows() {
  const auto word = test::Written<std::uint32_t>;
  const auto entry = [&](std::uint32_t id, std::uint32_t count) {
    return word(id) + word(count) + std::string(8, '\0');
  };
  const std::string amount(8, '\0');
  return {word(2),          word(2),                                             // counts
          word(1),          word(1), word(9),                                    // group 1
          word(0x80000000), word(3), word(7), word(8), word(7),                  // group 0x80000000
          word(2),          amount,  amount,  word(6), "\x01\0"s, entry(30, 1),  // bundle 2
          word(0x80000001), amount,  amount,  word(5), "\x02\0"s, entry(20, 1), entry(20, 2)};
}

std::string Joined(const std::vector<std::string>& rows) {
  return std::accumulate(rows.begin(), rows.end(), std::string());
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
    std::ptrdiff_t members = 0;
    for (const auto& group : table.Groups) {
      EXPECT_FALSE(group.second.empty()) << cut;
      members += std::ssize(group.second);
    }
    const auto before = [&](std::size_t row) { return row < whole; };
    EXPECT_EQ(members, std::count_if(std::begin(member), std::end(member), before)) << cut;
    EXPECT_EQ(std::ssize(table.Bundles), std::count_if(std::begin(bundle), std::end(bundle), before)) << cut;
    EXPECT_EQ(static_cast<std::size_t>(stream.Length()), cut - taken) << cut;
  }
}

TEST(BundleTable, HostileCountsCostNothing) {
  const struct {
    std::string bytes;
    int left;
  } cases[] = {
      {"\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F\1\0\0\0\xFF\xFF\xFF\xFF\5\0\0\0"s, 0},
      {"\0\0\0\0\xFF\xFF\xFF\x7F\1\0\0\0"s + std::string(20, '\0') + "\xFF\xFF", 0},
      {"\xFF\xFF\xFF\xFF\0\0\0\x80\1\0\0\0"s, 4},
  };
  for (const auto& c : cases) {
    CStreamReader stream(c.bytes);
    CUtiBundleTable table;
    const test::HeapFaults heap(0);
    table.Read(stream);
    EXPECT_LT(heap.BytesAsked(), 4096u);
    EXPECT_TRUE(table.Bundles.empty());
    EXPECT_LE(table.Groups.size(), 1u);
    EXPECT_EQ(stream.Length(), c.left);
  }
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
  const struct {
    BundleRecord one, other;
    bool isSame;
  } cases[] = {
      {Bundle({a, b}), Bundle({b, a}), true},      {Bundle({a, a}), Bundle({a, b}), true},
      {Bundle({a, b}), Bundle({a, a}), false},     {Bundle({a}), Bundle({a, a}), false},
      {Bundle({a}), Bundle({b}), false},           {Bundle({a}), Bundle({Entry(2)}), false},
      {Bundle({a}), Bundle({Entry(1, 2)}), false}, {Bundle({a}), Bundle({Entry(1, 1, 3)}), false},
      {Bundle({a}, 1), Bundle({a}, 2), false},     {Bundle({a}), {1, 0, 0, {a}}, false},
      {Bundle({a}), {0, 1, 0, {a}}, false},
  };
  for (const auto& c : cases) EXPECT_EQ(c.one.IsSameAs(c.other), c.isSame) << &c - cases;

  CUtiBundleTable table;
  table.SetBundle(0xF0000000, Bundle({a}));
  table.SetBundle(5, Bundle({a}));
  unsigned key = 42;
  EXPECT_EQ(table.FindBundle(Bundle({a}, 9), key), 0);
  EXPECT_EQ(key, 42u);
  EXPECT_EQ(table.FindBundle(Bundle({a}), key), 1);
  EXPECT_EQ(key, 5u);
}

TEST(BundleEntry, ValuesAddUpAndWrap) {
  BundleEntry entry = Entry(1, 1, 0, 7);
  entry.AddValue2(-9);
  EXPECT_EQ(entry.Value2, -2);
  entry.AddValue2(INT32_MIN);
  EXPECT_EQ(entry.Value2, INT32_MAX - 1);
}

TEST(BundleTable, LargeBundlesAreFoundAsTheWalkOverBothFindsThem) {
  std::mt19937 random(8);
  const auto below = [&](unsigned end) { return static_cast<unsigned>(random() % end); };
  // Of `kinds` kinds, which differ in the last two fields.
  const auto randomBundle = [&](unsigned entries, unsigned kinds) {
    BundleRecord bundle;
    for (unsigned i = 0; i < entries; ++i) {
      const unsigned kind = below(kinds);
      bundle.Entries.push_back(Entry(5, 1, kind / 2, -static_cast<int>(kind % 2)));
    }
    return bundle;
  };
  int found = 0;
  for (int round = 0; round < 3000; ++round) {
    const unsigned entries = 1 + below(round % 50 == 0 ? 600 : 40);
    const unsigned kinds = 1 + below(round % 3 == 0 ? 1000 : 8);
    const BundleRecord wanted = randomBundle(entries, kinds);
    CUtiBundleTable table;
    unsigned lowest = 0;
    for (unsigned key = 4; key > 0; --key) {
      BundleRecord stored = randomBundle(entries, kinds);
      if (below(2) == 0) {
        stored = wanted;
        std::shuffle(stored.Entries.begin(), stored.Entries.end(), random);
        stored.Entries[below(entries)].Value1 ^= below(4) / 3;
      }
      const bool isSame = std::all_of(stored.Entries.begin(), stored.Entries.end(), [&](const auto& entry) {
        return std::count(wanted.Entries.begin(), wanted.Entries.end(), entry) > 0;
      });
      ASSERT_EQ(stored.IsSameAs(wanted), isSame);
      if (isSame) lowest = key;
      table.SetBundle(key, stored);
    }
    found += lowest > 0 ? 1 : 0;
    // A copy that the heap refuses changes no answer, and small bundles ask for none.
    for (const bool isFull : {false, true}) {
      unsigned key = 0;
      const test::HeapFaults heap(isFull ? 1 : 0, isFull);
      const int answer = table.FindBundle(wanted, key);
      const std::int64_t blocks = heap.Tried();
      ASSERT_EQ(answer, lowest > 0 ? 1 : 0);
      ASSERT_EQ(key, lowest);
      ASSERT_LE(blocks, isFull ? 4 * entries : entries > 5 ? 1 : 0);
    }
  }
  EXPECT_GT(found, 1000);
  EXPECT_LT(found, 2900);
}

TEST(BundleTable, IsShownAndFilledByName) {
  const std::vector<zvuti::NamedValue> values = {
      {"Groups[1][0]", "9"},
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
      {"Bundles[2147483649].Entries[1].Count", "2"},
  };
  std::string bytes, problem;
  ASSERT_TRUE(zvuti::FillRecord("CUtiBundleTable", values, bytes, problem)) << problem;
  EXPECT_EQ(bytes, Joined(SampleRows()));
  zvuti::RecordDump dump;
  ASSERT_TRUE(zvuti::DumpRecord("CUtiBundleTable", bytes.data(), bytes.size(), dump));
  EXPECT_TRUE(dump.isWhole) << dump.problem;
  EXPECT_EQ(dump.size, bytes.size());
  for (const char* path :
       {"Groups[1]", "Groups[x][0]", "Groups[1][0].x", "Groups[1][0", "Groups[1 ][0]", "Groups",
        "Groups(1][0]", "Groups[1](0]", "Groups[1][1000000]", "Groups[1][4294967295]", "Bundles[1]",
        "Bundles[x].Value", "Bundles(1].Value", "Bundles[1]Value", "Bundles[1].Nothing", "X"}) {
    EXPECT_FALSE(zvuti::FillRecord("CUtiBundleTable", {{path, "1"}}, bytes, problem)) << path;
  }
  ASSERT_TRUE(zvuti::FillRecord("CUtiBundleTable",
                                {{"Groups[1].count", "1000000"}, {"Groups[1][999999]", "1"}}, bytes, problem))
      << problem;
  EXPECT_EQ(bytes.size(), 16u + 4u * 1'000'000);
  EXPECT_FALSE(zvuti::FillRecord("CUtiBundleTable", {{"Groups[1].count", "1000001"}}, bytes, problem));
  EXPECT_FALSE(zvuti::FillRecord("CUtiBundleTable", {{"Groups[1][0]", "x"}}, bytes, problem));
}

static_assert(std::has_virtual_destructor_v<CUtiBundleTable>);

}  // namespace
