#include <ZvUtiLib/CUtiNumber.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace {

// The value that an operation returns, and the result, which held "old" before.
using Answer = std::pair<int, std::string>;

template <class Operation, class Input>
Answer AnswerOf(Operation operation, Input input) {
  CString result = "old";
  const int returned = operation(input, result);
  return {returned, result.GetString()};
}

const auto kSeparate = [](auto input, CString& result) { return CUtiNumber::InsertSeparator(input, result); };
const auto kCheck = [](std::int64_t value, CString& result) {
  return CUtiNumber::CheckNumber(value, result);
};

TEST(CUtiNumber, ANumberIsDigitsAfterAtMostOneMinusAndIsSeparatedIntoGroupsOfFour) {
  const std::pair<const char*, const char*> numbers[] = {{"0", "0"},          {"007", "007"},
                                                         {"1234", "1234"},    {"12345678", "1234,5678"},
                                                         {"-", "-"},          {"-0", "-0"},
                                                         {"-1234", "-1234"},  {"-12345", "-1,2345"},
                                                         {"12345", "1,2345"}, {"00012345", "0001,2345"}};
  for (const auto& [text, separated] : numbers) {
    EXPECT_EQ(CUtiNumber::CheckNumber(text), 1) << text;
    EXPECT_EQ(AnswerOf(kSeparate, text), Answer(1, separated));
  }
  const std::string longNumber(100'000, '7');
  EXPECT_EQ(AnswerOf(kSeparate, longNumber.c_str()).second.size(), 124'999u);
  const char* const others[] = {"",    "+5",  "--5",  "5-",       " 5",    "1,2345", "1.5",
                                "12/", "12:", "12a4", "\xA3\xB1", "1\xB1", nullptr};
  for (const char* other : others) {
    EXPECT_EQ(CUtiNumber::CheckNumber(other), 0) << testing::PrintToString(other);
    EXPECT_EQ(AnswerOf(kSeparate, other), Answer(0, ""));
  }
}

TEST(CUtiNumber, SeparatesValues) {
  using Limits = std::numeric_limits<std::int64_t>;
  const std::pair<std::int64_t, const char*> cases[] = {{0, "0"},
                                                        {-12345, "-1,2345"},
                                                        {Limits::max(), "922,3372,0368,5477,5807"},
                                                        {Limits::min(), "-922,3372,0368,5477,5808"}};
  for (const auto& [value, separated] : cases) {
    EXPECT_EQ(AnswerOf(kSeparate, value), Answer(1, separated));
    EXPECT_EQ(AnswerOf(kCheck, value), Answer(1, separated));
  }
}

TEST(CUtiNumber, EveryIntegerIsAValueAndNullptrAText) {
  EXPECT_EQ(AnswerOf(kSeparate, -12345), Answer(1, "-1,2345"));
  EXPECT_EQ(AnswerOf(kSeparate, 4294967295U), Answer(1, "42,9496,7295"));
  EXPECT_EQ(AnswerOf(kSeparate, -12345L), Answer(1, "-1,2345"));
  EXPECT_EQ(AnswerOf(kSeparate, 12345UL), Answer(1, "1,2345"));
  EXPECT_EQ(AnswerOf(kSeparate, -12345LL), Answer(1, "-1,2345"));
  EXPECT_EQ(AnswerOf(kSeparate, 12345ULL), Answer(1, "1,2345"));
  EXPECT_EQ(AnswerOf(kSeparate, nullptr), Answer(0, ""));
  CString zero = "old";
  EXPECT_EQ(CUtiNumber::InsertSeparator(0, zero), 1);  // the literal is a null pointer, too
  EXPECT_EQ(zero, "0");
}

TEST(CUtiNumber, RemovesCommasFromAnyText) {
  const std::pair<const char*, const char*> cases[] = {
      {"1,2345", "12345"},       {"1,,2", "12"}, {",", ""}, {"abc", "abc"},
      {"\xC1\xE3,", "\xC1\xE3"}, {nullptr, ""}};
  for (const auto& [text, removed] : cases)
    EXPECT_EQ(AnswerOf(CUtiNumber::RemoveSeparator, text), Answer(1, removed));
}

TEST(CUtiNumber, SpellsInCapitalNumerals) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"00000", ""},
      {"10", "\xCA\xB0"},                                            // 拾
      {"0012", "\xC1\xE3\xCA\xB0\xB7\xA1"},                          // 零拾贰
      {"101", "\xD2\xBC\xB0\xDB\xC1\xE3\xD2\xBC"},                   // 壹佰零壹
      {"110", "\xD2\xBC\xB0\xDB\xCA\xB0"},                           // 壹佰拾
      {"1010", "\xD2\xBC\xC7\xAA\xC1\xE3\xCA\xB0"},                  // 壹仟零拾
      {"10001", "\xD2\xBC\xCD\xF2\xC1\xE3\xD2\xBC"},                 // 壹万零壹
      {"10010", "\xD2\xBC\xCD\xF2\xC1\xE3\xCA\xB0"},                 // 壹万零拾
      {"100000", "\xCA\xB0\xCD\xF2"},                                // 拾万
      {"10000001", "\xD2\xBC\xC7\xAA\xCD\xF2\xC1\xE3\xD2\xBC"},      // 壹仟万零壹
      {"10001000", "\xD2\xBC\xC7\xAA\xCD\xF2\xD2\xBC\xC7\xAA"},      // 壹仟万壹仟
      {"1000000000000", "\xD2\xBC\xCD\xF2\xD2\xDA"},                 // 壹万亿
      {"10000000000000000000", "\xD2\xBC\xC7\xAA\xD2\xDA\xD2\xDA"},  // 壹仟亿亿
      {"1234567890",
       "\xCA\xB0\xB7\xA1\xD2\xDA"                                    // 拾贰亿
       "\xC8\xFE\xC7\xAA\xCB\xC1\xB0\xDB\xCE\xE9\xCA\xB0\xC2\xBD"    // 叁仟肆佰伍拾陆
       "\xCD\xF2\xC6\xE2\xC7\xAA\xB0\xC6\xB0\xDB\xBE\xC1\xCA\xB0"},  // 万柒仟捌佰玖拾
  };
  for (const auto& [digits, spelling] : cases)
    EXPECT_EQ(AnswerOf(CUtiNumber::ChangeLowerNum2UpperNum, digits), Answer(1, spelling)) << digits;
}

TEST(CUtiNumber, SpellingEndsAtTheFirstByteThatIsNotADigit) {
  const std::string tooLong(21, '1');
  const std::pair<const char*, const char*> cases[] = {
      {"-5", ""},
      {"12a4", "\xD2\xBC\xC7\xAA\xB7\xA1\xB0\xDB"},  // 壹仟贰佰
      {"100a", "\xD2\xBC\xC7\xAA\xC1\xE3"},          // 壹仟零: the byte after the last zero is not a zero
      {"1\xB1", "\xCA\xB0"},                         // 拾
      {tooLong.c_str(), "old"},
      {nullptr, "old"}};
  for (const auto& [text, spelling] : cases)
    EXPECT_EQ(AnswerOf(CUtiNumber::ChangeLowerNum2UpperNum, text), Answer(0, spelling));
}

TEST(CUtiNumber, NamesSingleDigits) {
  const std::string digits =
      "\xC1\xE3\xD2\xBB\xB6\xFE\xC8\xFD\xCB\xC4\xCE\xE5\xC1\xF9\xC6\xDF\xB0\xCB\xBE\xC5";  // 零一二三四五六七八九
  for (int digit = 0; digit <= 9; ++digit) {
    EXPECT_EQ(CUtiNumber::GetNumCN(digit).GetString(), digits.substr(static_cast<std::size_t>(digit) * 2, 2));
  }
  for (const int other : {-1, 10, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(CUtiNumber::GetNumCN(other), "");
  }
}

TEST(CUtiNumber, TheResultMayBeTheText) {
  CString text = "-12345678901234567890";
  CUtiNumber::InsertSeparator(text, text);
  EXPECT_EQ(text, "-1234,5678,9012,3456,7890");
  CUtiNumber::RemoveSeparator(text, text);
  EXPECT_EQ(text, "-12345678901234567890");
  CUtiNumber::InsertSeparator(text.GetString() + 1, text);
  EXPECT_EQ(text, "1234,5678,9012,3456,7890");
  text = "10000000000000000000";
  CUtiNumber::ChangeLowerNum2UpperNum(text, text);
  EXPECT_EQ(text, "\xD2\xBC\xC7\xAA\xD2\xDA\xD2\xDA");  // 壹仟亿亿
  text = "x";
  EXPECT_EQ(CUtiNumber::InsertSeparator(text, text), 0);
  EXPECT_EQ(text, "");
}

}  // namespace
