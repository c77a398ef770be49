#include <ZvUtiLib/data/CStream.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/data/Containers.h>
#include <ZvUtiLib/data/SizedMap.h>

#include "tests/support/HeapFaults.h"
#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;
using test::Bytes;
using test::Written;

template <class T>
T ReadFrom(const std::string& bytes, T target, const std::string& rest) {
  CStreamReader stream(bytes);
  stream >> target;
  EXPECT_EQ(Bytes(stream), rest);
  return target;
}

template <class T, class = void>
struct Travels : std::false_type {};
template <class T>
struct Travels<T, std::void_t<decltype(std::declval<CStreamReader&>() << std::declval<T&>()),
                              decltype(std::declval<CStreamReader&>() >> std::declval<T&>())>>
    : std::true_type {};

enum Plain : int { kNone };
enum class Scoped : std::uint8_t { kNone };

TEST(CStream, OnlyIntegersAndTextsTravel) {
  EXPECT_TRUE(Travels<char>() && Travels<std::uint16_t>() && Travels<std::int64_t>() && Travels<bool>());
  EXPECT_TRUE(Travels<std::string>() && Travels<CByteBuffer>() && Travels<std::vector<std::int16_t>>());
  EXPECT_FALSE(Travels<float>() || Travels<double>() || Travels<Plain>() || Travels<Scoped>());
  EXPECT_FALSE((Travels<int*>() || Travels<const int>() || Travels<std::pair<int, int>>()));
  EXPECT_FALSE((Travels<std::map<int, std::int64_t>>() || Travels<std::map<std::int16_t, int>>()));
}

TEST(CStream, IntegersAreLittleEndian) {
  EXPECT_EQ(Written<std::uint8_t>(0xAB), "\xAB");
  EXPECT_EQ(Written<std::int16_t>(-2), "\xFE\xFF");
  EXPECT_EQ(Written<std::uint32_t>(0x12345678), "\x78\x56\x34\x12");
  EXPECT_EQ(Written<std::int64_t>(0x0102030405060708), "\x08\x07\x06\x05\x04\x03\x02\x01");
  EXPECT_EQ(Written(true), "\x01");
  EXPECT_EQ(ReadFrom<std::int64_t>("\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF!", 0, "!"), -2);
  EXPECT_EQ(ReadFrom<bool>("\x02!", false, "!"), true);
}

TEST(CStream, AReadThatFindsTooLittleTakesNothing) {
  CStreamReader stream("\x01\x02\x03"s);
  std::uint32_t four = 7;
  std::uint16_t two = 0;
  bool flag = true;
  stream >> four >> two;
  EXPECT_EQ(four, 7u);
  EXPECT_EQ(two, 0x0201);
  stream.Read(&four, 0);
  stream.Read(&four, -1);
  EXPECT_EQ(Bytes(stream), "\x03");
  stream.Read(&four, 1);
  EXPECT_EQ(four, 3u);
  stream >> four >> flag;
  EXPECT_EQ(four, 3u);
  EXPECT_TRUE(flag);
  EXPECT_EQ(stream.Length(), 0);
  EXPECT_EQ(stream.Capacity(), 1024);  // storage stays
}

TEST(CStream, DataStaysTheStartOfTheBlockWhileReadingAndWriting) {
  CStreamReader stream("abcdef"s);
  const unsigned char* data = stream.Data();
  std::uint16_t two = 0;
  stream >> two;
  stream << two;
  EXPECT_EQ(Bytes(stream), "cdefab");
  EXPECT_EQ(stream.Data(), data);
  stream.Read(stream.Data() + 1, 3);  // the target lies in what is left: c[cde]ab
  EXPECT_EQ(Bytes(stream), "eab");
}

TEST(CStream, TextsAreCountedTheSameFromEverySource) {
  CByteBuffer buffer;
  EXPECT_EQ(Written(""s) + Written("") + Written(CTextString()) + Written(buffer), std::string(8, '\0'));
  buffer.Append("ab", 2);
  for (const std::string& bytes :
       {Written("ab"s), Written("ab"), Written(CTextString("ab")), Written(buffer)})
    EXPECT_EQ(bytes, "\x02\0ab"s);
  EXPECT_EQ(Written("a\0b"s), "\x03\0a\0b"s);
  EXPECT_EQ(Written(std::string(65'535, 'x')), "\xFF\xFF" + std::string(65'535, 'x'));
  EXPECT_EQ(Written(std::string(65'536, 'x')), "\0\0"s);
  EXPECT_EQ(Written(std::string(65'538, 'x')), "\x02\0xx"s);
}

TEST(CStream, TextTargetsDifferInEmptyAndMissingBodies) {
  const struct {
    std::string bytes, rest, asString, asOther;
  } cases[] = {
      {"\x02\0hi!"s, "!", "hi", "hi"}, {"\0\0!"s, "!", "", "old"},
      {"\x05", "\x05", "", "old"},     {"", "", "", "old"},
      {"\x02\0h"s, "h", "ol", "ol"},   {"\x05\0hi"s, "hi", "old\0\0"s, "old\0\0"s},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ReadFrom(c.bytes, "old"s, c.rest), c.asString) << c.bytes;
    const CTextString text = ReadFrom(c.bytes, CTextString("old"), c.rest);
    EXPECT_EQ(std::string(text.c_str(), text.size()), c.asOther) << c.bytes;
    CStreamReader stream(c.bytes);
    CByteBuffer buffer;
    buffer.Append("old", 3);
    stream >> buffer;
    EXPECT_EQ(Bytes(buffer), c.asOther) << c.bytes;
    EXPECT_EQ(Bytes(stream), c.rest) << c.bytes;
  }
}

TEST(CStream, ABufferThatCannotGrowLeavesTheBodyOnTheStream) {
  CStreamReader stream("\x00\x08"s + std::string(2048, 'b'));
  CByteBuffer buffer;
  buffer.Append("old", 3);
  {
    test::HeapFaults full(1, true);
    stream >> buffer;
  }
  EXPECT_EQ(Bytes(buffer), "old");
  EXPECT_EQ(Bytes(stream), std::string(2048, 'b'));
}

TEST(CStream, AStreamTakesItsOwnBytesAsTextAndOthers) {
  CStreamReader stream(std::string(1023, 'x'));
  stream << static_cast<const CByteBuffer&>(stream);  // the count alone makes it grow
  EXPECT_EQ(Bytes(stream), std::string(1023, 'x') + "\xFF\x03" + std::string(1023, 'x'));
  CStreamReader text("inside\0"s + std::string(1017, 'x'));
  text << reinterpret_cast<const char*>(text.Data()) + 2;
  EXPECT_EQ(Bytes(text).substr(1024), "\x04\0side"s);
  // Behind the length, where the count goes and what a growth does not take along.
  for (const unsigned length : {1000u, 1018u}) {
    CStreamReader spare(std::string(length, 'x'));
    std::memcpy(spare.Append(nullptr, 6), "spare", 6);
    spare << reinterpret_cast<const char*>(spare.Data()) + length;
    EXPECT_EQ(Bytes(spare).substr(length), "\x05\0spare"s);
    EXPECT_EQ(spare.Capacity(), length + 7 <= 1024 ? 1024 : 2048);
  }
  CStreamReader across(std::string(1019, 'x') + "acr");
  std::memcpy(across.Append(nullptr, 2), "s", 2);
  across << reinterpret_cast<const char*>(across.Data()) +
                1019;  // begins within the length and ends behind it
  EXPECT_EQ(Bytes(across).substr(1022), "\x04\0acrs"s);
  CStreamReader other(std::string(1023, 'x'));
  other << "stack"s
        << "literal";  // in front of the stream's bytes and behind them
  EXPECT_EQ(Bytes(other).substr(1023), "\x05\0stack\x07\0literal"s);
}

TEST(CStream, ConstructorsCopyAllBytes) {
  EXPECT_EQ(Bytes(CStreamReader("a\0b"s)), "a\0b"s);
  EXPECT_EQ(Bytes(CStreamReader("abc", 2)), "ab");
  const CStreamReader room(nullptr, 1500);
  EXPECT_EQ(room.Length(), 0);
  EXPECT_EQ(room.Capacity(), 2048);
  EXPECT_EQ(CStreamReader("abc", 0x80000000u).Data(), nullptr);
}

TEST(CStream, SequencesAppendAndMapsMerge) {
  using Shorts = std::vector<std::int16_t>;
  using Texts = std::vector<std::string>;
  using Lists = std::vector<std::vector<std::int16_t>>;
  EXPECT_EQ(Written(Shorts{1, -1}), "\x02\0\x01\0\xFF\xFF"s);
  EXPECT_EQ(Written(Shorts{}), "\0\0"s);
  EXPECT_EQ(ReadFrom("\x02\0\x01\0\xFF\xFF!"s, Shorts{9}, "!"), (Shorts{9, 1, -1}));
  EXPECT_EQ(ReadFrom("\x03\0\x01\0\xFF"s, Shorts{9}, "\xFF"), (Shorts{9, 1, 0, 0}));
  EXPECT_EQ(ReadFrom("\x03"s, Shorts{9}, "\x03"), (Shorts{9}));
  EXPECT_EQ(Written(Texts{"a", ""}), "\x02\0\x01\0a\0\0"s);
  EXPECT_EQ(ReadFrom("\x02\0\x01\0a\x03\0bc"s, Texts{"x"}, "bc"), (Texts{"x", "a", "\0\0\0"s}));
  EXPECT_EQ(ReadFrom("\x02\0\x01\0\x07\0\0\0"s, Lists{}, ""), (Lists{{7}, {}}));
  EXPECT_EQ(ReadFrom("\x02\0\x01\0"s, std::vector<bool>{false}, ""), (std::vector<bool>{false, true, false}));
  EXPECT_EQ(Written(Shorts(65'537, 5)), "\x01\0\x05\0"s);

  using Map = std::map<int, int>;
  const std::string entries = "\x01\0\0\0\x02\0\0\0"s;
  EXPECT_EQ(Written(Map{{1, 2}, {-1, 3}}), "\x02\0\0\0\xFF\xFF\xFF\xFF\x03\0\0\0"s + entries);
  EXPECT_EQ(Written(zvuti::SizedMap<unsigned, int>{{1, 2}, {-1, 3}}),
            "\x02\0\0\0"s + entries + "\xFF\xFF\xFF\xFF\x03\0\0\0"s);
  EXPECT_EQ(ReadFrom("\x01\0\0\0"s + entries, Map{{1, 9}, {5, 9}}, ""), (Map{{1, 2}, {5, 9}}));
  EXPECT_EQ(ReadFrom("\0\0\0\x80"s + entries, Map{{5, 9}}, entries), (Map{{5, 9}}));
}

// Writes go to the end of a string; reads take from its front, or nothing where there is too little.
TEST(CStream, ThousandsOfRandomStepsMatchTheModel) {
  std::mt19937 random(6201);
  for (int run = 0; run < 50; ++run) {
    CStreamReader stream;
    std::string model;
    for (int step = 0; step < 200; ++step) {
      std::string bytes(random() % 300, ' ');
      for (char& byte : bytes) byte = static_cast<char>(random());
      if (random() % 2 == 0) {
        stream.Write(bytes.data(), static_cast<unsigned>(bytes.size()));
        model += bytes;
      } else {
        std::string target = bytes;
        stream.Read(target.data(), static_cast<int>(target.size()));
        const bool isThere = model.size() >= bytes.size();
        ASSERT_EQ(target, isThere ? model.substr(0, bytes.size()) : bytes);
        if (isThere) model.erase(0, bytes.size());
      }
      ASSERT_EQ(Bytes(stream), model);
    }
  }
}

TEST(CStream, AFullHeapLosesFieldsAndNothingElse) {
  const std::vector<std::int16_t> shorts{5, 6, 7};
  const std::map<int, int> map{{1, 2}};
  CStreamReader stream(std::string(1020, 'x')), sequence(std::string(1018, 'x')),
      spare(std::string(1000, 'x'));
  *spare.Append(nullptr, 1) = 'y';
  {
    test::HeapFaults full(1, true);
    stream << std::int64_t{1} << std::int16_t{2} << "abc";  // only the 16-bit value and the count fit
    stream << shorts << map;
    sequence << shorts;  // two of three elements find room
    spare << reinterpret_cast<const char*>(spare.Data()) + 1000;
  }
  EXPECT_EQ(Bytes(spare).substr(1000), "\x01\0"s);
  EXPECT_EQ(Bytes(stream).substr(1020), "\x02\0\x03\0"s);
  EXPECT_EQ(Bytes(sequence).substr(1018), "\x03\0\x05\0\x06\0"s);
}

}  // namespace
