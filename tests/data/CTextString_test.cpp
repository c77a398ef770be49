#include <ZvUtiLib/data/CTextString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

#include "gbk/CodePage936.h"
#include "tests/support/Order.h"
#include "tests/support/RefuseEach.h"

namespace {

using testing::AnyOf;

std::string Text(const CTextString& text) { return std::string(std::string_view(text)); }

TEST(CTextString, NullIsEmptyAndOrderIsThatOfUnsignedBytes) {
  const char* null = nullptr;
  EXPECT_TRUE(CTextString(null).empty());
  CTextString text("abc");
  EXPECT_EQ(text == null, false);
  text = null;
  EXPECT_STREQ(text.c_str(), "");
  EXPECT_EQ(test::OrderOf(CTextString("a"), CTextString("\x80")), -1);
  EXPECT_EQ(test::OrderOf(CTextString("ab"), CTextString("a")), 1);
  EXPECT_EQ(test::OrderOf(CTextString("a"), CTextString("a")), 0);
}

TEST(CTextString, PositionsAndLengthsOutOfRangeThrowAndChangeNothing) {
  CTextString text("abc");
  EXPECT_THROW(text.erase(4, 0), std::out_of_range);
  EXPECT_THROW(text.replace(4, 0, "x", 1), std::out_of_range);
  EXPECT_THROW(CTextString().assign(text, 4, 0), std::out_of_range);
  EXPECT_THROW(text.append(0xFFFFFFFC, 'x'), std::length_error);
  EXPECT_THROW(text.ResizeBuffer(0xFFFFFFFF), std::length_error);
  EXPECT_THROW(text.replace(1, 1, "x", 0xFFFFFFFD), std::length_error);
  EXPECT_EQ(text, "abc");
  EXPECT_EQ(text.find("", 3), 3u);
  EXPECT_EQ(text.find("", 4), CTextString::npos);
  EXPECT_EQ(text.find("cd", 0, 1), 2u);
  EXPECT_EQ(text.find("abc", 1), 0xFFFFFFFFu);
  EXPECT_EQ(text.find("x", 0, 1), CTextString::npos);
}

TEST(CTextString, ReplaceAllTakesTextsFromInsideAndReplacesNoEmptyOne) {
  CTextString text("xbxb-xb");
  EXPECT_EQ(text.ReplaceAll("", "y"), 0u);
  EXPECT_EQ(text.ReplaceAll(text.c_str() + 5, text.c_str()), 3u);
  EXPECT_EQ(text, "xbxb-xbxbxb-xb-xbxb-xb");
  EXPECT_EQ(text.ReplaceAll("xbx", nullptr), 3u);
  EXPECT_EQ(text, "b-bxb-xb-b-xb");
}

TEST(CTextString, FormatKeepsTheMeasuredRoom) {
  CTextString text;
  text.Format("%d", 5);
  EXPECT_EQ(text.capacity(), 47u);  // an integer measures 32 bytes
  CTextString held("a text that is longer than what is measured");
  const unsigned capacity = held.capacity();
  held.Format("%d", 5);
  EXPECT_EQ(held, "5");
  EXPECT_EQ(held.capacity(), capacity);
  held.Format("%s", "");
  EXPECT_TRUE(held.empty());
  EXPECT_THROW(text.Format("%2147483647d%2147483647d%d", 1, 2, 3), std::length_error);
  EXPECT_EQ(text, "5");
}

TEST(CTextString, FormatTakesTextsAndTheStringItself) {
  CTextString text("long enough for a block of its own");
  const CTextString before = text;
  text.Format("%s %300s", std::string("a"), text);  // grows after it was read
  EXPECT_EQ(Text(text), "a " + std::string(300 - before.size(), ' ') + Text(before));
  text.Format("%.1s%d", text, 7);
  EXPECT_EQ(text, "a7");
  CTextString inside("inside");  // where a longer text keeps the address of its block
  inside.Format("%s %300s", "a", inside);
  EXPECT_EQ(Text(inside), "a " + std::string(294, ' ') + "inside");
}

void ExpectFormat(const std::string& expected, const char* format, ...) {
  CTextString text;
  va_list arguments;
  va_start(arguments, format);
  text.FormatV(format, arguments);
  va_end(arguments);
  EXPECT_EQ(Text(text), expected) << format;
}

// Where measuring and writing took different arguments, a number would be read as the address of a text.
TEST(CTextString, FormatMeasuresAndWritesTheSameArguments) {
  const std::string wide(40, 'x');
  const std::u16string ideographs(100, u'\u4E2D');
  ExpectFormat("-1234567890123 5     7|%", "%lld %I64d %5lld|%%", -1234567890123LL, std::int64_t{5}, 7LL);
  ExpectFormat("%I64d 1", "%%lld %lld", 1LL);  // rewriting does not know that %% stands for itself
  ExpectFormat("%lld 1", "%%lld %llu", 1ULL);
  ExpectFormat("ab", "ab%cd", 0);  // a zero byte ends the text
  // The measure is too small.
  ExpectFormat(zvuti::gbk::FromUtf16(ideographs), "%S", ideographs.c_str());
  ExpectFormat(wide + std::string(10, ' ') + "|3" + std::string(399, ' '), "%-*s|%*d", -50, wide.c_str(),
               -400, 3);
  // Malformed conversions.
  ExpectFormat("1.5000007 abc", "%F%d %s", 1.5, 7, "abc");
  ExpectFormat("1.500000,abc", "%F,%s", 1.5, "abc");
  ExpectFormat("1.5000007abc", "%hF%d%s", 1.5, 7, "abc");
  ExpectFormat("1.500000F7abc", "%FF%d%s", 1.5, 7, "abc");
  ExpectFormat("%L7 abc", "%L%d %s", 7, "abc");
  ExpectFormat("%N7 abc", "%N%d %s", 7, "abc");
  ExpectFormat("%NF7abc", "%NF%d%s", 7, "abc");
  ExpectFormat("%z7 abc", "%z%d %s", 7, "abc");
  ExpectFormat("%zl7 abc", "%zl%d %s", 7, "abc");
  ExpectFormat("%z\x81%d abc", "%z\x81%d %s", "abc");  // 81 25 is one character
  ExpectFormat("%I7 abc", "%I%d %s", 7, "abc");
  ExpectFormat("%-5.3I647 abc", "%-5.3I64%d %s", 7, "abc");
  ExpectFormat("%*.*l7abc", "%*.*l%lld%s", 1, 2, 7LL, "abc");
  ExpectFormat("%7 abc", "%5%%d %s", 7, "abc");
  ExpectFormat("  abc|", "%**s|", 9, 5, "abc");
  ExpectFormat("7     abc", "%*-5d %s", 0, 7, "abc");
  ExpectFormat("    7 abc", "%*5d %s", 0, 7, "abc");
  ExpectFormat("%*5d abc", "%*5d %s", 3, "abc");
  ExpectFormat("%5*d abc", "%5*d %s", "abc");
  ExpectFormat("abc", "%I64s%s", "a", "bc");
  ExpectFormat("1099511627776abc", "%I64Ld%s", std::int64_t{1} << 40, "abc");
  ExpectFormat("7abc", "%lLd%s", 7L, "abc");
}

TEST(CTextString, FormatSurvivesEveryRefusedBlock) {
  const std::u16string ideographs(300, u'\u4E2D');
  const CTextString before("what was there before");
  test::RefuseEachOf<CTextString>(
      "format", test::AfterRefusal::kUsable, [&](CTextString& text) { text = before; },
      [&](CTextString& text) { text.Format("more than fifteen bytes %lld %S", 1LL, ideographs.c_str()); },
      [&](CTextString& text) {
        EXPECT_THAT(text.size(), AnyOf(0, before.size(), 24u + 2 + 600));
        EXPECT_EQ(text.c_str()[text.size()], '\0');
        return Text(text);
      });
}

unsigned ExpectedCapacity(unsigned needed, unsigned old) {
  if (needed <= old) return old;
  const unsigned next = (needed / 16) * 16 + 15;
  return next / 3 < old / 2 ? old + old / 2 : next;
}

// Returns the number of replacements, each of which may make the capacity grow.
unsigned ReplaceOneByOne(std::string& text, const std::string& oldText, const std::string& newText,
                         unsigned& capacity) {
  unsigned count = 0;
  for (std::size_t at = 0; (at = text.find(oldText, at)) != std::string::npos;
       at += newText.size(), ++count) {
    text.replace(at, oldText.size(), newText);
    capacity = ExpectedCapacity(static_cast<unsigned>(text.size()), capacity);
  }
  return count;
}

// Up to 15 bytes lie in the string itself, more in a sized block of capacity + 1 bytes.
void ExpectSoundStorage(const CTextString& text) {
  const char* const object = reinterpret_cast<const char*>(&text);
  const bool isInside = text.data() >= object && text.data() < object + sizeof text;
  ASSERT_EQ(isInside, text.capacity() == 15);
  std::uint32_t blockSize = 16;
  if (!isInside) std::memcpy(&blockSize, text.data() - 4, 4);
  ASSERT_EQ(blockSize, text.capacity() + 1);
  ASSERT_EQ(text.c_str()[text.size()], '\0');
}

// Also with texts from inside the string.
TEST(CTextString, BehavesLikeTheStandardStringThroughRandomSteps) {
  std::mt19937 random(42);
  const auto below = [&](std::size_t limit) { return static_cast<unsigned>(random() % limit); };
  const std::string foreign = "The quick brown fox jumps over the lazy dog, dog or frog.";
  CTextString text;
  std::string model;
  for (int round = 0; round < 60'000; ++round) {
    if (model.size() > 700) {
      text = CTextString();
      model.clear();
    }
    const std::string_view from = below(2) == 0 ? std::string_view(text) : foreign;
    const unsigned kind = below(9), position = below(model.size() + 1), count = below(2 * model.size() + 2);
    const unsigned at = below(from.size() + 1), length = below(from.size() - at + 1);
    const auto step = [&](auto& string, const char* source) {
      if (kind == 0) string.assign(source, length);
      if (kind == 1) string.append(source, length);
      if (kind == 2) string.replace(position, count, source, length);
      if (kind == 3) string.erase(position, count);
      if (kind == 4) string.assign(string, position, count);
      if (kind == 5) string.append(count, 'x');
      if (kind == 6) string = *&string;
    };
    const std::string source(from, at, length);  // a copy, because `from` may lie in the text
    step(model, source.c_str());
    unsigned capacity = text.capacity();  // before each replacement
    step(text, from.data() + at);
    if (kind == 7) {
      text.ResizeBuffer(count);
      model.resize(count);
    }
    if (kind == 8) {
      const std::string added = source.substr(0, source.find('\0'));
      ASSERT_EQ(text.ReplaceAll("og", added.c_str()), ReplaceOneByOne(model, "og", added, capacity));
    }
    ASSERT_EQ(Text(text), model) << round;
    ASSERT_EQ(text.capacity(), ExpectedCapacity(text.size(), capacity));
    ASSERT_NO_FATAL_FAILURE(ExpectSoundStorage(text));
    const CTextString copy(text);
    ASSERT_EQ(CTextString(CTextString(copy)), text);
    ASSERT_EQ(text.find("o", position), static_cast<unsigned>(model.find('o', position)));
  }
}

}  // namespace
