#include "data/FormatMeasure.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

#include "gbk/CodePage936.h"
#include "platform/FormatConversion.h"

namespace zvuti {

namespace {

constexpr std::int64_t kMostTotal = 0xFFFFFFFF;
constexpr std::int64_t kNullText = 6;  // "(null)"
constexpr int kIntegerRoom = 32;
constexpr int kFloatRoom = 128;

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

  const char* Conversion(const char* text) {
    const FormatConversion conversion = ReadConversion(text, arguments_);
    hasLongLong_ = hasLongLong_ || conversion.isLongLongD;
    Add(2 * std::int64_t{conversion.sharps});
    const char* const letter = conversion.measured;
    if (letter < conversion.next && *letter == conversion.letter) {
      Add(Item(conversion));
      return conversion.next;
    }
    // A conversion that measuring and writing read differently gets no room, but its argument must be
    // skipped so that the next conversion does not take it.
    arguments_.Skip(conversion.argument);
    if (letter < conversion.next) {  // a prefix, such as the z of %zu; the rest counts as text
      Add(conversion.next - letter - 1);
      return conversion.next;
    }
    const bool isEnd = *letter == '\0' || *letter == '%';
    return isEnd ? conversion.next : letter + gbk::CharLength(letter);  // such as the comma of "%F,"
  }

  std::int64_t Item(const FormatConversion& conversion) {
    const std::int64_t both = std::int64_t{conversion.width} + conversion.precision;
    switch (conversion.letter) {
      case 's':
      case 'S':
        return TextItem(TextLength(conversion.isWide, conversion.precision), conversion);
      case 'f':
        return FixedLength(conversion.argument == FormatArgument::kLongDouble
                               ? static_cast<double>(arguments_.Next<long double>())
                               : arguments_.Next<double>(),
                           conversion);
      default:
        break;
    }
    arguments_.Skip(conversion.argument);
    switch (conversion.letter) {
      case 'c':
      case 'C':
        return TextItem(2, conversion);
      case 'd':
      case 'i':
      case 'u':
      case 'o':
      case 'x':
      case 'X':
      case 'p':
        return std::max<std::int64_t>(kIntegerRoom, both);
      case 'e':
      case 'g':
      case 'G':
        return std::max<std::int64_t>(kFloatRoom, both);
      default:  // n, letters unknown to measuring, and letters that are not conversions
        return 0;
    }
  }

  std::int64_t TextLength(bool isWide, int precision) {
    const void* text = arguments_.Next<const void*>();
    if (!text) return kNullText;
    // Bytes beyond the precision don't change the result, and the text need not extend beyond it.
    const std::size_t limit =
        precision > 0 ? static_cast<std::size_t>(precision) : std::numeric_limits<std::size_t>::max();
    const std::size_t length = isWide          ? WideLength(text, limit)
                               : precision > 0 ? NarrowLength(static_cast<const char*>(text), limit)
                                               : std::strlen(static_cast<const char*>(text));
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(length));
  }

  static std::int64_t TextItem(std::int64_t item, const FormatConversion& conversion) {
    if (conversion.precision != 0 && item >= conversion.precision) item = conversion.precision;
    return item <= conversion.width ? conversion.width : item;
  }

  /// Returns the length with six digits more than requested, so that the default precision always fits. The
  /// width is added here, because the system's snprintf takes seconds for a very wide field.
  static std::int64_t FixedLength(double value, const FormatConversion& conversion) {
    const int digits = std::min(conversion.precision, std::numeric_limits<int>::max() - 6) + 6;
    const std::int64_t length = std::snprintf(nullptr, 0, "%.*f", digits, value);
    const std::int64_t width = conversion.width < 0 ? -std::int64_t{conversion.width} : conversion.width;
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
