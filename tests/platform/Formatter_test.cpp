#include "platform/Formatter.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

#include "platform/SystemPrintf.h"

namespace {

std::string Formatted(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text = zvuti::FormatWhole(format, arguments);
  va_end(arguments);
  return text;
}

std::size_t Bounded(char* out, std::size_t capacity, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::size_t length = zvuti::FormatBounded(out, capacity, format, arguments);
  va_end(arguments);
  return length;
}

const std::int64_t kBig = -1234567890123;
const char* const kNull = nullptr;
const char16_t kWide[] = u"\u4E2D\u6587x";  // 中文x
constexpr char kGbk[] = "\xD6\xD0\xCE\xC4x";

TEST(Formatter, ReadsTheIntegerPrefixesOfThePlatform) {
  EXPECT_EQ(Formatted("%I64d %d", INT64_MIN, 7), "-9223372036854775808 7");
  EXPECT_EQ(Formatted("%+20I64i|%-20I64d|", -kBig, kBig), "      +1234567890123|-1234567890123      |");
  EXPECT_EQ(Formatted("%016I64x %I64X %I64o %I64u", kBig, kBig, std::int64_t{8}, kBig),
            "fffffee08e04fb35 FFFFFEE08E04FB35 10 18446742839141661493");
  EXPECT_EQ(Formatted("%*I64d %.*I64d", 4, std::int64_t{1}, 4, std::int64_t{-1}), "   1 -0001");
  EXPECT_EQ(Formatted("%I32d %I32u %3I32x", -5, 5, 10), "-5 5   a");
  EXPECT_EQ(Formatted("%Id %Iu %d", std::ptrdiff_t{-5}, std::size_t{6}, 7), "-5 6 7");
  EXPECT_EQ(Formatted("%%I64d %%%I64d%%", kBig), "%I64d %-1234567890123%");
  EXPECT_EQ(Formatted("%lld %5lld %ld %hd", static_cast<long long>(kBig), 3LL, 4L, 65537),
            "-1234567890123     3 4 1");
  EXPECT_EQ(Formatted("%Fd %Ls %Ld %F", 1, "two", 3, 0.5), "1 two 3 0.500000");
}

TEST(Formatter, WideTextHasSixteenBitUnitsAndBecomesGbk) {
  const std::string gbk = kGbk;
  EXPECT_EQ(Formatted("%S %ls %lS %d", kWide, kWide, kWide, 7), gbk + " " + gbk + " " + gbk + " 7");
  EXPECT_EQ(Formatted("%.1S|%6.2ls|%-6.2S|%*.*S", kWide, kWide, kWide, 3, 1, kWide),
            "\xD6\xD0|  \xD6\xD0\xCE\xC4|\xD6\xD0\xCE\xC4  | \xD6\xD0");
  EXPECT_EQ(Formatted("%C%lc%3C", 0x4E2D, 'x', 0x6587), "\xD6\xD0x \xCE\xC4");
  EXPECT_EQ(Formatted("%hs %hS %hc %hC", "a", "b", 'c', 'd'), "a b c d");
  EXPECT_EQ(Formatted("%s %S %.3s|%8.1ls|%-8s|", kNull, kNull, kNull, kNull, kNull),
            "(null) (null) (nu|       (|(null)  |");

  // A precision keeps the formatter from reading past the text.
  const char16_t unended[] = {u'a', u'b'};
  EXPECT_EQ(Formatted("%.2S", unended), "ab");
}

TEST(Formatter, StrangeFormatsAreHarmless) {
  int untouched = 7;
  EXPECT_EQ(Formatted("abc%"), "abc");
  EXPECT_EQ(Formatted("abc%I64"), "abc");
  EXPECT_EQ(Formatted("abc%*", 5), "abc");
  EXPECT_EQ(Formatted("a%nb%d", &untouched, 5), "ab5");
  EXPECT_EQ(Formatted("%5%%y%-3k%d%1$d", 5), "%%y%-3k5%1$d");
  EXPECT_EQ(Formatted("%d\x81%d%d", 1, 2), "1\x81%d2");  // 81 25 is one character
  EXPECT_EQ(Formatted("%\x81%d%d", 1), "%\x81%d1");
  EXPECT_EQ(Formatted("%d\x81", 1), "1\x81");
  EXPECT_EQ(Formatted("%*d|%-*d|%.*d|%*s|", -3, 1, 3, 2, -1, 3, -4, "ab"), "1  |2  |3|ab  |");
  EXPECT_EQ(Formatted("%99999999999999999999y"), "%99999999999999999999y");
  EXPECT_EQ(Formatted("%Nd %F", 1, 0.5), "1 0.500000");
  EXPECT_EQ(Formatted("%N"), "%N");
  EXPECT_EQ(Formatted("%jd %zu %td %Lf", std::intmax_t{1}, std::size_t{2}, std::ptrdiff_t{3}, 4.0L),
            "1 2 3 4.000000");
  EXPECT_EQ(untouched, 7);
}

TEST(Formatter, WritesNoMoreThanFitsAndCountsAll) {
  const char* const format = "%5d|%s|%-4.2d|%S|%.2f";
  const std::string whole = Formatted(format, 42, "text", 7, kWide, 1.5);
  EXPECT_EQ(whole, "   42|text|07  |" + std::string(kGbk) + "|1.50");
  for (std::size_t capacity = 0; capacity <= whole.size() + 3; ++capacity) {
    char out[64];
    std::memset(out, '#', sizeof out);
    ASSERT_EQ(Bounded(out, capacity, format, 42, "text", 7, kWide, 1.5), whole.size());
    EXPECT_TRUE(capacity == 0 || out == whole.substr(0, capacity - 1)) << capacity;
    ASSERT_EQ(out[capacity], '#');
  }
  EXPECT_EQ(Bounded(nullptr, 0, "%2147483647s%2147483646s", "", ""), std::size_t{4294967293});
  for (const std::size_t width : {255u, 256u, 300u})
    EXPECT_EQ(Formatted("%*d%s", static_cast<int>(width - 1), 1, "x"), std::string(width - 2, ' ') + "1x");
}

// Compares with the host system; `systemPrefix` is its name of the length modifier `prefix`.
template <class Value>
void ExpectLikeTheSystem(const std::string& head, const char* prefix, const char* systemPrefix,
                         std::string_view letters, Value value) {
  for (const char letter : letters) {
    const std::string end = std::string(1, letter) + ">%s";
    const auto format = [&](const char* before) {
      return std::string("<%").append(head).append(before).append(end);
    };
    char expected[2048];
    zvuti::SystemPrintf(expected, sizeof expected, format(systemPrefix).c_str(), value, "end");
    ASSERT_EQ(Formatted(format(prefix).c_str(), value, "end"), expected) << format(prefix);
  }
}

TEST(Formatter, AgreesWithTheSystemOnWhatBothKnow) {
  std::mt19937_64 random(3);
  for (int round = 0; round < 1000; ++round) {
    const auto sometimes = [&](unsigned one, const std::string& text) {
      return random() % one == 0 ? text : std::string();
    };
    const std::string left = sometimes(4, "-"), sharp = sometimes(3, "#");
    const std::string width = sometimes(2, std::to_string(1 + random() % 30));
    const std::string precision = sometimes(2, std::to_string(random() % 25));
    const std::string digits = width + sometimes(2, std::string(".").append(precision));
    const std::string flags =
        std::string(left).append(sometimes(4, "+")).append(sometimes(4, " ")).append(sometimes(2, "0"));
    const std::string plain = flags + digits, sharpened = sharp + plain, percent = "%" + plain;
    const std::uint64_t bits = random() >> (random() % 64);
    const auto number = static_cast<std::int64_t>(random() % 2 == 0 ? bits : ~bits);
    const double value = static_cast<double>(number) / 1024;

    ExpectLikeTheSystem(plain, "", "", "diu", static_cast<int>(number));
    ExpectLikeTheSystem(sharpened, "h", "h", "xXo", static_cast<int>(number));
    ExpectLikeTheSystem(plain, "l", "l", "diuxXo", static_cast<long>(number));
    ExpectLikeTheSystem(plain, "ll", zvuti::kSystemPrintf.longLong, "diuxXo", static_cast<long long>(number));
    ExpectLikeTheSystem(sharpened, "", "", "eEfgGaA", value);
    ExpectLikeTheSystem(left + digits, "", "", "s", std::to_string(bits).c_str());
    ExpectLikeTheSystem(left + width, "", "", "c", static_cast<int>('a' + bits % 26));
    ExpectLikeTheSystem(left + width, "", "", "p", static_cast<const void*>(&bits));
    ASSERT_EQ(Formatted((percent + "Lf").c_str(), static_cast<long double>(value)),
              Formatted((percent + "f").c_str(), value));
  }
}

}  // namespace
