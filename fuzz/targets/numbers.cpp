// Conversions between text, numbers and times, and the checks of user input. The input is one text.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <ZvUtiLib/CKxTime.h>
#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiNumber.h>
#include <ZvUtiLib/data/ParseInt.h>

#include "fuzz/Check.h"
#include "gbk/CodePage936.h"

namespace {

void CheckSeparators(const std::string& text) {
  CString separated, joined;
  const int isNumber = CUtiNumber::CheckNumber(text.c_str());
  fuzz::Check(CUtiNumber::InsertSeparator(text.c_str(), separated) == isNumber,
              "separators are inserted into numbers only");
  CUtiNumber::RemoveSeparator(separated, joined);
  fuzz::Check(joined == (isNumber ? text.c_str() : ""), "removing the separators restores the number");

  std::string kept = text;
  kept.erase(std::remove(kept.begin(), kept.end(), ','), kept.end());
  CUtiNumber::RemoveSeparator(text.c_str(), joined);
  fuzz::Check(joined == kept.c_str(), "only commas are removed");
}

void CheckNumerals(const std::string& text) {
  CString spelled = "old";
  const bool isDigits = text.size() <= 20 && text.find_first_not_of("0123456789") == std::string::npos;
  fuzz::Check((CUtiNumber::ChangeLowerNum2UpperNum(text.c_str(), spelled) == 1) == isDigits,
              "numbers of up to 20 digits, and nothing else, are converted to numerals");
  fuzz::Check(text.size() <= 20 || spelled == "old", "a text that is too long leaves the target unchanged");
  bool isWhole = false;
  zvuti::gbk::ToUtf8(spelled.GetString(), &isWhole);
  fuzz::Check(isWhole, "numerals consist of whole characters");
}

void CheckInt(const std::string& text) {
  const std::string begin = text.substr(0, 31);
  const long long value = std::clamp(std::strtoll(begin.c_str(), nullptr, 10), -0x80000000LL, 0x7FFFFFFFLL);
  fuzz::Check(ParseInt(text.c_str(), 0xFFFFFFFF) == value,
              "ParseInt agrees with strtoll, clamped to 32 bits");
}

void CheckTime(const std::string& text) {
  const unsigned long word = CKxTime::String2DWord(text.c_str());
  fuzz::Check(word <= 0xFFFFFFFF, "a packed time fits into 32 bits");
  fuzz::Check(CKxTime::String2DWord(CKxTime::DWord2String(word)) == word,
              "a time converted to text converts back");
  unsigned numbers[6] = {2000};
  // Compare with sscanf where it is defined: if every number fits into an int.
  if (text.find_first_of("0123456789") != std::string::npos && text.size() < 1000) {
    std::size_t digits = 0;
    for (const char c : text) {
      digits = c >= '0' && c <= '9' ? digits + 1 : 0;
      if (digits > 9) return;
    }
    std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d", reinterpret_cast<int*>(&numbers[0]),
                reinterpret_cast<int*>(&numbers[1]), reinterpret_cast<int*>(&numbers[2]),
                reinterpret_cast<int*>(&numbers[3]), reinterpret_cast<int*>(&numbers[4]),
                reinterpret_cast<int*>(&numbers[5]));
    const unsigned expected = ((numbers[0] - 2000) & 63) << 26 | (numbers[1] & 15) << 22 |
                              (numbers[2] & 31) << 17 | (numbers[3] & 31) << 12 | (numbers[4] & 63) << 6 |
                              (numbers[5] & 63);
    fuzz::Check(word == expected, "String2DWord agrees with sscanf");
  }
}

void CheckNames(const std::string& text) {
  const auto isName = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
  };
  const bool isClean = std::all_of(text.begin(), text.end(), isName);
  fuzz::Check(
      CUtiBase::CheckAccountValid(text.c_str()) == (isClean && text.size() >= 4 && text.size() <= 16 ? 1 : 0),
      "CheckAccountValid accepts exactly 4 to 16 letters, digits and underscores");
  fuzz::Check(
      CUtiBase::CheckPasswdValid(text.c_str()) == (isClean && text.size() >= 6 && text.size() <= 20 ? 1 : 0),
      "CheckPasswdValid accepts exactly 6 to 20 letters, digits and underscores");
  fuzz::Check(CUtiBase::IsChatValid(text.c_str()) == 1, "an empty word list accepts every chat text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view bytes = fuzz::BytesOf(data, size);
  const std::string text(fuzz::TakeUntil(bytes, '\0'));
  CheckSeparators(text);
  CheckNumerals(text);
  CheckInt(text);
  CheckTime(text);
  CheckNames(text);
  return 0;
}
