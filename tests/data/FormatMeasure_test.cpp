#include "data/FormatMeasure.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>

namespace {

// Expects the room that a format with these arguments gets, in bytes.
void ExpectRoom(unsigned expected, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  EXPECT_EQ(zvuti::MeasureFormat(format, arguments).total, expected) << format;
  va_end(arguments);
}

const char* const kNull = nullptr;

TEST(FormatMeasure, GivesEachItemItsRoom) {
  ExpectRoom(197, "%.4d-%.2d-%.2d %.2d:%.2d:%.2d", 2013, 8, 29, 1, 2, 3);
  ExpectRoom(5, "ab\xB0\xA1%%");
  ExpectRoom(3, "%s", "abc");
  ExpectRoom(1, "%s", "");              // empty text
  ExpectRoom(6, "%s", kNull);           // null text
  ExpectRoom(5, "%5s", "abc");          // text in width
  ExpectRoom(2, "%.2s", "abc");         // text cut
  ExpectRoom(3, "%.5s", "abc");         // text shorter than its precision
  ExpectRoom(3, "%.0s", "abc");         // precision 0 cuts nothing
  ExpectRoom(7, "%*.*s", 7, 2, "abc");  // stars
  ExpectRoom(3, "%*s", -7, "abc");      // left star width gives no room
  ExpectRoom(2, "ab%.*s", -1, "abc");   // the precision -1 and a width of 0
  ExpectRoom(4, "%**s", 9, 4, "abc");   // two stars: the last is the width
  ExpectRoom(1, "%*5d", 3, 1);          // digits after a star are not a width: the 5 counts as a letter
  ExpectRoom(40, "%*40d", 0, 1);        // but those after a star of 0 are
  ExpectRoom(6, "%S%ls%lS", u"abc", u"de", u"\u4E2D");  // wide text
  ExpectRoom(2, "%.2S", u"abc");                        // wide text cut
  ExpectRoom(8, "%c%C%hc%lc", 'a', 'b', 'c', 'd');
  ExpectRoom(192, "%d%i%u%o%x%X", 1, 2, 3, 4, 5, 6);
  ExpectRoom(34, "%#x", 1);      // sharp
  ExpectRoom(40, "%20.20d", 1);  // width and precision add up
  ExpectRoom(96, "%I64d%lld%I64x", std::int64_t{1}, 2LL, std::int64_t{3});
  ExpectRoom(160, "%Fd%Ld%Nd%hd%ld", 1, 2, 3, 4, 5L);  // prefixes without meaning
  ExpectRoom(32, "%p", static_cast<const void*>(kNull));
  ExpectRoom(684, "%e%g%G%200.100e", 1.0, 1.0, 1.0, 1.0);  // exponent
  ExpectRoom(11, "%10.3f", 1.5);                           // fixed
  ExpectRoom(30, "%30f", -1.5);                            // fixed, wide
  ExpectRoom(5008, "%.5000f", 1.5);                        // fixed, many digits
  ExpectRoom(2, "a%nb", static_cast<int*>(nullptr));       // written count
  ExpectRoom(1, "%\x81%d", 1);                             // unknown letter of two bytes
  ExpectRoom(0, "%E", 1.5);                                // upper E has no room
  ExpectRoom(1, "%llu", 1ULL);                             // ll only before d
  ExpectRoom(3, "abc%");                                   // lone percent
  ExpectRoom(5, "abc%#5.2I64");                            // ends in a conversion
  ExpectRoom(136, "%Le%Lf", 1.0L, 1.0L);                   // long double
  ExpectRoom(3, "%hS", "abc");                             // narrow S
  ExpectRoom(2147483647, "%2147483647f", 1.0);             // wide without end
  ExpectRoom(2, "%I6d", 1);                                // half a prefix
  ExpectRoom(3, "\x81%d");                                 // percent as second byte
  // The total stops at the largest number.
  ExpectRoom(2147483647, "%2147483647d", 1);                              // large
  ExpectRoom(0xFFFFFFFF, "%2147483647d%2147483647d%d", 1, 2, 3);          // too large
  ExpectRoom(0xFFFFFFFF, "%2147483647.2147483647d%99999999999s", 1, "");  // far too large
}

TEST(FormatMeasure, DoesNotReadBeyondThePrecisionOfAText) {
  const char narrow[] = {'a', 'b'};
  const char16_t wide[] = {u'a', u'b'};
  ExpectRoom(4, "%.2s%.*S", narrow, 2, wide);
}

}  // namespace
