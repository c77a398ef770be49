#include "data/FormatMeasure.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>

namespace {

zvuti::FormatMeasure Measured(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const zvuti::FormatMeasure measure = zvuti::MeasureFormat(format, arguments);
  va_end(arguments);
  return measure;
}

const char* const kNull = nullptr;

TEST(FormatMeasure, GivesEachItemItsRoom) {
  const struct {
    const char* what;
    zvuti::FormatMeasure measure;
    unsigned expected;
  } rows[] = {
      {"date", Measured("%.4d-%.2d-%.2d %.2d:%.2d:%.2d", 2013, 8, 29, 1, 2, 3), 197},
      {"literal", Measured("ab\xB0\xA1%%"), 5},
      {"text", Measured("%s", "abc"), 3},
      {"empty text", Measured("%s", ""), 1},
      {"null text", Measured("%s", kNull), 6},
      {"text in width", Measured("%5s", "abc"), 5},
      {"text cut", Measured("%.2s", "abc"), 2},
      {"text shorter than its precision", Measured("%.5s", "abc"), 3},
      {"precision 0 cuts nothing", Measured("%.0s", "abc"), 3},
      {"stars", Measured("%*.*s", 7, 2, "abc"), 7},
      {"left star width gives no room", Measured("%*s", -7, "abc"), 3},
      {"negative star precision", Measured("ab%.*s", -1, "abc"), 2},  // -1, then the width of 0
      {"two stars: the last is the width", Measured("%**s", 9, 4, "abc"), 4},
      {"digits behind a star are no width", Measured("%*5d", 3, 1), 1},  // the 5 is taken for a letter
      {"digits behind a star of 0 are", Measured("%*40d", 0, 1), 40},
      {"wide text", Measured("%S%ls%lS", u"abc", u"de", u"\u4E2D"), 6},
      {"wide text cut", Measured("%.2S", u"abc"), 2},
      {"character", Measured("%c%C%hc%lc", 'a', 'b', 'c', 'd'), 8},
      {"integers", Measured("%d%i%u%o%x%X", 1, 2, 3, 4, 5, 6), 192},
      {"sharp", Measured("%#x", 1), 34},
      {"width and precision add up", Measured("%20.20d", 1), 40},
      {"64 bits", Measured("%I64d%lld%I64x", std::int64_t{1}, 2LL, std::int64_t{3}), 96},
      {"prefixes without meaning", Measured("%Fd%Ld%Nd%hd%ld", 1, 2, 3, 4, 5L), 160},
      {"pointer", Measured("%p", static_cast<const void*>(kNull)), 32},
      {"exponent", Measured("%e%g%G%200.100e", 1.0, 1.0, 1.0, 1.0), 684},
      {"fixed", Measured("%10.3f", 1.5), 11},
      {"fixed, wide", Measured("%30f", -1.5), 30},
      {"fixed, many digits", Measured("%.5000f", 1.5), 5008},
      {"written count", Measured("a%nb", static_cast<int*>(nullptr)), 2},
      {"unknown letter of two bytes", Measured("%\x81%d", 1), 1},
      {"upper E has no room", Measured("%E", 1.5), 0},
      {"ll only before d", Measured("%llu", 1ULL), 1},
      {"lone percent", Measured("abc%"), 3},
      {"ends in a conversion", Measured("abc%#5.2I64"), 5},
      {"flags", Measured("%-+ 05d", 1), 32},
      {"left width of a float", Measured("%*f", -12, 1.0), 12},
      {"long double", Measured("%Le%Lf", 1.0L, 1.0L), 136},
      {"narrow S", Measured("%hS", "abc"), 3},
      {"wide without end", Measured("%2147483647f", 1.0), 2147483647},
      {"half a prefix", Measured("%I6d", 1), 2},
      {"percent as second byte", Measured("\x81%d"), 3},
      // What has no room is passed over, so that the text behind it is found.
      {"E passed over", Measured("%E%s", 1.5, "abc"), 3},
      {"llu passed over", Measured("%llu%s", 1ULL, "abc"), 4},
      {"sizes passed over",
       Measured("%zu%td%jd%hhd%s", std::size_t{1}, std::ptrdiff_t{2}, std::intmax_t{3}, 4, "abc"), 7},
      {"I and I32 passed over", Measured("%Id%I32d%s", std::ptrdiff_t{1}, 2, "abc"), 7},
      {"stars passed over", Measured("%*.*E%s", 5, 1, 1.5, "abc"), 3},
      {"LE passed over", Measured("%LE%s", 1.5L, "abc"), 3},
      {"n and F passed over", Measured("%n%F,%s", static_cast<int*>(nullptr), 1.5, "abc"), 3},
      // The total stops at the largest number.
      {"large", Measured("%2147483647d", 1), 2147483647},
      {"too large", Measured("%2147483647d%2147483647d%d", 1, 2, 3), 0xFFFFFFFF},
      {"far too large", Measured("%2147483647.2147483647d%99999999999s", 1, ""), 0xFFFFFFFF},
  };
  for (const auto& row : rows) EXPECT_EQ(row.measure.total, row.expected) << row.what;
}

TEST(FormatMeasure, NeverLooksBehindATextThatAPrecisionCuts) {
  const char narrow[] = {'a', 'b'};
  const char16_t wide[] = {u'a', u'b'};
  EXPECT_EQ(Measured("%.2s%.*S", narrow, 2, wide).total, 4u);
}

TEST(FormatMeasure, NotesLongLongOnlyDirectlyBeforeD) {
  EXPECT_TRUE(Measured("%lld", 1LL).hasLongLong);
  EXPECT_TRUE(Measured("%5lld", 1LL).hasLongLong);
  EXPECT_FALSE(Measured("%llu%I64d%%lld", 1ULL, std::int64_t{2}).hasLongLong);
}

}  // namespace
