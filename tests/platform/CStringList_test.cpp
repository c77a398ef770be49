#include <ZvUtiLib/platform/CStringList.h>
#include <gtest/gtest.h>

#include <string>

namespace {

std::string Joined(const CStringList& list) {
  std::string all;
  for (POSITION position = list.GetHeadPosition(); position;) all += list.GetNext(position) + ".";
  return all;
}

TEST(CStringList, IsWalkedInTheOrderOfAdding) {
  CStringList list(10);
  EXPECT_EQ(Joined(list), "");
  list.AddTail("b");
  POSITION second = list.AddTail("a");
  list.AddTail(nullptr);
  list.AddTail("a");
  EXPECT_EQ(Joined(list), "b.a..a.");
  EXPECT_EQ(list.GetCount(), 4);
  EXPECT_EQ(list.GetNext(second), "a");
  list.RemoveAll();
  EXPECT_TRUE(list.IsEmpty());
  list.AddTail("again");
  EXPECT_EQ(Joined(list), "again.");
}

}  // namespace
