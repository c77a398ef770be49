// One printf conversion taken apart, and the argument list that it draws from. What is read here
// decides which arguments a format takes; the formatter and whoever measures for it agree through it.
#pragma once

#include <cstdarg>
#include <cstddef>

namespace zvuti {

/// How the value of a conversion is passed.
enum class FormatArgument : unsigned char {
  kNone,
  kInt,
  kLong,
  kLongLong,
  kMax,
  kSize,
  kDifference,
  kDouble,
  kLongDouble,
  kPointer
};

/// Owns a copy of an argument list.
class FormatArguments {
 public:
  explicit FormatArguments(va_list from) { va_copy(list, from); }
  ~FormatArguments() { va_end(list); }
  FormatArguments(const FormatArguments&) = delete;
  FormatArguments& operator=(const FormatArguments&) = delete;

  template <class Value>
  Value Next() {
    return va_arg(list, Value);
  }
  /// Passes over one argument.
  void Skip(FormatArgument kind);

  va_list list;
};

/// A conversion as written. Flags, width, precision and prefixes stand in this order, as everywhere;
/// of several prefixes the last one counts, and hh and ll are prefixes of their own.
struct FormatConversion {
  const char* next = nullptr;  // behind the conversion
  const char* prefix = "";     // what the system's printf calls the width of the argument
  int width = 0;
  int precision = -1;  // -1: none written
  bool isWidthStar = false;
  bool isPrecisionStar = false;
  bool hasMinus = false;
  bool hasPlus = false;
  bool hasBlank = false;
  bool hasSharp = false;
  bool hasZero = false;
  bool isWide = false;  // for texts and characters: 16-bit units
  bool isKnown = true;  // the letter makes a conversion, or the format ends
  char letter = '\0';   // zero where the format ends before it
  FormatArgument argument = FormatArgument::kNone;
};

/// Reads the conversion whose percent sign stands directly before `text`.
FormatConversion ReadConversion(const char* text);

/// Reads digits at `text`, stepping over them; the largest int where they say more.
int ReadFormatNumber(const char*& text);

/// Units of a text before its zero unit, looking at no more than `limit` of them.
std::size_t NarrowLength(const char* text, std::size_t limit);
/// The same for 16-bit units, which need no alignment.
std::size_t WideLength(const void* text, std::size_t limit);

}  // namespace zvuti
