#include <ZvUtiLib/CUtiNumber.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "gbk/Ascii.h"
#include "gbk/Digits.h"
#include "platform/PointsInto.h"

namespace {

constexpr std::size_t kGroup = 4;        // digits
constexpr std::size_t kMostDigits = 20;  // that can be spelled: the five groups below

// Up to two characters. `bytes` always has four bytes, so that appending is one copy of fixed size.
struct Piece {
  template <std::size_t N>
  constexpr Piece(const char (&text)[N]) : size(N - 1) {  // NOLINT(google-explicit-constructor)
    static_assert(N - 1 <= sizeof bytes);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = text[i];
  }

  char bytes[4] = {};
  std::size_t size;
};

constexpr Piece kZero = "\xC1\xE3";  // 零
constexpr Piece kTen = "\xCA\xB0";   // 拾

struct Numeral {
  Piece capital, plain;
};
constexpr Numeral kNumerals[] = {
    {kZero, kZero},            // 零 零
    {"\xD2\xBC", "\xD2\xBB"},  // 壹 一
    {"\xB7\xA1", "\xB6\xFE"},  // 贰 二
    {"\xC8\xFE", "\xC8\xFD"},  // 叁 三
    {"\xCB\xC1", "\xCB\xC4"},  // 肆 四
    {"\xCE\xE9", "\xCE\xE5"},  // 伍 五
    {"\xC2\xBD", "\xC1\xF9"},  // 陆 六
    {"\xC6\xE2", "\xC6\xDF"},  // 柒 七
    {"\xB0\xC6", "\xB0\xCB"},  // 捌 八
    {"\xBE\xC1", "\xBE\xC5"},  // 玖 九
};
static_assert(std::size(kNumerals) == 10);

// The unit of a digit by its place in its group, and the unit of a group by its place in the number, from the
// right.
constexpr Piece kPlaceUnits[] = {
    "", kTen,
    "\xB0\xDB",  // 佰
    "\xC7\xAA",  // 仟
};
constexpr Piece kGroupUnits[] = {
    "",
    "\xCD\xF2",          // 万
    "\xD2\xDA",          // 亿
    "\xCD\xF2\xD2\xDA",  // 万亿
    "\xD2\xDA\xD2\xDA",  // 亿亿
};
static_assert(std::size(kPlaceUnits) == kGroup && std::size(kGroupUnits) * kGroup == kMostDigits);

// The spelling built so far. Each digit takes at most four bytes, and the unit of each group four more.
class Spelling {
 public:
  void Append(const Piece& piece) {
    std::memcpy(end_, piece.bytes, sizeof piece.bytes);
    end_ += piece.size;
  }
  const char* Text() {
    *end_ = '\0';
    return bytes_;
  }

 private:
  char bytes_[kMostDigits * 4 + std::size(kGroupUnits) * 4 + sizeof(Piece::bytes)];
  char* end_ = bytes_;
};

// Spells the digit at `place` of its group; `right` is the next byte.
void SpellDigit(Spelling& out, char digit, std::size_t place, char right) {
  if (digit == '0') {
    if (place > 0 && right != '0') out.Append(kZero);
    return;
  }
  const bool isBareTen = digit == '1' && place == 1;
  if (!isBareTen) out.Append(kNumerals[digit - '0'].capital);
  out.Append(kPlaceUnits[place]);
}

// Spells the digits before the first byte that is not a digit; returns false if there is such a byte.
bool SpellNumber(Spelling& out, std::string_view number) {
  bool isGroupZero = true;
  for (std::size_t i = 0; i < number.size(); ++i) {
    if (!zvuti::IsDigit(number[i])) return false;
    const std::size_t fromRight = number.size() - 1 - i;
    const std::size_t place = fromRight % kGroup;
    SpellDigit(out, number[i], place, place > 0 ? number[i + 1] : '\0');
    isGroupZero = isGroupZero && number[i] == '0';
    if (place == 0) {
      if (!isGroupZero) out.Append(kGroupUnits[fromRight / kGroup]);
      isGroupZero = true;
    }
  }
  return true;
}

// Returns the end of a text that is a number, or null if it is not.
const char* EndOfNumber(const char* text) {
  if (!text || !*text) return nullptr;
  if (*text == '-') ++text;
  while (zvuti::IsDigit(*text)) ++text;
  return *text == '\0' ? text : nullptr;
}

// Returns room for `size` bytes in `string`. A CString holds no more bytes than an int can count.
char* BufferOf(CString& string, std::size_t size) {
  if (size > std::size_t{std::numeric_limits<int>::max()}) throw std::length_error("the text is too long.");
  return string.GetBuffer(static_cast<int>(size));
}

// Writes the sign and the first group, then a comma and four digits for each further group.
void SetGrouped(const char* number, std::size_t size, CString& result) {
  if (zvuti::PointsInto(result, number)) {
    const CString apart(std::string_view(number, size));
    return SetGrouped(apart, size, result);
  }
  const std::size_t digits = size - (*number == '-' ? 1 : 0);
  const std::size_t separators = digits > 0 ? (digits - 1) / kGroup : 0;
  const std::size_t head = size - separators * kGroup;
  char* out = BufferOf(result, size + separators);
  std::memcpy(out, number, head);
  out += head;
  number += head;
  for (std::size_t i = 0; i < separators; ++i) {
    *out++ = ',';
    std::memcpy(out, number, kGroup);
    out += kGroup;
    number += kGroup;
  }
  result.ReleaseBuffer(static_cast<int>(size + separators));
}

}  // namespace

CUtiNumber::CUtiNumber() = default;
CUtiNumber::CUtiNumber(const CUtiNumber&) = default;
CUtiNumber& CUtiNumber::operator=(const CUtiNumber&) = default;
CUtiNumber::~CUtiNumber() = default;

int CUtiNumber::CheckNumber(const char* text) { return EndOfNumber(text) ? 1 : 0; }
int CUtiNumber::CheckNumber(std::int64_t value, CString& result) { return InsertSeparator(value, result); }

int CUtiNumber::InsertSeparator(const char* text, CString& result) {
  const char* end = EndOfNumber(text);
  if (!end) {
    result.Empty();
    return 0;
  }
  SetGrouped(text, static_cast<std::size_t>(end - text), result);
  return 1;
}

int CUtiNumber::InsertSeparator(std::int64_t value, CString& result) {
  const auto bits = static_cast<std::uint64_t>(value);
  char bytes[1 + kMostDigits];
  char* number = zvuti::WriteDigits(std::end(bytes), value < 0 ? std::uint64_t{0} - bits : bits);
  if (value < 0) *--number = '-';
  SetGrouped(number, static_cast<std::size_t>(std::end(bytes) - number), result);
  return 1;
}

int CUtiNumber::RemoveSeparator(const char* text, CString& result) {
  const std::string_view all = text ? std::string_view(text) : std::string_view();
  CString bare;
  char* const out = BufferOf(bare, all.size());
  bare.ReleaseBuffer(static_cast<int>(std::remove_copy(all.begin(), all.end(), out, ',') - out));
  result = std::move(bare);
  return 1;
}

int CUtiNumber::ChangeLowerNum2UpperNum(const char* text, CString& result) {
  if (!text) return 0;
  const std::string_view number = text;
  if (number.size() > kMostDigits) return 0;
  Spelling spelling;
  const bool isWhole = SpellNumber(spelling, number);
  result = spelling.Text();
  return isWhole ? 1 : 0;
}

CString CUtiNumber::GetNumCN(int digit) {
  return digit >= 0 && digit <= 9 ? CString(kNumerals[digit].plain.bytes, 2) : CString();
}
