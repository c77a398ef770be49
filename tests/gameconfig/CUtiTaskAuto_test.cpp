#include <ZvUtiLib/CUtiTaskAuto.h>
#include <gtest/gtest.h>

#include <type_traits>

#include "tests/support/AppFolder.h"

namespace {

static_assert(std::has_virtual_destructor_v<CUtiTaskAuto>);
static_assert(!std::is_copy_constructible_v<CUtiTaskAuto> && !std::is_copy_assignable_v<CUtiTaskAuto>);

constexpr unsigned long kMaple = 1, kBirch = 4, kCedar = 9;

TEST(CUtiTaskAuto, NamesTheTasksOfTheLoadedGame) {
  const test::AppFolder folder;
  folder.Write("Maple/Task.ini", "[Other]\r\n8=no\r\n[AutoTask]\r\n7 = \xC8\xCE\xCE\xF1\r\n-1=minus\r\n");
  folder.Write("Birch/Task.ini", "[AutoTask]\n7=birch\n");
  CUtiTaskAuto tasks;
  EXPECT_EQ(tasks.GetName(7), "");
  tasks.Load(kMaple);
  const CString& seven = tasks.GetName(7);
  EXPECT_EQ(seven, "\xC8\xCE\xCE\xF1");
  EXPECT_EQ(tasks.GetName(8), "");
  EXPECT_EQ(tasks.GetName(-1), "minus");
  EXPECT_EQ(seven, "minus");  // all names share one string
  tasks.Load(kBirch);
  EXPECT_EQ(tasks.GetName(7), "birch");
  tasks.Load(kCedar);  // has no file
  EXPECT_EQ(tasks.GetName(7), "");
}

}  // namespace
