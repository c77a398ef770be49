#include <ZvUtiLib/data/CTextString.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

#include "tests/support/HeapFaults.h"
#include "tests/support/RefuseEach.h"

namespace {

using namespace std::string_literals;

std::string Text(const CTextString& text) { return std::string(std::string_view(text)); }

/// Capacity as the growth rule says, written without a shortcut.
unsigned ExpectedCapacity(unsigned needed, unsigned old) {
  if (needed <= old) return old;
  const unsigned next = (needed / 16) * 16 + 15;
  return next / 3 < old / 2 ? old + old / 2 : next;
}

TEST(CTextString, ShortTextsNeedNoHeapAndLongerOnesOneBlock) {
  const std::int64_t live = test::LiveBlocks();
  {
    const test::HeapFaults faults(0);
    CTextString text("123456789012345");
    text.replace(3, 5, "abcde", 5);
    EXPECT_EQ(faults.Tried(), 0);
    text.append(1, 'x');
    EXPECT_EQ(faults.Tried(), 1);
    EXPECT_EQ(text.capacity(), 31u);
    text.erase(2, 100);
    EXPECT_EQ(text, "12");
    EXPECT_EQ(text.capacity(), 31u);  // a block once taken is kept
    std::uint32_t size = 0;
    std::memcpy(&size, text.data() - 4, 4);
    EXPECT_EQ(size, 32u);
  }
  EXPECT_EQ(test::LiveBlocks(), live);
}

TEST(CTextString, NullIsEmptyAndOrderIsThatOfUnsignedBytes) {
  const char* null = nullptr;
  EXPECT_TRUE(CTextString(null).empty());
  CTextString text("abc");
  EXPECT_EQ(text == null, false);
  text = null;
  EXPECT_STREQ(text.c_str(), "");
  EXPECT_LT(CTextString("a"), CTextString("\x80"));
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
}

TEST(CTextString, ReplaceAllEqualsReplacingOneByOne) {
  std::mt19937 random(7);
  const auto word = [&](unsigned most) {
    std::string text(random() % (most + 1), ' ');
    for (char& byte : text) byte = static_cast<char>('a' + random() % 2);
    return text;
  };
  for (int round = 0; round < 3000; ++round) {
    const std::string start = word(60);
    const std::string oldText = word(2) + "a";
    const std::string newText = word(5);
    CTextString text{std::string_view(start)};
    CTextString model = text;
    unsigned count = 0;
    for (unsigned at = 0; (at = model.find(oldText.c_str(), at)) != CTextString::npos; ++count) {
      model.replace(at, static_cast<unsigned>(oldText.size()), newText.c_str(),
                    static_cast<unsigned>(newText.size()));
      at += static_cast<unsigned>(newText.size());
    }
    ASSERT_EQ(text.ReplaceAll(oldText.c_str(), newText.c_str()), count);
    ASSERT_EQ(text, model) << start << " " << oldText << " " << newText;
    ASSERT_EQ(text.capacity(), model.capacity());
  }
}

TEST(CTextString, FormatKeepsTheMeasuredRoom) {
  CTextString text;
  text.Format("%.4d-%.2d-%.2d %.2d:%.2d:%.2d", 2013, 8, 29, 1, 2, 3);
  EXPECT_EQ(text, "2013-08-29 01:02:03");
  EXPECT_EQ(text.capacity(), 207u);  // 197 measured

  CTextString held("a text that is longer than what is measured");
  const unsigned capacity = held.capacity();
  held.Format("%d", 5);
  EXPECT_EQ(held, "5");
  EXPECT_EQ(held.capacity(), capacity);
  held.Format("%s", "");
  EXPECT_TRUE(held.empty());
}

TEST(CTextString, FormatOfLongLong) {
  CTextString text;
  text.Format("%lld %I64d %5lld|%%", -1234567890123LL, std::int64_t{1234567890123}, 7LL);
  EXPECT_EQ(text, "-1234567890123 1234567890123     7|%");
  text.Format("%%lld %lld", 1LL);  // the rewriting knows no percent signs that stand for themselves
  EXPECT_EQ(text, "%I64d 1");
}

TEST(CTextString, FormatGrowsWhereTheMeasureIsTooSmall) {
  const std::string wide(40, 'x');
  const std::u16string ideographs(100, u'\u4E2D');
  CTextString text;
  text.Format("%E %S", 1.5, ideographs.c_str());
  EXPECT_EQ(text.size() - text.find(" ", 0, 1), 1u + 200);  // exponents have two or three digits
  text = CTextString();
  text.Format("%-*s|%*d", -50, wide.c_str(), -400, 3);
  EXPECT_EQ(text.size(), 50u + 1 + 400);
  text.Format("ab%cd", 0);
  EXPECT_EQ(Text(text), "ab");  // a zero byte ends the text
  EXPECT_THROW(text.Format("%2147483647d%2147483647d%d", 1, 2, 3), std::length_error);
  EXPECT_EQ(text, "ab");
}

TEST(CTextString, FormatTakesTextsAndTheStringItself) {
  CTextString text("long enough for a block of its own");
  const CTextString before = text;
  text.Format("%s %300s", std::string("a"), text);  // grows behind what it reads
  EXPECT_EQ(Text(text), "a " + std::string(300 - before.size(), ' ') + Text(before));
  text.Format("%.1s%d", text, 7);
  EXPECT_EQ(text, "a7");
}

CTextString Formatted(const char* format, ...) {
  CTextString text;
  va_list arguments;
  va_start(arguments, format);
  text.FormatV(format, arguments);
  va_end(arguments);
  return text;
}

// A pass that took one argument more or less than the other would read a number as the address of a text.
TEST(CTextString, MeasuringAndWritingTakeTheSameArgumentsForMalformedHeads) {
  const struct {
    CTextString text;
    const char* expected;
  } rows[] = {
      {Formatted("%F%d %s", 1.5, 7, "abc"), "1.5000007 abc"},
      {Formatted("%F,%s", 1.5, "abc"), "1.500000,abc"},
      {Formatted("%hF%d%s", 1.5, 7, "abc"), "1.5000007abc"},
      {Formatted("%FF%d%s", 1.5, 7, "abc"), "1.500000F7abc"},
      {Formatted("%L%d %s", 7, "abc"), "%L7 abc"},
      {Formatted("%N%d %s", 7, "abc"), "%N7 abc"},
      {Formatted("%NF%d%s", 7, "abc"), "%NF7abc"},
      {Formatted("%z%d %s", 7, "abc"), "%z7 abc"},
      {Formatted("%zl%d %s", 7, "abc"), "%zl7 abc"},
      {Formatted("%z\x81%d %s", "abc"), "%z\x81%d abc"},  // 81 25 is one character
      {Formatted("%I%d %s", 7, "abc"), "%I7 abc"},
      {Formatted("%-5.3I64%d %s", 7, "abc"), "%-5.3I647 abc"},
      {Formatted("%*.*l%lld%s", 1, 2, 7LL, "abc"), "%*.*l7abc"},
      {Formatted("%5%%d %s", 7, "abc"), "%7 abc"},
      {Formatted("%**s|", 9, 5, "abc"), "  abc|"},
      {Formatted("%*-5d %s", 0, 7, "abc"), "7     abc"},
      {Formatted("%*5d %s", 0, 7, "abc"), "    7 abc"},
      {Formatted("%*5d %s", 3, "abc"), "%*5d abc"},
      {Formatted("%5*d %s", "abc"), "%5*d abc"},
      {Formatted("%I64s%s", "a", "bc"), "abc"},
      {Formatted("%I64Ld%s", std::int64_t{1} << 40, "abc"), "1099511627776abc"},
      {Formatted("%lLd%s", 7L, "abc"), "7abc"},
  };
  for (const auto& row : rows) EXPECT_EQ(Text(row.text), row.expected);
}

TEST(CTextString, FormatSurvivesEveryRefusedBlock) {
  const std::u16string ideographs(300, u'\u4E2D');
  const CTextString before("what was there before");
  test::RefuseEachOf<CTextString>(
      "format", test::AfterRefusal::kUsable, [&](CTextString& text) { text = before; },
      [&](CTextString& text) {
        text.Format("a format of more than fifteen bytes %lld %S", 1LL, ideographs.c_str());
      },
      [&](CTextString& text) {
        EXPECT_EQ(text.c_str()[text.size()], '\0');
        if (text.capacity() == before.capacity()) {
          EXPECT_EQ(text, before);
        } else {
          EXPECT_TRUE(text.empty() || text.size() == 36u + 2 + 600);
        }
        return Text(text);
      });
}

struct Step {
  unsigned kind, position, count;
  const char* source;
  unsigned length;
};

template <class String>
void Take(const Step& step, String& text) {
  if (step.kind == 0) text.assign(step.source, step.length);
  if (step.kind == 1) text.append(step.source, step.length);
  if (step.kind == 2) text.replace(step.position, step.count, step.source, step.length);
  if (step.kind == 3) text.erase(step.position, step.count);
  if (step.kind == 4) text.assign(text, step.position, step.count);
  if (step.kind == 5) text.append(step.count, 'x');
  if (step.kind == 6) text = *&text;
  if (step.kind == 7) {
    if constexpr (std::is_same_v<String, CTextString>) {
      text.ResizeBuffer(step.count);
    } else {
      text.resize(step.count);
    }
  }
}

/// Takes the same random steps with a string and a std::string, with texts from inside the string,
/// too, and refuses a block now and then.
TEST(CTextString, BehavesLikeTheStandardStringThroughRandomSteps) {
  std::mt19937 random(42);
  const auto below = [&](std::size_t limit) { return static_cast<unsigned>(random() % limit); };
  const std::string foreign = "The quick brown fox jumps over the lazy dog, again and again and again.";
  const std::int64_t live = test::LiveBlocks();
  CTextString text;
  std::string model;
  for (int round = 0; round < 60'000; ++round) {
    if (model.size() > 700) {
      text = CTextString();
      model.clear();
    }
    const std::string_view from = below(2) == 0 ? std::string_view(text) : foreign;
    const unsigned at = below(from.size() + 1);
    const Step step{below(8), below(model.size() + 1), below(2 * model.size() + 2), from.data() + at,
                    below(from.size() - at + 1)};
    const unsigned capacity = text.capacity();
    std::string expected = model;
    const std::string source(step.source, step.length);
    Take({step.kind, step.position, step.count, source.c_str(), step.length}, expected);
    try {
      const test::HeapFaults faults(below(4) == 0 ? 1 : 0);
      Take(step, text);
      model.swap(expected);
      ASSERT_EQ(text.capacity(), ExpectedCapacity(text.size(), capacity));
    } catch (const std::bad_alloc&) {
      ASSERT_EQ(text.capacity(), capacity);
    }
    ASSERT_EQ(Text(text), model) << round;
    ASSERT_EQ(text.c_str()[text.size()], '\0');
    const CTextString copy(text);
    ASSERT_EQ(CTextString(CTextString(copy)), text);
    ASSERT_EQ(text.find("o", step.position), static_cast<unsigned>(model.find('o', step.position)));
  }
  text = CTextString();
  std::string().swap(model);
  EXPECT_EQ(test::LiveBlocks(), live);
}

}  // namespace
