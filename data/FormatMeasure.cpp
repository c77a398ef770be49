#include "data/FormatMeasure.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "platform/CodePage936.h"
#include "platform/FormatConversion.h"

namespace zvuti {

namespace {

constexpr std::int64_t kMostTotal = 0xFFFFFFFF;
constexpr std::int64_t kNullText = 6;  // "(null)"
constexpr int kIntegerRoom = 32;
constexpr int kFloatRoom = 128;

enum class Noted : unsigned char { kNothing, kBits64, kNarrow, kWide };

/// What stands between the percent sign and the letter, as the measuring reads it.
struct Head {
  int width = 0;
  int precision = 0;
  int stars = 0;
  int signs = 0;  // of the flag #
  Noted noted = Noted::kNothing;
  bool isLongDouble = false;
};

class Measurer {
 public:
  explicit Measurer(va_list arguments) : arguments_(arguments) {}

  FormatMeasure Measure(const char* format) {
    while (*format != '\0') {
      if (*format != '%') {
        const std::size_t length = gbk::CharLength(format);
        Add(static_cast<std::int64_t>(length));
        format += length;
      } else if (format[1] == '%') {
        Add(1);
        format += 2;
      } else {
        format = Conversion(format + 1);
      }
    }
    return {static_cast<std::uint32_t>(std::max<std::int64_t>(total_, 0)), hasLongLong_};
  }

 private:
  void Add(std::int64_t length) { total_ = std::min(total_ + length, kMostTotal); }

  const char* Conversion(const char* const text) {
    const char* at = text;
    const Head head = ReadHead(at);
    Add(2 * std::int64_t{head.signs});
    if (*at == '\0') return at;
    Add(Item(text, head, *at));
    return at + gbk::CharLength(at);
  }

  Head ReadHead(const char*& at) {
    Head head;
    for (;; ++at) {
      if (*at == '#') {
        ++head.signs;
      } else if (*at == '*') {
        head.width = arguments_.Next<int>();
        ++head.stars;
      } else if (*at != '-' && *at != '+' && *at != '0' && *at != ' ') {
        break;
      }
    }
    if (head.width == 0) head.width = ReadFormatNumber(at);
    if (*at == '.') {
      ++at;
      if (*at == '*') {
        head.precision = arguments_.Next<int>();
        ++head.stars;
        ++at;
      } else {
        head.precision = ReadFormatNumber(at);
      }
    }
    if (at[0] == 'I' && at[1] == '6' && at[2] == '4') {
      at += 3;
      head.noted = Noted::kBits64;
    }
    if (at[0] == 'l' && at[1] == 'l' && at[2] == 'd') {
      at += 2;
      head.noted = Noted::kBits64;
      hasLongLong_ = true;
    } else if (*at == 'h') {
      ++at;
      head.noted = Noted::kNarrow;
    } else if (*at == 'l') {
      ++at;
      head.noted = Noted::kWide;
    } else if (*at == 'F' || *at == 'L' || *at == 'N') {
      head.isLongDouble = *at == 'L';
      ++at;
    }
    return head;
  }

  /// Length given to a conversion; `text` is its place behind the percent sign.
  std::int64_t Item(const char* text, const Head& head, char letter) {
    const std::int64_t both = std::int64_t{head.width} + head.precision;
    switch (letter) {
      case 'c':
      case 'C':
        arguments_.Next<int>();
        return TextItem(2, head);
      case 's':
      case 'S': {
        const bool isWide = head.noted == Noted::kWide || (letter == 'S' && head.noted != Noted::kNarrow);
        return TextItem(TextLength(isWide, head.precision), head);
      }
      case 'd':
      case 'i':
      case 'u':
      case 'o':
      case 'x':
      case 'X':
        arguments_.Skip(head.noted == Noted::kBits64 ? FormatArgument::kLongLong
                        : head.noted == Noted::kWide ? FormatArgument::kLong
                                                     : FormatArgument::kInt);
        return std::max<std::int64_t>(kIntegerRoom, both);
      case 'p':
        arguments_.Next<const void*>();
        return std::max<std::int64_t>(kIntegerRoom, both);
      case 'e':
      case 'g':
      case 'G':
        arguments_.Skip(head.isLongDouble ? FormatArgument::kLongDouble : FormatArgument::kDouble);
        return std::max<std::int64_t>(kFloatRoom, both);
      case 'f':
        return FixedLength(head.isLongDouble ? static_cast<double>(arguments_.Next<long double>())
                                             : arguments_.Next<double>(),
                           head);
      case 'n':
        arguments_.Next<const void*>();
        return 0;
      default: {
        // No room for it, but what it takes must not be left to the conversion behind it.
        const FormatConversion conversion = ReadConversion(text);
        int stars = (conversion.isWidthStar ? 1 : 0) + (conversion.isPrecisionStar ? 1 : 0);
        for (stars -= head.stars; stars > 0; --stars) arguments_.Next<int>();
        arguments_.Skip(conversion.argument);
        return 0;
      }
    }
  }

  std::int64_t TextLength(bool isWide, int precision) {
    const void* text = arguments_.Next<const void*>();
    if (!text) return kNullText;
    // A precision makes the length beyond it all the same, and the text behind it need not be there.
    const std::size_t limit =
        precision > 0 ? static_cast<std::size_t>(precision) : std::numeric_limits<std::size_t>::max();
    const std::size_t length = isWide          ? WideLength(text, limit)
                               : precision > 0 ? NarrowLength(static_cast<const char*>(text), limit)
                                               : std::strlen(static_cast<const char*>(text));
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(length));
  }

  static std::int64_t TextItem(std::int64_t item, const Head& head) {
    if (head.precision != 0 && item >= head.precision) item = head.precision;
    return item <= head.width ? head.width : item;
  }

  /// Length with six digits more than are asked for, so that no digit of the default is missing. The
  /// width is left to us: the system would take seconds to count a wide one out.
  static std::int64_t FixedLength(double value, const Head& head) {
    const int digits = std::min(head.precision, std::numeric_limits<int>::max() - 6) + 6;
    const std::int64_t length = std::snprintf(nullptr, 0, "%.*f", digits, value);
    const std::int64_t width = head.width < 0 ? -std::int64_t{head.width} : head.width;
    return length >= 0 ? std::max(length, width) : kMostTotal;  // beyond the int range
  }

  FormatArguments arguments_;
  std::int64_t total_ = 0;
  bool hasLongLong_ = false;
};

}  // namespace

FormatMeasure MeasureFormat(const char* format, va_list arguments) {
  return Measurer(arguments).Measure(format);
}

}  // namespace zvuti
