#include "platform/Formatter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>
#include <type_traits>

#include "gbk/CodePage936.h"
#include "gbk/Digits.h"
#include "platform/FormatConversion.h"
#include "platform/SystemPrintf.h"

namespace zvuti {

namespace {

/// Takes text for a bounded buffer and counts what all of it needs.
class Output {
 public:
  Output(char* out, std::size_t capacity) : out_(out), capacity_(capacity) {}

  void Append(std::string_view text) {
    if (length_ < capacity_)
      std::memcpy(out_ + length_, text.data(), std::min(text.size(), capacity_ - length_));
    Count(text.size());
  }
  void Put(char byte) {
    if (length_ < capacity_) out_[length_] = byte;
    Count(1);
  }
  void Fill(std::int64_t count, char byte) {
    if (count <= 0) return;
    const auto wanted = static_cast<std::size_t>(count);
    if (length_ < capacity_) std::memset(out_ + length_, byte, std::min(wanted, capacity_ - length_));
    Count(wanted);
  }
  /// Room for so many bytes, which count as written; null where less is left.
  char* Take(std::int64_t count) {
    if (length_ >= capacity_ || count > static_cast<std::int64_t>(capacity_ - length_)) return nullptr;
    char* const place = out_ + length_;
    length_ += static_cast<std::size_t>(count);
    return place;
  }
  template <class Value>
  void Print(const char* format, int width, int precision, Value value) {
    const std::size_t room = length_ < capacity_ ? capacity_ - length_ : 0;
    char* const place = room > 0 ? out_ + length_ : nullptr;
    int written = 0;
    if constexpr (std::is_same_v<Value, long double>) {
      written = SystemPrintLongDouble(place, room, format, width, precision, value);
    } else {
      written = SystemPrintf(place, room, format, width, precision, value);
    }
    if (written > 0) Count(static_cast<std::size_t>(written));
  }
  std::size_t Finish() {
    if (capacity_ > 0) out_[std::min(length_, capacity_ - 1)] = '\0';
    return length_;
  }

 private:
  void Count(std::size_t count) {
    length_ += std::min(count, std::numeric_limits<std::size_t>::max() - length_);
  }

  char* out_;
  std::size_t capacity_;
  std::size_t length_ = 0;
};

std::string GbkOfWide(const void* units, std::size_t count) {
  std::u16string text(count, u'\0');
  if (count > 0) std::memcpy(text.data(), units, count * sizeof(char16_t));
  return gbk::FromUtf16(text);
}

/// Writes one conversion after the other, each with an argument of known type. Texts and decimal
/// numbers, nearly all conversions in practice, are written here; the host system does the rest.
class Writer {
 public:
  Writer(Output& output, va_list arguments) : output_(output), arguments_(arguments) {}

  void Write(const char* format) {
    while (*format != '\0') {
      if (*format == '%') {
        format = Conversion(format);
      } else {
        // The second byte of a character is never a percent sign, so it goes along unseen.
        if (gbk::CharLength(format) == 2) output_.Put(*format++);
        output_.Put(*format++);
      }
    }
  }

 private:
  const char* Conversion(const char* percent) {
    const FormatConversion conversion = ReadConversion(percent + 1, arguments_);
    const int width = conversion.width;
    const int precision = conversion.hasPrecision ? conversion.precision : -1;
    if (!conversion.isKnown) {
      output_.Append({percent, static_cast<std::size_t>(conversion.next - percent)});
      return conversion.next;
    }
    switch (conversion.letter) {
      case '%':
        output_.Append("%");
        break;
      case '\0':
        break;
      case 'n':
        arguments_.Next<const void*>();
        break;  // never written through: that is a classic way in
      case 's':
      case 'S':
        Text(conversion, width, precision);
        break;
      case 'c':
      case 'C':
        Character(conversion, width);
        break;
      default:
        Number(conversion, width, precision);
        break;
    }
    return conversion.next;
  }

  void Text(const FormatConversion& conversion, int width, int precision) {
    const void* text = arguments_.Next<const void*>();
    const std::size_t limit =
        precision < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(precision);
    if (text && conversion.isWide) {
      Padded(conversion, width, GbkOfWide(text, WideLength(text, limit)));
    } else {
      const char* const bytes = text ? static_cast<const char*>(text) : "(null)";
      Padded(conversion, width, {bytes, precision < 0 ? std::strlen(bytes) : NarrowLength(bytes, limit)});
    }
  }

  void Character(const FormatConversion& conversion, int width) {
    const int value = arguments_.Next<int>();
    if (conversion.isWide) {
      const auto unit = static_cast<char16_t>(value);
      Padded(conversion, width, GbkOfWide(&unit, 1));
    } else {
      const auto byte = static_cast<char>(value);
      Padded(conversion, width, {&byte, 1});
    }
  }

  void Padded(const FormatConversion& conversion, int width, std::string_view text) {
    const bool isLeft = conversion.hasMinus || width < 0;
    const std::int64_t missing = Magnitude(width) - static_cast<std::int64_t>(text.size());
    if (!isLeft) output_.Fill(missing, conversion.hasZero ? kSystemPrintf.zeroFlagFill : ' ');
    output_.Append(text);
    if (isLeft) output_.Fill(missing, ' ');
  }

  void Number(const FormatConversion& conversion, int width, int precision) {
    switch (conversion.argument) {
      case FormatArgument::kNone:
        break;
      case FormatArgument::kInt:
        Integer(conversion, width, precision, arguments_.Next<int>());
        break;
      case FormatArgument::kLong:
        Integer(conversion, width, precision, arguments_.Next<long>());
        break;
      case FormatArgument::kLongLong:
        Integer(conversion, width, precision, arguments_.Next<long long>());
        break;
      case FormatArgument::kMax:
        Integer(conversion, width, precision, arguments_.Next<std::intmax_t>());
        break;
      case FormatArgument::kSize:
        BySystem(conversion, width, precision, arguments_.Next<std::size_t>());
        break;
      case FormatArgument::kDifference:
        Integer(conversion, width, precision, arguments_.Next<std::ptrdiff_t>());
        break;
      case FormatArgument::kDouble:
        BySystem(conversion, width, precision, arguments_.Next<double>());
        break;
      case FormatArgument::kLongDouble:
        BySystem(conversion, width, precision, arguments_.Next<long double>());
        break;
      case FormatArgument::kPointer:
        BySystem(conversion, width, precision, arguments_.Next<const void*>());
        break;
    }
  }

  template <class Value>
  void Integer(const FormatConversion& conversion, int width, int precision, Value value) {
    using Unsigned = std::make_unsigned_t<Value>;
    const bool isSigned = conversion.letter == 'd' || conversion.letter == 'i';
    const auto bits = static_cast<Unsigned>(value);
    bool isWritten = false;
    if (*conversion.prefix == 'h') {
      // Left to the host system, which cuts the value first.
    } else if (isSigned) {
      const char sign = value < 0 ? '-' : conversion.hasPlus ? '+' : conversion.hasBlank ? ' ' : '\0';
      isWritten = Decimal(conversion, width, precision, sign, value < 0 ? Unsigned{0} - bits : bits);
    } else if (conversion.letter == 'u') {
      isWritten = Decimal(conversion, width, precision, '\0', bits);
    }
    if (!isWritten) BySystem(conversion, width, precision, value);
  }

  /// False where the number does not fit in whole.
  template <class Unsigned>
  bool Decimal(const FormatConversion& conversion, int width, int precision, char sign, Unsigned magnitude) {
    char bytes[std::numeric_limits<Unsigned>::digits10 + 1];
    const char* const number = magnitude != 0 ? WriteDigits(std::end(bytes), magnitude) : std::end(bytes);
    const std::int64_t own = std::end(bytes) - number;
    std::int64_t digits = std::max<std::int64_t>(own, precision < 0 ? 1 : precision);
    const std::int64_t signs = sign != '\0' ? 1 : 0;
    const bool isLeft = conversion.hasMinus || width < 0;
    const std::int64_t wanted = Magnitude(width);
    const bool isZeroFilled = conversion.hasZero && precision <= kSystemPrintf.largestZeroFilled && !isLeft;
    if (isZeroFilled) digits = std::max(digits, wanted - signs);
    const std::int64_t whole = std::max(wanted, digits + signs);
    char* const begin = output_.Take(whole);
    if (!begin) return false;

    const std::int64_t blanks = whole - digits - signs;
    char* out = std::fill_n(begin, isLeft ? 0 : blanks, ' ');
    out = std::fill_n(out, signs, sign);
    out = std::fill_n(out, digits - own, '0');
    out = std::copy(number, std::cend(bytes), out);
    std::fill_n(out, isLeft ? blanks : 0, ' ');
    return true;
  }

  template <class Value>
  void BySystem(const FormatConversion& conversion, int width, int precision, Value value) {
    char format[16];
    char* end = format;
    *end++ = '%';
    if (conversion.hasMinus) *end++ = '-';
    if (conversion.hasPlus) *end++ = '+';
    if (conversion.hasBlank) *end++ = ' ';
    if (conversion.sharps > 0) *end++ = '#';
    if (conversion.hasZero) *end++ = '0';
    for (const char* part : {"*.*", conversion.prefix}) {
      while (*part != '\0') *end++ = *part++;
    }
    *end++ = conversion.letter == 'F' ? kSystemPrintf.capitalF : conversion.letter;
    *end = '\0';
    output_.Print(format, width, precision, value);
  }

  static std::int64_t Magnitude(int width) { return width < 0 ? -std::int64_t{width} : width; }

  Output& output_;
  FormatArguments arguments_;
};

}  // namespace

std::size_t FormatBounded(char* out, std::size_t capacity, const char* format, va_list arguments) {
  Output output(out, capacity);
  Writer(output, arguments).Write(format);
  return output.Finish();
}

std::string FormatWhole(const char* format, va_list arguments) {
  char small[256];
  FormatArguments again(arguments);
  const std::size_t length = FormatBounded(small, sizeof small, format, arguments);
  if (length < sizeof small) return std::string(small, length);
  std::string text(length, '\0');
  FormatBounded(text.data(), length + 1, format, again.list);
  return text;
}

}  // namespace zvuti
