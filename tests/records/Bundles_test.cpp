#include <ZvUtiLib/records/Bundles.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/Described.h"
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

// The table above, row by row.
std::vector<std::string> SampleRows() {
  const auto word = test::Written<std::uint32_t>;
  const auto entry = [&](std::uint32_t id, std::uint32_t count) {
    return word(id) + word(count) + std::string(8, '\0');
  };
  const std::string amount(8, '\0');
  return {word(2),          word(2),                             // groups and bundles
          word(1),          word(1), word(9),                    // group 1
          word(0x80000000), word(3), word(7), word(8), word(7),  // a larger key, as unsigned numbers
          word(2),          amount,  amount,  word(6), "\x01\0"s, entry(30, 1),  // bundle 2
          word(0x80000001), amount,  amount,  word(5), "\x02\0"s, entry(20, 1), entry(20, 2)};
}
constexpr std::size_t kMemberEnds[] = {20, 32, 36, 40}, kBundleEnds[] = {82, 140};

std::string SampleBytes() {
  const std::vector<std::string> rows = SampleRows();
  return std::accumulate(rows.begin(), rows.end(), std::string());
}

TEST(BundleTable, CountsStandInFrontAndKeysAscendUnsigned) {
  EXPECT_EQ(Bytes(SampleTable()), SampleBytes());
  EXPECT_EQ(Bytes(CUtiBundleTable()), std::string(8, '\0'));
}

TEST(BundleTable, IsReadBackAndOnlyMarkedIdsStay) {
  CUtiBundleTable table;
  table.MarkId(3);
  table.AddToGroup(1, 1);
  table.SetBundle(77, {});
  CStreamReader stream(SampleBytes() + "more");
  table.Read(stream);
  EXPECT_EQ(Bytes(table), SampleBytes());
  EXPECT_EQ(test::Bytes(stream), "more");
  EXPECT_TRUE(table.IsMarked(3));
  EXPECT_FALSE(table.IsMarked(4));
}

TEST(BundleTable, KeysComeInAnyOrderAndMoreThanOnce) {
  const auto word = test::Written<std::uint32_t>;
  const auto bundle = [&](std::uint32_t key, std::uint32_t value) {
    return word(key) + test::Written(Bundle({Entry(1)}, value));
  };
  const auto group = [&](std::uint32_t key, const Keys& members) {
    std::string bytes = word(key) + word(static_cast<std::uint32_t>(members.size()));
    for (const std::uint32_t member : members) bytes += word(member);
    return bytes;
  };
  CStreamReader stream(word(3) + word(3) + group(9, {5, 6}) + group(1, {7}) + group(9, {8, 5}) +
                       bundle(4, 1) + bundle(3, 2) + bundle(4, 3));
  CUtiBundleTable table, expected;
  table.Read(stream);
  for (const unsigned member : {5u, 6u, 8u, 5u}) expected.AddToGroup(member, 9);
  expected.AddToGroup(7, 1);
  expected.SetBundle(3, Bundle({Entry(1)}, 2));
  expected.SetBundle(4, Bundle({Entry(1)}, 3));
  EXPECT_TRUE(table == expected);
}

TEST(BundleTable, CutShortItKeepsWhatIsCompleteAndLeavesTheRest) {
  const std::string bytes = SampleBytes();
  for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
    SCOPED_TRACE(cut);
    const auto isRead = [cut](std::size_t end) { return end <= cut; };
    std::size_t left = cut;
    for (const std::string& row : SampleRows()) {
      if (row.size() > left) break;
      left -= row.size();
    }
    CUtiBundleTable table;
    CStreamReader stream(bytes.substr(0, cut));
    table.Read(stream);
    Keys members;
    for (const auto& [key, group] : table.Groups) {
      EXPECT_FALSE(group.empty());
      members.insert(members.end(), group.begin(), group.end());
    }
    EXPECT_EQ(std::ssize(members), std::ranges::count_if(kMemberEnds, isRead));
    EXPECT_EQ(std::ssize(table.Bundles), std::ranges::count_if(kBundleEnds, isRead));
    EXPECT_EQ(static_cast<std::size_t>(stream.Length()), left);
  }
}

TEST(BundleTable, HostileCountsCostNothing) {
  const struct {
    std::string bytes;
    int left;
  } cases[] = {
      {"\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F\1\0\0\0\xFF\xFF\xFF\xFF\5\0\0\0"s, 0},
      {"\0\0\0\0\xFF\xFF\xFF\x7F\1\0\0\0"s + std::string(20, '\0') + "\xFF\xFF", 0},
      {"\xFF\xFF\xFF\xFF\0\0\0\x80\1\0\0\0"s, 4},  // below 0
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

TEST(BundleTable, QuestionsAppendAndCountWhatIsThere) {
  const CUtiBundleTable table = SampleTable();
  Keys out = {99};
  EXPECT_EQ(table.FindGroupsOf(7, out), 3);
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
  EXPECT_EQ(table.GetBundle(2)->Value, 6u);

  CUtiBundleTable copy(table);
  EXPECT_EQ(copy.GetBundle(3), nullptr);
  EXPECT_TRUE(copy == table);
  copy.MarkId(1);
  EXPECT_FALSE(copy == table);  // and each of the others
  CUtiBundleTable moved(std::move(copy));
  EXPECT_TRUE(copy == CUtiBundleTable() && moved.IsMarked(1));  // NOLINT(bugprone-use-after-move)
  copy = table;
  copy.AddToGroup(9, 2);
  EXPECT_TRUE(copy != table);
  copy = table;
  copy.GetBundle(2)->Value = 7;
  EXPECT_TRUE(copy != table);
  EXPECT_EQ(copy.RemoveGroup(1), 1);
  EXPECT_EQ(copy.RemoveGroup(1), 0);
  EXPECT_EQ(Bytes(table), SampleBytes());
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

// Large bundles are searched in a sorted copy, unless there is no memory for it.
TEST(BundleTable, LargeBundlesAreFoundAsTheWalkOverBothFindsThem) {
  std::mt19937 random(8);
  const auto below = [&](std::size_t end) { return static_cast<unsigned>(random() % end); };
  for (int round = 0; round < 1000; ++round) {
    const unsigned values = round % 3 == 0 ? 500 : 4;
    std::vector<BundleEntry> entries(1 + below(round % 50 == 0 ? 600 : 40));
    for (BundleEntry& entry : entries) entry = Entry(5, 1, below(values), below(2) == 0 ? 0 : -1);
    const BundleRecord wanted = Bundle(entries);
    std::ranges::shuffle(entries, random);
    const BundleRecord shuffled = Bundle(entries);
    BundleEntry& changed = entries[below(entries.size())];
    changed.Value2 ^= 1 << below(2);
    const bool isSame = std::ranges::count(wanted.Entries, changed) > 0;
    CUtiBundleTable table;
    table.SetBundle(1, Bundle(entries));
    table.SetBundle(2, shuffled);
    for (const bool isHeapFull : {false, true}) {
      unsigned key = 0;
      const test::HeapFaults heap(isHeapFull ? 1 : 0, isHeapFull);
      ASSERT_EQ(table.FindBundle(wanted, key), 1);
      ASSERT_EQ(key, isSame ? 1u : 2u);
    }
  }
}

TEST(BundleTable, IsShownAndFilledByName) {
  const test::Values values = test::ValuesOf(test::Dumped("CUtiBundleTable", SampleBytes()));
  ASSERT_EQ(values.size(), 32u);
  EXPECT_THAT(values[8], testing::FieldsAre("Groups[2147483648][1]", "8"));
  EXPECT_THAT(values[31], testing::FieldsAre("Bundles[2147483649].Entries[1].Value2", "0"));
  EXPECT_EQ(test::Filled("CUtiBundleTable", values), SampleBytes());
  for (const std::string path :
       {"Groups[1]", "Groups[x][0]", "Groups[1][0].x", "Groups[1][0", "Groups[1 ][0]", "Groups",
        "Groups(1][0]", "Groups[1](0]", "Groups[1][4294967295]", "Bundles[x].Value", "Bundles(1].Value",
        "Bundles[1]Value", "Bundles[1].Nothing", "X"}) {
    EXPECT_THAT(test::Filled("CUtiBundleTable", {{path, "1"}}), testing::StartsWith(path + ": "));
  }
}

static_assert(std::has_virtual_destructor_v<CUtiBundleTable>);

}  // namespace
