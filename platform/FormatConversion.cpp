#include "platform/FormatConversion.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include "platform/Ascii.h"
#include "platform/CodePage936.h"
#include "platform/SystemPrintf.h"

namespace zvuti {

namespace {

enum class Prefix : unsigned char {
  kNone,
  kChar,
  kShort,
  kLong,
  kLongLong,
  kLongDouble,
  kMax,
  kSize,
  kDifference,
};

struct IntegerForm {
  const char* prefix;
  FormatArgument argument;
};
// By Prefix; L says nothing about integers on the platform.
constexpr IntegerForm kIntegerForms[] = {{"", FormatArgument::kInt},
                                         {kSystemPrefixes.charInt, FormatArgument::kInt},
                                         {kSystemPrefixes.shortInt, FormatArgument::kInt},
                                         {kSystemPrefixes.longInt, FormatArgument::kLong},
                                         {kSystemPrefixes.longLong, FormatArgument::kLongLong},
                                         {"", FormatArgument::kInt},
                                         {kSystemPrefixes.max, FormatArgument::kMax},
                                         {kSystemPrefixes.size, FormatArgument::kSize},
                                         {kSystemPrefixes.difference, FormatArgument::kDifference}};

constexpr bool IsPrefix(char letter) {
  return letter == 'h' || letter == 'l' || letter == 'L' || letter == 'j' || letter == 'z' || letter == 't' ||
         letter == 'I' || letter == 'F' || letter == 'N';
}

Prefix ReadPrefixes(const char*& text) {
  if (!IsPrefix(*text)) return Prefix::kNone;  // most have none
  for (Prefix prefix = Prefix::kNone;; ++text) {
    switch (*text) {
      case 'h':
        prefix = prefix == Prefix::kShort ? Prefix::kChar : Prefix::kShort;
        break;
      case 'l':
        prefix = prefix == Prefix::kLong ? Prefix::kLongLong : Prefix::kLong;
        break;
      case 'L':
        prefix = Prefix::kLongDouble;
        break;
      case 'j':
        prefix = Prefix::kMax;
        break;
      case 'z':
        prefix = Prefix::kSize;
        break;
      case 't':
        prefix = Prefix::kDifference;
        break;
      case 'I':
        if (text[1] == '6' && text[2] == '4') {
          prefix = Prefix::kLongLong;
          text += 2;
        } else if (text[1] == '3' && text[2] == '2') {
          prefix = Prefix::kNone;
          text += 2;
        } else {
          prefix = Prefix::kDifference;  // as wide as a pointer
        }
        break;
      case 'F':
      case 'N':
        // Once told far from near pointers; an F that stands before no letter is one itself.
        if (text[1] == '\0' || !std::strchr("cCsSdiuoxXpneEfgG", text[1])) return prefix;
        break;
      default:
        return prefix;
    }
  }
}

}  // namespace

void FormatArguments::Skip(FormatArgument kind) {
  switch (kind) {
    case FormatArgument::kNone:
      break;
    case FormatArgument::kInt:
      Next<int>();
      break;
    case FormatArgument::kLong:
      Next<long>();
      break;
    case FormatArgument::kLongLong:
      Next<long long>();
      break;
    case FormatArgument::kMax:
      Next<std::intmax_t>();
      break;
    case FormatArgument::kSize:
      Next<std::size_t>();
      break;
    case FormatArgument::kDifference:
      Next<std::ptrdiff_t>();
      break;
    case FormatArgument::kDouble:
      Next<double>();
      break;
    case FormatArgument::kLongDouble:
      Next<long double>();
      break;
    case FormatArgument::kPointer:
      Next<const void*>();
      break;
  }
}

int ReadFormatNumber(const char*& text) {
  constexpr int kMost = std::numeric_limits<int>::max();
  int number = 0;
  for (; IsDigit(*text); ++text) {
    const int digit = *text - '0';
    number = number > (kMost - digit) / 10 ? kMost : number * 10 + digit;
  }
  return number;
}

FormatConversion ReadConversion(const char* text) {
  FormatConversion result;
  for (; *text <= '0'; ++text) {  // all flags lie there
    if (*text == '-') {
      result.hasMinus = true;
    } else if (*text == '+') {
      result.hasPlus = true;
    } else if (*text == ' ') {
      result.hasBlank = true;
    } else if (*text == '#') {
      result.hasSharp = true;
    } else if (*text == '0') {
      result.hasZero = true;
    } else {
      break;
    }
  }
  if (*text == '*') {
    result.isWidthStar = true;
    ++text;
  } else {
    result.width = ReadFormatNumber(text);
  }
  if (*text == '.') {
    ++text;
    if (*text == '*') {
      result.isPrecisionStar = true;
      ++text;
    } else {
      result.precision = ReadFormatNumber(text);
    }
  }

  const Prefix prefix = ReadPrefixes(text);
  result.letter = *text;
  result.next = text + (*text != '\0' ? gbk::CharLength(text) : 0);
  switch (*text) {
    case 'd':
    case 'i':
    case 'u':
    case 'o':
    case 'x':
    case 'X': {
      const IntegerForm& form = kIntegerForms[static_cast<std::size_t>(prefix)];
      result.prefix = form.prefix;
      result.argument = form.argument;
      break;
    }
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
      result.prefix = prefix == Prefix::kLongDouble ? kSystemPrefixes.longDouble : "";
      result.argument = prefix == Prefix::kLongDouble ? FormatArgument::kLongDouble : FormatArgument::kDouble;
      break;
    case 'c':
    case 'C':
      result.argument = FormatArgument::kInt;
      break;
    case 's':
    case 'S':
    case 'p':
    case 'n':
      result.argument = FormatArgument::kPointer;
      break;
    case '%':
    case '\0':
      break;
    default:
      result.isKnown = false;
      break;
  }
  const bool isNarrow = prefix == Prefix::kShort || prefix == Prefix::kChar;
  result.isWide = prefix == Prefix::kLong || prefix == Prefix::kLongLong ||
                  (!isNarrow && (result.letter == 'C' || result.letter == 'S'));
  return result;
}

std::size_t NarrowLength(const char* text, std::size_t limit) {
  std::size_t length = 0;
  while (length < limit && text[length] != '\0') ++length;
  return length;
}

std::size_t WideLength(const void* text, std::size_t limit) {
  std::size_t length = 0;
  for (; length < limit; ++length) {
    char16_t unit = 0;
    std::memcpy(&unit, static_cast<const char*>(text) + length * sizeof unit, sizeof unit);
    if (unit == u'\0') break;
  }
  return length;
}

}  // namespace zvuti
