#include <ZvUtiLib/data/ParseInt.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ParseInt, TakesTheNumberAtTheBeginning) {
  constexpr unsigned kWhole = 0xFFFFFFFF;
  const struct {
    std::string text;
    unsigned length;
    std::int32_t expected;
  } cases[] = {
      {"", kWhole, 0},
      {" \t\n\v\f\r+12", kWhole, 12},
      {"42abc", kWhole, 42},
      {"- 7", kWhole, 0},
      {"+-4", kWhole, 0},
      {"-+4", kWhole, 0},
      {"+", kWhole, 0},
      {"123", 1, 1},
      {"12", 30, 12},
      {"2147483648", kWhole, INT32_MAX},
      {"-2147483649", kWhole, INT32_MIN},
      {std::string(31, '9'), kWhole, INT32_MAX},
      {std::string(31, ' ') + "5", kWhole, 0},
      {std::string(30, ' ') + "56", 32, 5},
  };
  for (const auto& c : cases) EXPECT_EQ(ParseInt(c.text.c_str(), c.length), c.expected) << c.text;
  EXPECT_EQ(ParseInt(nullptr, kWhole), 0);
}

}  // namespace
