// Numbers and times as text, and the checks of what users type. The input is a text.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <ZvUtiLib/CKxTime.h>
#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiNumber.h>
#include <ZvUtiLib/data/ParseInt.h>

#include "fuzz/Check.h"
#include "platform/CodePage936.h"

namespace {

void CheckSeparators(const std::string& text) {
  CString separated, joined;
  const int isNumber = CUtiNumber::CheckNumber(text.c_str());
  fuzz::Check(CUtiNumber::InsertSeparator(text.c_str(), separated) == isNumber,
              "exactly numbers are separated");
  CUtiNumber::RemoveSeparator(separated, joined);
  fuzz::Check(joined == (isNumber ? text.c_str() : ""), "a number without its separators is itself");

  std::string kept = text;
  kept.erase(std::remove(kept.begin(), kept.end(), ','), kept.end());
  CUtiNumber::RemoveSeparator(text.c_str(), joined);
  fuzz::Check(joined == kept.c_str(), "nothing but commas is removed");
}

void CheckNumerals(const std::string& text) {
  CString spelled = "old";
  const bool isDigits = text.size() <= 20 && text.find_first_not_of("0123456789") == std::string::npos;
  fuzz::Check((CUtiNumber::ChangeLowerNum2UpperNum(text.c_str(), spelled) == 1) == isDigits,
              "exactly digits are spelled");
  fuzz::Check(text.size() <= 20 || spelled == "old", "a number that is too long is left alone");
  bool isWhole = false;
  zvuti::gbk::ToUtf8(spelled.GetString(), &isWhole);
  fuzz::Check(isWhole, "numerals are whole characters");
}

void CheckInt(const std::string& text) {
  const std::string begin = text.substr(0, 31);
  const long long value = std::clamp(std::strtoll(begin.c_str(), nullptr, 10), -0x80000000LL, 0x7FFFFFFFLL);
  fuzz::Check(ParseInt(text.c_str(), 0xFFFFFFFF) == value, "a number is parsed as the system parses it");
}

void CheckTime(const std::string& text) {
  const unsigned long word = CKxTime::String2DWord(text.c_str());
  fuzz::Check(word <= 0xFFFFFFFF, "a packed time has 32 bits");
  fuzz::Check(CKxTime::String2DWord(CKxTime::DWord2String(word)) == word, "a printed time is read back");
  unsigned numbers[6] = {2000};
  // The system's reading, as far as it is defined: numbers within an int.
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
    fuzz::Check(word == expected, "a time is read as the system reads its numbers");
  }
}

void CheckNames(const std::string& text) {
  const auto isName = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
  };
  const bool isClean = std::all_of(text.begin(), text.end(), isName);
  fuzz::Check(
      CUtiBase::CheckAccountValid(text.c_str()) == (isClean && text.size() >= 4 && text.size() <= 16 ? 1 : 0),
      "account names are checked");
  fuzz::Check(
      CUtiBase::CheckPasswdValid(text.c_str()) == (isClean && text.size() >= 6 && text.size() <= 20 ? 1 : 0),
      "passwords are checked");
  fuzz::Check(CUtiBase::IsChatValid(text.c_str()) == 1, "no chat is refused by the empty list");
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
