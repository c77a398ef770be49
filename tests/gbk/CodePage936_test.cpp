#include "gbk/CodePage936.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace std::string_literals;
namespace gbk = zvuti::gbk;

TEST(CodePage936, StepsOverEveryPairOfBytesAndEncodesBackWhatItDecodes) {
  for (int lead = 0; lead < 256; ++lead) {
    for (int trail = 0; trail < 256; ++trail) {
      const char text[] = {static_cast<char>(lead), static_cast<char>(trail), 'x', '\0'};
      const std::string_view both(text, 2);
      const bool isPair = lead >= 0x81 && lead <= 0xFE && trail != 0;
      ASSERT_EQ(gbk::CharLength(text), isPair ? 2u : 1u) << lead << " " << trail;
      ASSERT_EQ(gbk::CharLength(both, 0), gbk::CharLength(text)) << lead << " " << trail;
      ASSERT_EQ(gbk::CharLength(both.substr(0, 1), 0), 1u);
      const std::u16string units = gbk::ToUtf16(both);
      ASSERT_EQ(units.size(), isPair ? 1u : 2u) << lead << " " << trail;
      if (isPair && units != u"?") {
        ASSERT_EQ(gbk::FromUtf16(units), both) << lead << " " << trail;
      }
    }
  }
}

TEST(CodePage936, CutsAfterAWholeCharacter) {
  const std::string text = "a\xB0\xA1\x62\xB0\xA1";
  const std::size_t kept[] = {0, 1, 1, 3, 4, 4, 6, 6};
  for (std::size_t limit = 0; limit < std::size(kept); ++limit) {
    EXPECT_EQ(gbk::CutWhole(text, limit), text.substr(0, kept[limit])) << limit;
  }
  EXPECT_EQ(gbk::CutWhole("ab\xB0", 2), "ab");
}

TEST(CodePage936, FindsOnlyWhereACharacterBegins) {
  constexpr auto kNone = std::string::npos;
  EXPECT_EQ(gbk::Find("\x81\x41\x62", "A", 0), kNone);  // A is a trail byte here
  EXPECT_EQ(gbk::Find("\x81\x41\x62", "b", 0), 2u);
  EXPECT_EQ(gbk::Find("\xB0\xA1\xA1\xB0", "\xA1\xA1", 0), kNone);
  EXPECT_EQ(gbk::Find("\x81\x41", "\x81", 0), 0u);  // bytes are compared, not characters
  EXPECT_EQ(gbk::Find("\x81\x41", "A", 1), 1u);     // stepping begins at the start index
  EXPECT_EQ(gbk::Find("abc", "", 3), 3u);
  EXPECT_EQ(gbk::Find("abc", "", 4), kNone);
  EXPECT_EQ(gbk::Find("abc", "abcd", 0), kNone);
}

TEST(CodePage936, FoldsLettersButNoTrailBytes) {
  std::string text = "az{\x81z\xA3\xE1z\x81 z\x80z\xFFz\x81";
  gbk::FoldToUpper(text.data(), text.size());
  EXPECT_EQ(text, "AZ{\x81z\xA3\xE1Z\x81 Z\x80Z\xFFZ\x81");
  gbk::FoldToLower(text.data(), text.size());
  EXPECT_EQ(text, "az{\x81z\xA3\xE1z\x81 z\x80z\xFFz\x81");
}

TEST(CodePage936, ConvertsRunsOfAnyLengthBothWays) {
  const struct {
    std::string bytes;
    std::u16string units;
    std::string utf8;
  } cases[] = {
      {"\xD6\xD0\xCE\xC4\x80", u"\u4E2D\u6587\u20AC", "\xE4\xB8\xAD\xE6\x96\x87\xE2\x82\xAC"},
      {"\xFF\xAA\xA1", u"\uF8F5\uE000", "\xEF\xA3\xB5\xEE\x80\x80"},
      {"\x81\x40\xFE\xFE", u"\u4E02\uE4C5", "\xE4\xB8\x82\xEE\x93\x85"},
      {"a\0b"s, u"a\0b"s, "a\0b"s},
  };
  for (std::size_t length = 0; length < 400; ++length) {
    const std::size_t before = length / 20, after = length % 20;
    const auto between = [&](const std::string& middle) {
      return std::string(before, 'x').append(middle).append(after, 'y');
    };
    bool isWhole = false;
    for (const auto& c : cases) {
      const std::string bytes = between(c.bytes), utf8 = between(c.utf8);
      const std::u16string units = std::u16string(before, u'x') + c.units + std::u16string(after, u'y');
      ASSERT_EQ(gbk::ToUtf16(bytes), units);
      ASSERT_EQ(gbk::FromUtf16(units), bytes);
      ASSERT_EQ(gbk::Utf8ToUtf16(utf8), units);
      ASSERT_EQ(gbk::Utf16ToUtf8(units), utf8);
      ASSERT_EQ(gbk::ToUtf8(bytes, &isWhole), utf8);
      ASSERT_TRUE(isWhole);
      ASSERT_EQ(gbk::FromUtf8(utf8), bytes);
    }
    ASSERT_EQ(gbk::ToUtf8(between("\x81\x7F"), &isWhole), between("?"));
    ASSERT_FALSE(isWhole);
    isWhole = true;
    gbk::ToUtf8(std::string(before, 'x') + "\x81", &isWhole);
    ASSERT_FALSE(isWhole);
  }
}

TEST(CodePage936, DirectConversionsFromAndToUtf8AgreeWithThoseThroughUtf16) {
  std::minstd_rand random(936);
  const std::string bytes = "aZ\x80\x81\x40\xD6\xD0\xE4\xB8\xAD\xC2\xA9\xF0\x9F\x98\xFF\x30"s;
  for (int round = 0; round < 2000; ++round) {
    std::string text(random() % 1500, '\0');
    const char highBit = round % 4 == 0 ? '\x80' : '\0';  // also long runs without ASCII bytes
    for (char& byte : text) byte = static_cast<char>(bytes[random() % bytes.size()] | highBit);
    ASSERT_EQ(gbk::ToUtf8(text), gbk::Utf16ToUtf8(gbk::ToUtf16(text)));
    ASSERT_EQ(gbk::FromUtf8(text), gbk::FromUtf16(gbk::Utf8ToUtf16(text)));
    const std::string utf8 = gbk::ToUtf8(text);
    ASSERT_EQ(gbk::FromUtf8(utf8), gbk::FromUtf16(gbk::Utf8ToUtf16(utf8)));
  }
}

TEST(CodePage936, ReplacesWhatHasNoCounterpart) {
  EXPECT_EQ(gbk::ToUtf16("\x81"), u"?");
  EXPECT_EQ(gbk::ToUtf16("\x81\xFF"), u"?");
  for (const std::u16string lone : {u"\xD800", u"\xD800x", u"\xDC00"})
    EXPECT_EQ(gbk::Utf16ToUtf8(lone), "\xEF\xBF\xBD" + std::string(lone.size() - 1, 'x'));
  EXPECT_EQ(gbk::ToUtf16("\x81<b"), u"?b");                    // a bad trail goes with its lead
  EXPECT_EQ(gbk::FromUtf16(u"\u00C0\u00B2"), "\xA8\xA4\x32");  // best fit
  EXPECT_EQ(gbk::FromUtf16(u"\U0001F600"), "??");
}

TEST(CodePage936, Utf8IsCheckedStrictly) {
  EXPECT_EQ(gbk::Utf8ToUtf16("\xF0\x9F\x98\x80"), u"\U0001F600");
  EXPECT_EQ(gbk::Utf16ToUtf8(u"\U0001F600"), "\xF0\x9F\x98\x80");
  const std::string broken[] = {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",     "\xF5\x80\x80\x80",
                                "\xE4\xB8", "\x80",         "\xF4\x90\x80\x80", "\xED\xB0\x80"};
  for (const std::string& text : broken) {
    EXPECT_EQ(gbk::Utf8ToUtf16(text), std::u16string(text.size(), u'\uFFFD')) << text;
  }
}

}  // namespace
