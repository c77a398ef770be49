// Parses one printf conversion and takes its arguments from the list. This is the only parser: the formatter
// and the measuring pass both use it, so they take the same arguments for any format.
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

/// A conversion, with the stars of its head read from the argument list.
///
/// Flags and stars stand in any order, and of several stars the last one is the width; digits are the width
/// where no star gave one. Prefixes follow the precision. Of several the last one counts, hh and ll are
/// prefixes of their own, and L matters to floats alone.
struct FormatConversion {
  const char* next = nullptr;  // after the conversion
  /// Where measuring finds the letter. It knows less: I64, then one of lld, h, l, F, L and N. In `%zu` it
  /// finds the z, in `%F,` the comma; in a conversion that it knows whole, the letter itself.
  const char* measured = nullptr;
  const char* prefix = "";  // what the host system's printf calls the width of the argument
  int width = 0;            // negative where a star said so
  int precision = 0;        // likewise
  int sharps = 0;           // of the flag #
  bool hasPrecision = false;
  bool hasMinus = false;
  bool hasPlus = false;
  bool hasBlank = false;
  bool hasZero = false;
  bool isWide = false;       // for texts and characters: 16-bit units
  bool isKnown = true;       // the letter makes a conversion, or the format ends
  bool isLongLongD = false;  // the prefix ll stands directly before d
  char letter = '\0';        // zero where the format ends before it
  FormatArgument argument = FormatArgument::kNone;
};

/// Reads the conversion whose percent sign stands directly before `text`, and takes the values of its
/// stars; its own value, of the kind `argument`, comes next. A percent sign after a prefix belongs to the
/// next conversion: the one before it has no letter and is unknown.
FormatConversion ReadConversion(const char* text, FormatArguments& arguments);

/// Units of a text before its zero unit, looking at no more than `limit` of them.
std::size_t NarrowLength(const char* text, std::size_t limit);
/// The same for 16-bit units, which need no alignment.
std::size_t WideLength(const void* text, std::size_t limit);

}  // namespace zvuti
