#include <ZvUtiLib/CUtiNumber.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "gbk/CodePage936.h"

namespace {

// What the operation answers: its return value and the result, which held "old" before.
template <class Operation, class Input>
std::string Answer(Operation operation, Input input) {
  CString result = "old";
  const int returned = operation(input, result);
  return std::to_string(returned) + ":" + result.GetString();
}

std::string Spell(const std::string& digits) {
  return Answer(CUtiNumber::ChangeLowerNum2UpperNum, digits.c_str());
}

int InsertInText(const char* text, CString& result) { return CUtiNumber::InsertSeparator(text, result); }
int InsertInValue(std::int64_t value, CString& result) { return CUtiNumber::InsertSeparator(value, result); }
int CheckValue(std::int64_t value, CString& result) { return CUtiNumber::CheckNumber(value, result); }

TEST(CUtiNumber, ANumberIsDigitsBehindAtMostOneMinus) {
  for (const char* number : {"0", "007", "-0", "-", "-12", "123456789012345678901234567890"}) {
    EXPECT_EQ(CUtiNumber::CheckNumber(number), 1) << number;
  }
  for (const char* other :
       {"", "+5", "--5", "5-", " 5", "1,2345", "1.5", "12/", "12:", "\xA3\xB1", "1\xB1"}) {
    EXPECT_EQ(CUtiNumber::CheckNumber(other), 0) << other;
  }
  EXPECT_EQ(CUtiNumber::CheckNumber(nullptr), 0);
}

// A comma at a time.
std::string Grouped(const std::string& digits) {
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 4 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

TEST(CUtiNumber, SeparatesGroupsOfFour) {
  const struct {
    const char *text, *answer;
  } cases[] = {
      {"12345678", "1:1234,5678"},
      {"00012345", "1:0001,2345"},
      {"-1234", "1:-1234"},
      {"-12345", "1:-1,2345"},
      {"-", "1:-"},
      {"", "0:"},
      {"+5", "0:"},
      {"12a4", "0:"},
      {nullptr, "0:"},
  };
  for (const auto& c : cases) EXPECT_EQ(Answer(InsertInText, c.text), c.answer);

  const std::string digits(100'000, '7');
  EXPECT_EQ(Answer(InsertInText, digits.c_str()), "1:" + Grouped(digits));
}

TEST(CUtiNumber, SeparatesValues) {
  using Limits = std::numeric_limits<std::int64_t>;
  const struct {
    std::int64_t value;
    const char* answer;
  } cases[] = {
      {0, "1:0"},
      {-12345, "1:-1,2345"},
      {Limits::max(), "1:922,3372,0368,5477,5807"},
      {Limits::min(), "1:-922,3372,0368,5477,5808"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Answer(InsertInValue, c.value), c.answer);
    EXPECT_EQ(Answer(CheckValue, c.value), c.answer);
  }
}

TEST(CUtiNumber, EveryIntegerIsAValueAndNullptrAText) {
  const auto separated = [](auto value) {
    return Answer([](auto v, CString& result) { return CUtiNumber::InsertSeparator(v, result); }, value);
  };
  EXPECT_EQ(separated(-12345), "1:-1,2345");
  EXPECT_EQ(separated(4294967295U), "1:42,9496,7295");
  EXPECT_EQ(separated(-12345L), "1:-1,2345");
  EXPECT_EQ(separated(12345UL), "1:1,2345");
  EXPECT_EQ(separated(-12345LL), "1:-1,2345");
  EXPECT_EQ(separated(12345ULL), "1:1,2345");
  EXPECT_EQ(separated(nullptr), "0:");
  CString zero = "old";
  EXPECT_EQ(CUtiNumber::InsertSeparator(0, zero), 1);  // the literal is a null pointer, too
  EXPECT_EQ(zero, "0");
}

TEST(CUtiNumber, RemovesCommasFromAnyText) {
  const struct {
    const char *text, *answer;
  } cases[] = {
      {"1,2345", "1:12345"},       {"1,,2", "1:12"}, {",", "1:"}, {"abc", "1:abc"},
      {"\xC1\xE3,", "1:\xC1\xE3"}, {nullptr, "1:"},
  };
  for (const auto& c : cases) EXPECT_EQ(Answer(CUtiNumber::RemoveSeparator, c.text), c.answer);
}

TEST(CUtiNumber, SpellsInCapitalNumerals) {
  const struct {
    const char *digits, *spelling;  // GBK
  } cases[] = {
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
      {"10000000000000000000", "\xD2\xBC\xC7\xAA\xD2\xDA\xD2\xDA"},  // 壹仟亿亿
      {"1234567890",
       "\xCA\xB0\xB7\xA1\xD2\xDA"                                    // 拾贰亿
       "\xC8\xFE\xC7\xAA\xCB\xC1\xB0\xDB\xCE\xE9\xCA\xB0\xC2\xBD"    // 叁仟肆佰伍拾陆
       "\xCD\xF2\xC6\xE2\xC7\xAA\xB0\xC6\xB0\xDB\xBE\xC1\xCA\xB0"},  // 万柒仟捌佰玖拾
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Spell(c.digits), std::string("1:") + c.spelling)
        << c.digits << " reads " << zvuti::gbk::ToUtf8(Spell(c.digits));
  }
}

// A numeral at a time, by the rules alone.
std::string Spelled(const std::string& digits) {
  const char* const capitals[] = {"",         "\xD2\xBC", "\xB7\xA1", "\xC8\xFE", "\xCB\xC1",  // 壹贰叁肆
                                  "\xCE\xE9", "\xC2\xBD", "\xC6\xE2", "\xB0\xC6", "\xBE\xC1"};  // 伍陆柒捌玖
  const char* const places[] = {"", "\xCA\xB0", "\xB0\xDB", "\xC7\xAA"};                        // 拾佰仟
  const char* const groups[] = {"", "\xCD\xF2", "\xD2\xDA", "\xCD\xF2\xD2\xDA", "\xD2\xDA\xD2\xDA"};
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const std::size_t right = digits.size() - 1 - i, place = right % 4;
    if (digits[i] != '0') {
      if (digits[i] != '1' || place != 1) text += capitals[digits[i] - '0'];
      text += places[place];
    } else if (place > 0 && digits[i + 1] != '0') {
      text += "\xC1\xE3";  // 零
    }
    const std::size_t head = i < 3 ? 0 : i - 3;
    if (place == 0 && digits.find_first_not_of('0', head) <= i) text += groups[right / 4];
  }
  return text;
}

TEST(CUtiNumber, RandomNumbersReadAsByTheRulesAlone) {
  std::mt19937 random(1);
  for (int round = 0; round < 20'000; ++round) {
    std::string digits(1 + random() % 20, '0');
    for (char& digit : digits) digit = "0011023456789"[random() % 13];
    ASSERT_EQ(Answer(InsertInText, digits.c_str()), "1:" + Grouped(digits));
    ASSERT_EQ(Spell(digits), "1:" + Spelled(digits)) << digits;
  }
}

TEST(CUtiNumber, SpellingEndsAtWhatIsNoDigit) {
  EXPECT_EQ(Spell("-5"), "0:");
  EXPECT_EQ(Spell("12a4"), "0:\xD2\xBC\xC7\xAA\xB7\xA1\xB0\xDB");  // 壹仟贰佰
  EXPECT_EQ(Spell("100a"), "0:\xD2\xBC\xC7\xAA\xC1\xE3");          // 壹仟零: the zero's neighbour is not 0
  EXPECT_EQ(Spell("1\xB1"), "0:\xCA\xB0");                         // 拾
  EXPECT_EQ(Spell(std::string(21, '1')), "0:old");
  EXPECT_EQ(Answer(CUtiNumber::ChangeLowerNum2UpperNum, static_cast<const char*>(nullptr)), "0:old");
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
