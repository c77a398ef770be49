#include <ZvUtiLib/gbk/Conversion.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "tests/support/HeapFaults.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

// FNV-1a with 64 bits.
class Digest {
 public:
  template <class Text>
  void Add(const zvuti::Converted<Text>& answer) {
    for (const auto unit : answer.text) {
      for (std::size_t i = 0; i < sizeof unit; ++i) Add(static_cast<unsigned>(unit) >> 8 * i & 0xFF);
    }
    Add(static_cast<unsigned>(answer.lostAt & 0xFF));
  }
  std::uint64_t Value() const { return value_; }

 private:
  void Add(unsigned byte) { value_ = (value_ ^ byte) * 0x100000001B3u; }

  std::uint64_t value_ = 0xCBF29CE484222325u;
};

// tools/compare_codepage936.py compares all answers with the mapping and prints their digest.
TEST(Conversion, GivesTheAnswersOfThePublishedMapping) {
  Digest digest;
  for (unsigned i = 0; i < 0x10000; ++i) {
    const char pair[] = {static_cast<char>(i >> 8), static_cast<char>(i & 0xFF)};
    const auto units = zvuti::GbkToUtf16({pair, 2});
    const auto utf8 = zvuti::GbkToUtf8({pair, 2});
    digest.Add(units);
    ASSERT_EQ(utf8.text, zvuti::Utf16ToUtf8(units.text).text) << i;
    ASSERT_EQ(utf8.lostAt, units.lostAt) << i;
    ASSERT_EQ(zvuti::IsValidGbk({pair, 2}), units.IsWhole()) << i;
    if (units.IsWhole()) {
      ASSERT_EQ(zvuti::Utf16ToGbk(units.text).text, std::string_view(pair, 2)) << i;
    }
  }
  for (unsigned i = 0; i < 0x10000; ++i) {
    const std::u16string unit(1, static_cast<char16_t>(i));
    const auto gbk = zvuti::Utf16ToGbk(unit);
    digest.Add(gbk);
    ASSERT_EQ(gbk.IsWhole(), zvuti::GbkToUtf16(gbk.text).text == unit) << i;
    if (i >= 0xD800 && i < 0xE000) continue;  // no UTF-8
    const auto utf8 = zvuti::Utf8ToGbk(zvuti::Utf16ToUtf8(unit).text);
    ASSERT_EQ(utf8.text, gbk.text) << i;
    ASSERT_EQ(utf8.lostAt, gbk.lostAt) << i;
    ASSERT_EQ(utf8.standInLength, gbk.standInLength) << i;
  }
  EXPECT_EQ(digest.Value(), 0x859B3CF667A3F2C0u);
}

template <class Text>
struct Case {
  Text source;
  std::size_t lostAt;
  Text standIn;
};
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// After a prefix that also moves the place in the result: a character has three bytes in UTF-8, two in GBK.
TEST(Conversion, TellsTheFirstPlaceThatIsLostAndWhatStandsThere) {
  for (const std::size_t before : {0u, 1u, 7u, 100u, 400u}) {
    std::string gbk, utf8;
    for (std::size_t i = 0; i < before; ++i) gbk += "x\xD6\xD0", utf8 += "x\xE4\xB8\xAD";  // 中
    const Case<std::string> fromGbk[] = {
        {"\x81", 0, "?"},      {"\x81\x7Fz\x81", 0, "?"},   {"\xFE\xFF", 0, "?"},
        {"a\x81\0b"s, 1, "?"}, {"\x80?\xFF\0"s, kNone, ""}, {"\xA2\xE3\x81 ", 2, "?"}};
    for (const auto& c : fromGbk) {
      const auto result = zvuti::GbkToUtf8(gbk + c.source);
      const auto units = zvuti::GbkToUtf16(gbk + c.source);
      const std::size_t lostAt = c.lostAt == kNone ? kNone : gbk.size() + c.lostAt;
      EXPECT_EQ(result.lostAt, lostAt);
      EXPECT_EQ(units.lostAt, lostAt);
      EXPECT_EQ(result.StandIn(), c.standIn) << c.source;
      EXPECT_EQ(zvuti::IsValidGbk(gbk + c.source), c.lostAt == kNone);
    }
    const Case<std::string> fromUtf8[] = {
        {"\xC2\xB2", 0, "2"},             // best fit, a byte
        {"\xC3\x80", 0, "\xA8\xA4"},      // best fit, a pair
        {"\xF0\x9F\x98\x80!", 0, "??"},   // U+1F600
        {"\xE2\x82\xAC\0?"s, kNone, ""},  // the euro sign
        {"\xC0\x80", 0, "?"},
        {"\xE0\x80\x80", 0, "?"},  // overlong
        {"\xED\xA0\x80", 0, "?"},
        {"\xF4\x90\x80\x80", 0, "?"},  // a surrogate; beyond U+10FFFF
        {"\x81\x90\x80\x80", 0, "?"},
        {"\xF9\x90\x80\x80", 0, "?"},  // neither byte starts a character
        {"a\xE4\xB8", 1, "?"},
        {"ab\xBF", 2, "?"},
        {"\xEF\xBB\xBF", 0, "?"},  // a byte order mark
    };
    for (const auto& c : fromUtf8) {
      const auto result = zvuti::Utf8ToGbk(utf8 + c.source);
      EXPECT_EQ(result.lostAt, c.lostAt == kNone ? kNone : utf8.size() + c.lostAt) << c.source;
      EXPECT_EQ(result.StandIn(), c.standIn);
      const auto units = zvuti::Utf8ToUtf16(utf8 + c.source);
      EXPECT_EQ(units.IsWhole(), zvuti::IsValidUtf8(utf8 + c.source));
      EXPECT_EQ(units.StandIn(), units.IsWhole() ? u""sv : u"\uFFFD"sv);
    }
  }
}

TEST(Conversion, WhatFollowsTheTextIsNotRead) {
  const std::string_view utf8("\xE4\xB8\xAD", 2), gbk("\xD6\xD0", 1);  // cut within a character
  EXPECT_EQ(zvuti::Utf8ToGbk(utf8).lostAt, 0u);
  EXPECT_EQ(zvuti::Utf8ToUtf16(utf8).lostAt, 0u);
  EXPECT_FALSE(zvuti::IsValidUtf8(utf8));
  EXPECT_EQ(zvuti::GbkToUtf8(gbk).lostAt, 0u);
  EXPECT_EQ(zvuti::GbkToUtf16(gbk).lostAt, 0u);
  EXPECT_FALSE(zvuti::IsValidGbk(gbk));
}

TEST(Conversion, HalvesOfSurrogatePairsAreLost) {
  const Case<std::u16string> cases[] = {{u"\xD83D\xDE00", 0, u"??"},
                                        {u"a\xD83D", 1, u"?"},
                                        {u"\xDE00\xD83D", 0, u"?"},
                                        {u"\xD83D\xD83D\xDE00", 0, u"?"}};
  for (const auto& c : cases) {
    const auto gbk = zvuti::Utf16ToGbk(u"\u4E2D" + c.source);
    EXPECT_EQ(gbk.lostAt, 1 + c.lostAt);
    EXPECT_EQ(gbk.StandIn(), std::string(c.standIn.begin(), c.standIn.end()));
    const auto utf8 = zvuti::Utf16ToUtf8(c.source);
    EXPECT_EQ(utf8.StandIn(), c.standIn == u"??" ? ""sv : "\xEF\xBF\xBD"sv);
  }
}

TEST(Conversion, AllocatesNothingButTheResult) {
  const std::string gbk(5000, '\xB0'), utf8 = zvuti::GbkToUtf8(gbk).text;
  const std::u16string utf16 = zvuti::GbkToUtf16(gbk).text;
  const test::HeapFaults heap(0);
  std::size_t sizes = zvuti::GbkToUtf8(gbk).text.size() + zvuti::GbkToUtf16(gbk).text.size();
  sizes += zvuti::Utf8ToGbk(utf8).text.size() + zvuti::Utf16ToGbk(utf16).text.size();
  EXPECT_EQ(heap.Tried(), 4) << sizes;
}

}  // namespace
