#include <ZvUtiLib/CUtiRank.h>
#include <gtest/gtest.h>

#include "tests/support/AppFolder.h"
#include "tests/support/HeapFaults.h"

namespace {

static_assert(std::has_virtual_destructor_v<CUtiRank>);

constexpr unsigned long kMaple = 1, kBirch = 4, kUnknown = 2;

TEST(CUtiRank, FindsTheRankOfAScore) {
  const struct {
    std::string file;
    std::int64_t score;
    std::string rank;
  } cases[] = {
      {"A 0\nB 1\nC 5", -500, "A"},
      {"A 0\nB 1\nC 5", 99, "A"},
      {"A 0\nB 1\nC 5", 100, "B"},
      {"A 0\nB 1\nC 5", 499, "B"},
      {"A 0\nB 1\nC 5", INT64_MAX, "C"},
      {"A -5\nB 0", -99, "B"},  // the division cuts toward zero
      {"A -5\nB 0", -100, "A"},
      {"A 1\nB 2", 0, "A"},
      {"A 0\nB 5\nC 1", 300, "A"},  // the first threshold above ends the search
      // Where the table ends.
      {"A 1\r\nB 2\r\n", 900, "B"},
      {"A 1\nB 2\n[INTRODUCE]\nC 3\n", 900, "B"},
      {"A 1\nB 2\n[INTRODUCE] 3\nC 3\n", 900, "B"},
      {"[INTRODUCE]\nA 1\n", 900, ""},
      {"A 1\n[Introduce] 2\n", 900, "[Introduce]"},
      {"A 1\n[INTRODUCE]2 2\n", 900, "[INTRODUCE]2"},
      {"A 1\nB\n", 900, "A"},
      {"A 1\nB two C 3\n", 900, "A"},
      {"A 1\nB 9223372036854775808\nC 3\n", 900, "A"},
      {"", 900, ""},
      {"\xBE\xC5 1\n\x81\x5B\x81\x5D\x81 2\n", 900, "\x81\x5B\x81\x5D\x81"},  // bytes as they stand
      {"\xEF\xBB\xBF[INTRODUCE] 1\n", 900, "\xEF\xBB\xBF[INTRODUCE]"},
  };
  const test::AppFolder folder;
  CUtiRank table;
  for (const auto& c : cases) {
    folder.Write("Maple/Rank.ini", c.file);
    EXPECT_TRUE(table.LoadRankConfig(kMaple)) << c.file;
    EXPECT_EQ(table.GetRank(c.score), c.rank) << c.file << " " << c.score;
  }
}

TEST(CUtiRank, FailedLoadsLeaveAnEmptyTableWithoutStorage) {
  const test::AppFolder folder;
  folder.Write("Maple/Rank.ini", "ANameTooLongToLieWithinTheStringItself 0\nB 1\n");
  folder.Write("Rank.ini/file", "an unknown game leads to this folder");
  CUtiRank table;
  for (const unsigned long game : {kBirch, kUnknown}) {
    const std::int64_t blocks = test::LiveBlocks();
    ASSERT_TRUE(table.LoadRankConfig(kMaple));
    ASSERT_EQ(table.GetRank(100), "B");
    EXPECT_FALSE(table.LoadRankConfig(game)) << game;
    EXPECT_EQ(test::LiveBlocks(), blocks) << game;
    EXPECT_EQ(table.GetRank(100), "") << game;
  }
}

}  // namespace
