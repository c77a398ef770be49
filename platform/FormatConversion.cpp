#include "platform/FormatConversion.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"
#include "platform/SystemPrintf.h"

namespace zvuti {

namespace {

enum class Prefix : unsigned char {
  kNone,
  kChar,
  kShort,
  kLong,
  kLongLong,
  kInt64,
  kMax,
  kSize,
  kDifference
};

struct IntegerForm {
  const char* SystemPrintfTraits::*prefix;
  FormatArgument argument;
};
// By Prefix.
constexpr IntegerForm kIntegerForms[] = {{&SystemPrintfTraits::plainInt, FormatArgument::kInt},
                                         {&SystemPrintfTraits::charInt, FormatArgument::kInt},
                                         {&SystemPrintfTraits::shortInt, FormatArgument::kInt},
                                         {&SystemPrintfTraits::longInt, FormatArgument::kLong},
                                         {&SystemPrintfTraits::longLong, FormatArgument::kLongLong},
                                         {&SystemPrintfTraits::longLong, FormatArgument::kLongLong},
                                         {&SystemPrintfTraits::max, FormatArgument::kMax},
                                         {&SystemPrintfTraits::size, FormatArgument::kSize},
                                         {&SystemPrintfTraits::difference, FormatArgument::kDifference}};

constexpr bool IsPrefix(char letter) {
  return letter == 'h' || letter == 'l' || letter == 'L' || letter == 'j' || letter == 'z' || letter == 't' ||
         letter == 'I' || letter == 'F' || letter == 'N';
}

bool StartsWith(const char* text, std::string_view beginning) {
  for (const char c : beginning) {
    if (*text++ != c) return false;
  }
  return true;
}

/// Digits at `text`, stepping over them; the largest int where they say more.
int ReadNumber(const char*& text) {
  constexpr int kMost = std::numeric_limits<int>::max();
  int number = 0;
  for (; IsDigit(*text); ++text) {
    const int digit = *text - '0';
    number = number > (kMost - digit) / 10 ? kMost : number * 10 + digit;
  }
  return number;
}

/// Flags, width and precision.
void ReadNumbers(const char*& text, FormatArguments& arguments, FormatConversion& out) {
  for (; *text <= '0'; ++text) {  // all flags and the star lie there
    if (*text == '-') {
      out.hasMinus = true;
    } else if (*text == '+') {
      out.hasPlus = true;
    } else if (*text == ' ') {
      out.hasBlank = true;
    } else if (*text == '#') {
      ++out.sharps;
    } else if (*text == '0') {
      out.hasZero = true;
    } else if (*text == '*') {
      out.width = arguments.Next<int>();
    } else {
      break;
    }
  }
  if (out.width == 0) out.width = ReadNumber(text);
  if (*text != '.') return;
  ++text;
  out.hasPrecision = true;
  if (*text == '*') {
    ++text;
    out.precision = arguments.Next<int>();
  } else {
    out.precision = ReadNumber(text);
  }
}

/// The letter as measuring finds it after the prefixes at `text`.
const char* MeasuredLetter(const char* text) {
  if (StartsWith(text, "I64")) text += 3;
  if (StartsWith(text, "lld")) return text + 2;
  const bool isPrefix = *text == 'h' || *text == 'l' || *text == 'F' || *text == 'L' || *text == 'N';
  return isPrefix ? text + 1 : text;
}

struct Prefixes {
  Prefix last = Prefix::kNone;  // of those for integers
  bool isLongDouble = false;
};

Prefixes ReadPrefixes(const char*& text) {
  for (Prefixes read;; ++text) {
    switch (*text) {
      case 'h':
        read.last = read.last == Prefix::kShort ? Prefix::kChar : Prefix::kShort;
        break;
      case 'l':
        read.last = read.last == Prefix::kLong ? Prefix::kLongLong : Prefix::kLong;
        break;
      case 'L':
        read.isLongDouble = true;
        break;
      case 'j':
        read.last = Prefix::kMax;
        break;
      case 'z':
        read.last = Prefix::kSize;
        break;
      case 't':
        read.last = Prefix::kDifference;
        break;
      case 'I':
        if (StartsWith(text, "I64")) {
          read.last = Prefix::kInt64;
          text += 2;
        } else if (StartsWith(text, "I32")) {
          read.last = Prefix::kNone;
          text += 2;
        } else {
          read.last = Prefix::kDifference;  // as wide as a pointer
        }
        break;
      case 'F':
      case 'N':
        // Once distinguished far from near pointers; an F that stands before no letter is one itself.
        if (text[1] == '\0' || !std::strchr("cCsSdiuoxXpneEfgG", text[1])) return read;
        break;
      default:
        return read;
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

FormatConversion ReadConversion(const char* text, FormatArguments& arguments) {
  FormatConversion result;
  ReadNumbers(text, arguments, result);

  Prefixes prefixes;
  result.measured = text;
  if (IsPrefix(*text)) {  // most have none
    result.measured = MeasuredLetter(text);
    prefixes = ReadPrefixes(text);
    if (*text == '%') {
      result.isKnown = false;
      result.next = text;
      return result;
    }
  }

  result.letter = *text;
  result.next = text + (*text != '\0' ? gbk::CharLength(text) : 0);
  switch (*text) {
    case 'd':
    case 'i':
    case 'u':
    case 'o':
    case 'x':
    case 'X': {
      const IntegerForm& form = kIntegerForms[static_cast<std::size_t>(prefixes.last)];
      result.prefix = kSystemPrintf.*form.prefix;
      result.argument = form.argument;
      result.isLongLongD = *text == 'd' && text == result.measured && prefixes.last == Prefix::kLongLong;
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
      result.prefix = prefixes.isLongDouble ? kSystemPrintf.longDouble : "";
      result.argument = prefixes.isLongDouble ? FormatArgument::kLongDouble : FormatArgument::kDouble;
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
  const Prefix last = prefixes.last;
  const bool isNarrow = last == Prefix::kShort || last == Prefix::kChar;
  result.isWide = last == Prefix::kLong || last == Prefix::kLongLong ||
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
