#include "shared/PackedTime.h"

#include <ZvUtiLib/CKxTime.h>

namespace tool {

std::string OddityOf(std::uint32_t word) {
  const unsigned long month = CKxTime::GetMonthFromWord(word), day = CKxTime::GetDayFromWord(word);
  if (month < 1 || month > 12) return "there is no month " + std::to_string(month);
  constexpr unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool isLeap = CKxTime::GetYearFromWord(word) % 4 == 0;  // right for 2000 to 2063
  const unsigned long most = kDays[month - 1] + (month == 2 && isLeap ? 1u : 0u);
  if (day < 1 || day > most) return "there is no day " + std::to_string(day) + " in this month";
  if (CKxTime::GetHourFromWord(word) > 23)
    return "there is no hour " + std::to_string(CKxTime::GetHourFromWord(word));
  if (CKxTime::GetMinuteFromWord(word) > 59)
    return "there is no minute " + std::to_string(CKxTime::GetMinuteFromWord(word));
  if (CKxTime::GetSecondFromWord(word) > 59)
    return "there is no second " + std::to_string(CKxTime::GetSecondFromWord(word));
  return {};
}

std::string DateOf(std::uint32_t word) {
  return word == 0 || !OddityOf(word).empty() ? "" : CKxTime::DWord2String(word).GetString();
}

bool IsDate(const std::string& text) { return text.find('-', 1) != text.npos; }

std::optional<std::uint32_t> WordOf(const std::string& text, std::string& problem) {
  constexpr std::size_t kDateSize = 10;  // "2013-08-29"
  const auto word = static_cast<std::uint32_t>(CKxTime::String2DWord(text.c_str()));
  const std::string whole = CKxTime::DWord2String(word).GetString();
  problem.clear();
  if (text.size() < kDateSize || whole.compare(0, text.size(), text) != 0) {
    problem = "not a date from 2000 to 2063 like \"2013-08-29 12:34:56\"";
  } else {
    problem = OddityOf(word);
  }
  if (problem.empty()) return word;
  return std::nullopt;
}

}  // namespace tool
