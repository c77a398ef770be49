#include <ZvUtiLib/CUtiRank.h>
#include <gtest/gtest.h>

#include "tests/support/AppFolder.h"

namespace {

static_assert(std::has_virtual_destructor_v<CUtiRank>);

constexpr unsigned long kMaple = 1, kBirch = 4, kUnknown = 2;

std::string RankIn(const std::string& file, std::int64_t score) {
  const test::AppFolder folder;
  folder.Write("Maple/Rank.ini", file);
  CUtiRank table;
  EXPECT_TRUE(table.LoadRankConfig(kMaple)) << file;
  return table.GetRank(score);
}

TEST(CUtiRank, FindsTheRankOfAScore) {
  const std::string file = "A 0\nB 1\nC 5";
  EXPECT_EQ(RankIn(file, -500), "A");
  EXPECT_EQ(RankIn(file, 99), "A");
  EXPECT_EQ(RankIn(file, 100), "B");
  EXPECT_EQ(RankIn(file, 499), "B");
  EXPECT_EQ(RankIn(file, INT64_MAX), "C");
  EXPECT_EQ(RankIn("A -5\nB 0", -99), "B");  // the division rounds toward zero
  EXPECT_EQ(RankIn("A -5\nB 0", -100), "A");
  EXPECT_EQ(RankIn("A 1\nB 2", 0), "A");
  EXPECT_EQ(RankIn("A 0\nB 5\nC 1", 300), "A");  // the first threshold above ends the search
}

TEST(CUtiRank, EndsAtTheIntroductionOrAtARecordThatCannotBeRead) {
  EXPECT_EQ(RankIn("A 1\r\nB 2\r\n", 900), "B");
  EXPECT_EQ(RankIn("A 1\nB 2\n[INTRODUCE] 3\nC 3\n", 900), "B");
  EXPECT_EQ(RankIn("[INTRODUCE]\nA 1\n", 900), "");
  EXPECT_EQ(RankIn("A 1\n[Introduce] 2\n", 900), "[Introduce]");
  EXPECT_EQ(RankIn("A 1\n[INTRODUCE]2 2\n", 900), "[INTRODUCE]2");
  EXPECT_EQ(RankIn("A 1\nB\n", 900), "A");
  EXPECT_EQ(RankIn("A 1\nB two C 3\n", 900), "A");
  EXPECT_EQ(RankIn("A 1\nB 9223372036854775808\nC 3\n", 900), "A");
  EXPECT_EQ(RankIn("\xBE\xC5 1\n\x81\x5B\x81\x5D\x81 2\n", 900),
            "\x81\x5B\x81\x5D\x81");  // bytes as they are
  EXPECT_EQ(RankIn("\xEF\xBB\xBF[INTRODUCE] 1\n", 900), "\xEF\xBB\xBF[INTRODUCE]");
}

TEST(CUtiRank, FailedLoadsLeaveAnEmptyTable) {
  const test::AppFolder folder;
  folder.Write("Maple/Rank.ini", "A 0\nB 1\n");
  folder.Write("Rank.ini/file", "an unknown game leads to this folder");
  CUtiRank table;
  for (const unsigned long game : {kBirch, kUnknown}) {
    ASSERT_TRUE(table.LoadRankConfig(kMaple));
    EXPECT_FALSE(table.LoadRankConfig(game)) << game;
    EXPECT_EQ(table.GetRank(100), "") << game;
  }
}

}  // namespace
