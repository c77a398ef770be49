#include <ZvUtiLib/data/CStream.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/data/Containers.h>
#include <ZvUtiLib/data/SizedMap.h>
#include <ZvUtiLib/platform/CString.h>

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

template <class T>
concept Travels = requires(CStreamReader& stream, T& value) {
  stream << value;
  stream >> value;
};

enum Plain : int { kNone };
enum class Scoped : std::uint8_t { kNone };

static_assert(Travels<char> && Travels<std::uint16_t> && Travels<std::int64_t> && Travels<bool>);
static_assert(Travels<std::string> && Travels<CByteBuffer> && Travels<std::vector<std::int16_t>>);
static_assert(!Travels<float> && !Travels<double> && !Travels<Plain> && !Travels<Scoped>);
static_assert(!Travels<int*> && !Travels<const int> && !Travels<std::pair<int, int>>);
static_assert(!Travels<std::map<int, std::int64_t>> && !Travels<std::map<std::int16_t, int>>);

TEST(CStream, IntegersAreLittleEndian) {
  EXPECT_EQ(Written<std::uint32_t>(0x12345678), "\x78\x56\x34\x12");
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
}

TEST(CStream, AReadMayGoToTheBytesThatAreLeft) {
  CStreamReader stream("abcdef"s);
  stream.Read(stream.Data() + 3, 2);  // abc[ab]f
  EXPECT_EQ(Bytes(stream), "cabf");
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

template <class Text>
void ExpectRead(const std::string& bytes, const std::string& expected, const std::string& rest) {
  CStreamReader stream(bytes), old("\x03\0old"s);
  Text text;
  old >> text;
  stream >> text;
  EXPECT_EQ(Written(text).substr(2), expected) << testing::PrintToString(bytes);
  EXPECT_EQ(Bytes(stream), rest) << testing::PrintToString(bytes);
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
    ExpectRead<std::string>(c.bytes, c.asString, c.rest);
    ExpectRead<CTextString>(c.bytes, c.asOther, c.rest);
    ExpectRead<CByteBuffer>(c.bytes, c.asOther, c.rest);
  }
}

TEST(CStream, ATextMayLieInTheStreamAndInItsUnusedCapacity) {
  const std::string inside = "inside\0"s + std::string(1017, 'x');  // the count makes the stream grow
  const struct {
    std::string bytes, unused;
    unsigned textAt;
  } cases[] = {
      {inside, "", 2},
      {std::string(1000, 'x'), "unused", 1000},
      {std::string(1017, 'x'), "unused", 1017},
      {std::string(1019, 'x') + "acr", "s", 1019},  // begins within the length and ends after it
  };
  for (const auto& c : cases) {
    CStreamReader stream(c.bytes);
    if (!c.unused.empty()) std::memcpy(stream.Append(nullptr, 7), c.unused.c_str(), c.unused.size() + 1);
    const char* text = reinterpret_cast<const char*>(stream.Data()) + c.textAt;
    const std::string expected = c.bytes + static_cast<char>(std::strlen(text)) + '\0' + text;
    stream << text;
    EXPECT_EQ(Bytes(stream), expected) << c.textAt;
  }
  CStreamReader stream(std::string(1023, 'x'));
  stream << static_cast<const CByteBuffer&>(stream);
  EXPECT_EQ(Bytes(stream), std::string(1023, 'x') + "\xFF\x03" + std::string(1023, 'x'));
  CStreamReader other(std::string(1023, 'x'));
  other << "stack"s
        << "literal";  // at lower and at higher addresses than the stream
  EXPECT_EQ(Bytes(other).substr(1023), "\x05\0stack\x07\0literal"s);
}

TEST(CStream, ConstructorsCopyTheBytesOrReserveRoom) {
  EXPECT_EQ(Bytes(CStreamReader("abc", 2)), "ab");
  const CStreamReader room(nullptr, 1500);
  EXPECT_EQ(room.Length(), 0);
  EXPECT_EQ(room.Capacity(), 2048);
  EXPECT_EQ(CStreamReader("abc", 0x80000000u).Data(), nullptr);
}

static_assert(std::is_nothrow_move_constructible_v<CStreamReader> &&
              !std::is_copy_constructible_v<CStreamReader>);
static_assert(std::is_nothrow_move_assignable_v<CStreamReader> &&
              !std::is_move_constructible_v<CStreamWriter>);

TEST(CStream, MovesWholeAndIsReadWithoutAName) {
  const auto received = [] { return CStreamReader("\5\0hello\1"s); };
  CStreamReader stream = received(), other("other"s);
  const unsigned char* const data = stream.Data();
  other = std::move(stream);
  other = std::move(static_cast<CStreamReader&>(other));
  EXPECT_EQ(other.Data(), data);
  EXPECT_TRUE(!stream.Data() && stream.Capacity() == 0 && stream.Length() == 0);  // NOLINT
  stream << std::string_view("a\0b", 3);
  EXPECT_EQ(Bytes(stream), "\3\0a\0b"s);

  CString text("old");
  std::uint16_t number = 0;
  const CStreamReader rest = received() >> text >> number;
  EXPECT_EQ(text, "hello");
  EXPECT_EQ(Bytes(rest), "\1");
  CStreamReader("\0\0"s) >> text;
  EXPECT_TRUE(text.IsEmpty());
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

// The expected bytes. `block` has the whole capacity, because a growing length also exposes bytes that were
// not in use.
struct Model {
  std::string block;
  std::size_t length = 0;

  void Grow(std::size_t needed, std::size_t target) {
    if (needed <= block.size()) return;
    block.resize(length);
    block.resize((std::max(needed, target) + 1023) / 1024 * 1024, '\0');
  }
  void Put(const std::string& bytes) {
    Grow(length + bytes.size(), 0);
    block.replace(length, bytes.size(), bytes);
    length += bytes.size();
  }
  std::string Take(std::size_t count) {
    std::string taken = block.substr(0, count);
    length -= count;
    block.replace(0, length, std::string(block, count, length));
    return taken;
  }
};

TEST(CStream, ThousandsOfRandomStepsMatchTheModel) {
  std::mt19937 random(6101);
  const auto below = [&](std::size_t bound) { return random() % bound; };
  for (int run = 0; run < 60; ++run) {
    CStreamReader stream;
    Model model;
    for (int step = 0; step < 200; ++step) {
      std::string bytes(below(8) == 0 ? below(3000) : below(40), static_cast<char>('a' + below(26)));
      const auto count = static_cast<unsigned>(bytes.size());
      const std::size_t kind = below(6);
      if (kind == 0) {
        model.Put(bytes);
        const unsigned char* place = stream.Append(bytes.data(), count);
        ASSERT_TRUE(!place || place + count == stream.Data() + stream.Length());
      } else if (kind == 1) {
        if (count > 0) model.Grow(model.length + count + 1, 2 * model.length);
        model.Put(bytes);
        stream.AppendText(bytes.c_str());
      } else if (kind == 2 && model.length > 0) {  // from inside itself
        const std::size_t from = below(model.length), size = below(model.length - from + 1);
        model.Put(std::string(model.block, from, size));
        stream.Append(stream.Data() + from, static_cast<unsigned>(size));
      } else if (kind == 3) {
        const std::size_t length = below(6) == 0 ? below(9000) : below(model.length + 1);
        model.Grow(length, 0);
        model.length = length;
        stream.SetLength(static_cast<int>(length));
      } else if (kind == 4) {
        model.Grow(model.length + count, 2 * model.length);
        stream.Reserve(static_cast<int>(count), GrowDoubling);
      } else if (kind == 5) {
        const std::string expected = count <= model.length ? model.Take(count) : bytes;
        stream.Read(bytes.data(), static_cast<int>(count));
        ASSERT_EQ(bytes, expected);
      }
      ASSERT_EQ(static_cast<std::size_t>(stream.Capacity()), model.block.size());
      ASSERT_EQ(stream.Length(), static_cast<int>(model.length));
      ASSERT_EQ(std::string_view(reinterpret_cast<const char*>(stream.Data()), model.block.size()),
                model.block);
    }
  }
}

TEST(CStream, AFullHeapLosesFieldsAndNothingElse) {
  const std::vector<std::int16_t> shorts{5, 6, 7};
  const std::map<int, int> map{{1, 2}};
  CStreamReader stream(std::string(1020, 'x')), sequence(std::string(1018, 'x'));
  CStreamReader unused(std::string(1000, 'x')), body("\x00\x08"s + std::string(2048, 'b'));
  *unused.Append(nullptr, 1) = 'y';
  CByteBuffer buffer;
  buffer.Append("old", 3);
  {
    test::HeapFaults full(1, true);
    stream << std::int64_t{1} << std::int16_t{2} << "abc";  // only the 16-bit value and the count fit
    stream << shorts << map;
    sequence << shorts;  // two of three elements fit
    unused << reinterpret_cast<const char*>(unused.Data()) + 1000;
    body >> buffer;
  }
  EXPECT_EQ(Bytes(stream).substr(1020), "\x02\0\x03\0"s);
  EXPECT_EQ(Bytes(sequence).substr(1018), "\x03\0\x05\0\x06\0"s);
  EXPECT_EQ(Bytes(unused).substr(1000), "\x01\0"s);
  EXPECT_EQ(Bytes(body), std::string(2048, 'b'));
  EXPECT_EQ(Bytes(buffer), "old");
}

}  // namespace
