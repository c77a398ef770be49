#include <ZvUtiLib/CUtiExpLevel.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <locale>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/TempFolder.h"

namespace {

static_assert(std::has_virtual_destructor_v<CUtiExpLevel>);

TEST(CUtiExpLevel, FindsLevelsAndExperiencesInAFileThatCannotBeWritten) {
  const test::TempFolder folder;
  const std::string path = folder.Write("level.txt", "1 0\n2 100\n3 300");
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  CUtiExpLevel table;
  ASSERT_EQ(table.LoadLevelConfig(path), 1);
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  const std::pair<std::int64_t, int> levels[] = {{INT64_MIN, 1}, {-5, 1},  {0, 1},   {99, 1},
                                                 {100, 2},       {299, 2}, {300, 3}, {INT64_MAX, 3}};
  for (const auto& [exp, level] : levels) EXPECT_EQ(table.GetLevelByExp(exp), level) << exp;
  const std::pair<int, std::int64_t> starts[] = {{INT32_MIN, 0}, {0, 0}, {1, 0},        {2, 100},
                                                 {3, 300},       {4, 0}, {INT32_MAX, 0}};
  for (const auto& [level, exp] : starts) EXPECT_EQ(table.GetExpByLevel(level), exp) << level;

  ASSERT_EQ(table.LoadLevelConfig(folder.Write("unordered.txt", "5 100 7 50 9 200 8 10")), 1);
  const std::pair<std::int64_t, int> unordered[] = {{5, 5}, {20, 8}, {50, 7}, {150, 7}, {200, 8}};
  for (const auto& [exp, level] : unordered) EXPECT_EQ(table.GetLevelByExp(exp), level) << exp;
}

TEST(CUtiExpLevel, KeepsTheWholeRecordsBeforeOneThatCannotBeRead) {
  using Records = std::vector<std::pair<int, std::int64_t>>;  // level, experience
  const std::string mark = "\xEF\xBB\xBF";
  const std::pair<std::string, Records> cases[] = {
      {"1 10\r\n2 20\r\n", {{1, 10}, {2, 20}}},
      {" 1\t10 2\n20\v\f+3 +30 \n\n", {{1, 10}, {2, 20}, {3, 30}}},
      {"-2147483648 -9 2147483647 9223372036854775807", {{INT32_MIN, -9}, {INT32_MAX, INT64_MAX}}},
      {"1 10\n2", {{1, 10}}},
      {"1 10\n2 x\n3 30\n", {{1, 10}}},
      {"1 10\n2 20;\n3 30\n", {{1, 10}, {2, 20}}},
      {"1 10\n2147483648 20\n3 30\n", {{1, 10}}},
      {"1 10\n2 9223372036854775808\n3 30\n", {{1, 10}}},
      {"1 1,000\n2 2000\n", {{1, 1}}},  // no digit groups, even if the locale has them
      {mark + "1 10\r\n2 20", {{1, 10}, {2, 20}}},
      {mark + "\n1 10", {{1, 10}}},
      {mark + mark + "1 10", {}},
      {"\xEF\xBB\x31 10 20", {}},  // half a mark is not a number
      {"\n" + mark + "1 10", {}},
      {"", {}},
      {std::string("\0\xFF\x81", 3), {}},
  };
  struct Grouped : std::numpunct<char> {
    char do_thousands_sep() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale(), new Grouped));
  const test::TempFolder folder;
  for (const auto& [file, expected] : cases) {
    CUtiExpLevel table;
    EXPECT_EQ(table.LoadLevelConfig(folder.Write("level.txt", file)), 1) << file;
    Records records;
    std::int64_t exp = 0;
    for (int place = 1; (exp = table.GetExpByLevel(place)) != 0; ++place)
      records.emplace_back(table.GetLevelByExp(exp), exp);
    EXPECT_EQ(records, expected) << file;
  }
  std::locale::global(before);
}

TEST(CUtiExpLevel, FailedLoadsLeaveAnEmptyTable) {
  const test::TempFolder folder;
  CUtiExpLevel table;
  for (const std::string& path : {folder.Path("none.txt"), folder.Path(), std::string()}) {
    ASSERT_EQ(table.LoadLevelConfig(folder.Write("level.txt", "7 100")), 1);
    EXPECT_EQ(table.LoadLevelConfig(path), 0) << path;
    EXPECT_EQ(table.GetLevelByExp(1000), 1);
    EXPECT_EQ(table.GetExpByLevel(1), 0);
  }
}

}  // namespace
