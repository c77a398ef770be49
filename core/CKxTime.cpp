#include <ZvUtiLib/CKxTime.h>
#include <ZvUtiLib/platform/tag_KxTimeDWord.h>

#include <cstdint>

#include "gbk/Ascii.h"

namespace {

tag_KxTimeDWord RecordOf(unsigned long word) {
  tag_KxTimeDWord record;
  record = word;
  return record;
}

unsigned long Widened(int field) { return static_cast<unsigned long>(field); }

// Removes white space, a sign and digits from the front of `text`, as scanf's %d does. Returns false if there
// is no digit. The number is kept modulo 2^32: scanf leaves numbers that do not fit an int undefined, and no
// field uses more than the lowest six bits.
bool TakeNumber(const char*& text, std::uint32_t& number) {
  while (zvuti::IsSpace(*text)) ++text;
  const bool isNegative = *text == '-';
  if (isNegative || *text == '+') ++text;
  if (!zvuti::IsDigit(*text)) return false;
  std::uint32_t magnitude = 0;
  for (; zvuti::IsDigit(*text); ++text) magnitude = magnitude * 10 + static_cast<std::uint32_t>(*text - '0');
  number = isNegative ? 0u - magnitude : magnitude;
  return true;
}

bool TakeByte(const char*& text, char expected) {
  if (*text != expected) return false;
  ++text;
  return true;
}

// The fields, in the order of both the text and the word, with the separator before each one in the text. A
// blank stands for optional white space, which parsing the number skips anyway.
constexpr struct {
  char before;
  std::uint32_t base;
  int bits;
} kFields[] = {
    {' ', 2000, 6},  // year
    {'-', 0, 4},     // month
    {'-', 0, 5},     // day
    {' ', 0, 5},     // hour
    {':', 0, 6},     // minute
    {':', 0, 6},     // second
};

}  // namespace

CKxTime::CKxTime() = default;
CKxTime::CKxTime(const CKxTime&) = default;
CKxTime& CKxTime::operator=(const CKxTime&) = default;
CKxTime::~CKxTime() = default;

CString CKxTime::DWord2String(unsigned long word) {
  const tag_KxTimeDWord time = RecordOf(word);
  CString text;
  text.Format("%.4d-%.2d-%.2d %.2d:%.2d:%.2d", time.Year(), time.Month(), time.Day(), time.Hour(),
              time.Minute(), time.Second());
  return text;
}

CString CKxTime::DWord2StringNoSecond(unsigned long word) {
  const tag_KxTimeDWord time = RecordOf(word);
  CString text;
  text.Format("%.4d-%.2d-%.2d %.2d:%.2d", time.Year(), time.Month(), time.Day(), time.Hour(), time.Minute());
  return text;
}

unsigned long CKxTime::String2DWord(const char* text) {
  if (!text) return 0;
  std::uint32_t word = 0;
  bool isGiven = true;
  for (const auto& field : kFields) {
    std::uint32_t number = field.base;  // makes a missing field 0
    isGiven = isGiven && (field.before == ' ' || TakeByte(text, field.before)) && TakeNumber(text, number);
    const std::uint32_t mask = (1u << field.bits) - 1;
    word = word << field.bits | ((number - field.base) & mask);
  }
  return word;
}

unsigned long CKxTime::GetYearFromWord(unsigned long word) { return Widened(RecordOf(word).Year()); }
unsigned long CKxTime::GetMonthFromWord(unsigned long word) { return Widened(RecordOf(word).Month()); }
unsigned long CKxTime::GetDayFromWord(unsigned long word) { return Widened(RecordOf(word).Day()); }
unsigned long CKxTime::GetHourFromWord(unsigned long word) { return Widened(RecordOf(word).Hour()); }
unsigned long CKxTime::GetMinuteFromWord(unsigned long word) { return Widened(RecordOf(word).Minute()); }
unsigned long CKxTime::GetSecondFromWord(unsigned long word) { return Widened(RecordOf(word).Second()); }
