// Separators and capital numerals, compared with appending the pieces to a CString one by one.
#include <ZvUtiLib/CUtiNumber.h>

#include <charconv>
#include <iterator>
#include <string_view>

#include "benchmarks/Common.h"

namespace bench {
namespace {

constexpr const char* kNumber = "9876543210987654321";

CString GroupByLibrary() {
  CString text;
  CUtiNumber::InsertSeparator(kNumber, text);
  return text;
}

// A value of 19 digits: 64 bits, which a 32-bit processor divides in steps.
volatile std::int64_t value = 4938271605493827160;

// Into a text that has room, so that the row is about digits, not about the heap.
const CString& GroupValueByLibrary() {
  static CString text;
  CUtiNumber::InsertSeparator(value, text);
  return text;
}

void GroupDigits(std::string_view digits, CString& text) {
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 4 == 0) text += ',';
    text += digits[i];
  }
}

CString GroupByDigits() {
  CString text;
  GroupDigits(kNumber, text);
  return text;
}

const CString& GroupValueByDigits() {
  static CString text;
  text.Empty();
  char digits[20];
  const char* end = std::to_chars(std::begin(digits), std::end(digits), std::int64_t{value}).ptr;
  GroupDigits({digits, static_cast<std::size_t>(end - digits)}, text);
  return text;
}

constexpr const char* kSpelled = "123456789";

CString SpellByLibrary() {
  CString text;
  CUtiNumber::ChangeLowerNum2UpperNum(kSpelled, text);
  return text;
}

// Implements only the rules for numbers without zeros.
CString SpellByDigits() {
  static constexpr const char* kDigits[] = {
      "",         "\xD2\xBC", "\xB7\xA1", "\xC8\xFE", "\xCB\xC1",                     // 壹贰叁肆
      "\xCE\xE9", "\xC2\xBD", "\xC6\xE2", "\xB0\xC6", "\xBE\xC1"};                    // 伍陆柒捌玖
  static constexpr const char* kPlaces[] = {"", "\xCA\xB0", "\xB0\xDB", "\xC7\xAA"};  // 拾佰仟
  static constexpr const char* kGroups[] = {"", "\xCD\xF2", "\xD2\xDA"};              // 万亿
  CString text;
  const std::string_view digits = kSpelled;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const std::size_t right = digits.size() - 1 - i;
    text += kDigits[digits[i] - '0'];
    text += kPlaces[right % 4];
    if (right % 4 == 0) text += kGroups[right / 4];
  }
  return text;
}

template <class Text>
void Add(const char* subject, Text (*library)(), Text (*plain)()) {
  const CString expected = plain();
  const auto isRight = [expected](const CString& text) { return text == expected; };
  benchmark::RegisterBenchmark(Row(subject, "library").c_str(),
                               [=](auto& state) { Measure(state, library, isRight); });
  benchmark::RegisterBenchmark(Row(subject, "digits").c_str(),
                               [=](auto& state) { Measure(state, plain, isRight); });
}

const bool kRegistered = [] {
  Add("Separators", GroupByLibrary, GroupByDigits);
  Add("SeparatorsOfValue", GroupValueByLibrary, GroupValueByDigits);
  Add("Numerals", SpellByLibrary, SpellByDigits);
  return true;
}();

}  // namespace
}  // namespace bench
