#include <ZvUtiLib/platform/CStringList.h>
#include <gtest/gtest.h>

namespace {

TEST(CStringList, IsWalkedInTheOrderOfAdding) {
  CStringList list(10);
  EXPECT_EQ(list.GetHeadPosition(), nullptr);
  list.AddTail("b");
  POSITION second = list.AddTail("a");
  list.AddTail(nullptr);
  EXPECT_EQ(list.GetCount(), 3);
  POSITION at = list.GetHeadPosition();
  for (const char* text : {"b", "a", ""}) EXPECT_EQ(list.GetNext(at), text);
  EXPECT_EQ(at, nullptr);
  EXPECT_EQ(list.GetNext(second), "a");
  list.RemoveAll();
  EXPECT_TRUE(list.IsEmpty());
  list.AddTail("again");
  at = list.GetHeadPosition();
  EXPECT_EQ(list.GetNext(at), "again");
}

}  // namespace
