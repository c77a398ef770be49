#include <ZvUtiLib/data/ParseInt.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr unsigned kWhole = 0xFFFFFFFF;

TEST(ParseInt, TakesTheNumberAtTheBeginning) {
  EXPECT_EQ(ParseInt("", kWhole), 0);
  EXPECT_EQ(ParseInt(nullptr, kWhole), 0);
  EXPECT_EQ(ParseInt(" \t\n\v\f\r+12", kWhole), 12);
  EXPECT_EQ(ParseInt("42abc", kWhole), 42);
  for (const char* other : {"- 7", "+-4", "-+4", "+"}) EXPECT_EQ(ParseInt(other, kWhole), 0) << other;
  EXPECT_EQ(ParseInt("123", 1), 1);
  EXPECT_EQ(ParseInt("12", 30), 12);
}

TEST(ParseInt, KeepsToTheRangeAndToTheFirst31Bytes) {
  EXPECT_EQ(ParseInt("2147483648", kWhole), INT32_MAX);
  EXPECT_EQ(ParseInt("-2147483649", kWhole), INT32_MIN);
  EXPECT_EQ(ParseInt(std::string(31, '9').c_str(), kWhole), INT32_MAX);
  EXPECT_EQ(ParseInt((std::string(31, ' ') + "5").c_str(), kWhole), 0);
  EXPECT_EQ(ParseInt((std::string(30, ' ') + "56").c_str(), 32), 5);
}

}  // namespace
