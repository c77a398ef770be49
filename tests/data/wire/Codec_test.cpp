#include "data/wire/Codec.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <ZvUtiLib/data/SizedMap.h>
#include <ZvUtiLib/records/RecordOperators.h>

#include "records/WireTags.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/RecordComparison.h"

// Records that hold every kind of row between them, in places where short reads are awkward.

struct TestBlock {
  std::int32_t Key = 3;
  std::uint8_t Reserved[4] = {1, 2, 3, 4};
  std::int64_t Amount = 5;
};
ZVUTILIB_RECORD(TestBlock)

struct TestWideBlock : TestBlock {
  std::int64_t More = 6;
};
ZVUTILIB_RECORD(TestWideBlock)

struct TestSmall {
  std::uint16_t Short = 1;
  std::uint32_t CodeA = 2;
  BinaryKind Kind = BinaryKind1;
  std::uint8_t Byte = 3;
};
ZVUTILIB_RECORD(TestSmall)

struct TestPart {
  std::uint32_t CodeA = 7;
  std::uint32_t CodeB = 8;
  std::int64_t Wide = 9;
  StatusKind Status = StatusKind2;
  std::uint32_t Decides = 0;
  std::int32_t Sometimes = 11;
  std::uint8_t Last = 12;

  bool IsSmall() const { return Decides < 1000; }
};
ZVUTILIB_RECORD(TestPart)

struct TestWhole : TestPart {
  std::uint16_t Head = 1;
  std::string Text = "old";
  TestWideBlock Block;
  std::uint32_t CodeC = 0xAA;
  zvuti::SizedMap<std::int32_t, std::int32_t> Signed;
  std::vector<std::string> Texts;
  std::vector<TestBlock> Blocks;
  TestPart Nested;
  std::uint32_t CodeD = 0xBB;
  std::vector<TestPart> Parts;
  std::vector<TestSmall> Smalls;
  std::map<std::uint32_t, std::uint32_t> Unsigned;
  std::int64_t Tail = 2;
};
ZVUTILIB_RECORD(TestWhole)

struct TestBlockMap : zvuti::SizedMap<std::int32_t, TestBlock> {};
ZVUTILIB_RECORD(TestBlockMap)

// A part with virtual operations, as a host may derive from it.
class TestOpen {
 public:
  virtual ~TestOpen() = default;
  virtual void Write(CStreamWriter& out) const;
  virtual void Read(CStreamReader& in);
  std::int32_t Value = 1;
  std::string Text;
};
ZVUTILIB_RECORD(TestOpen)

struct TestHolder {
  std::string Before;
  BinaryKind Kind = BinaryKind0;
  TestOpen Open;
  std::vector<TestPart> After;
  std::int64_t Tail = 4;
};
ZVUTILIB_RECORD(TestHolder)

namespace zvuti::wire {

ZV_ROWS(TestBlock) {
  v.i32(ZV_ROW(Key));
  v.reserved(ZV_ROW(Reserved));
  v.i64(ZV_ROW(Amount));
}

ZV_ROWS(TestWideBlock) {
  v.base(BaseOf<TestBlock>(r));
  v.i64(ZV_ROW(More));
}

ZV_ROWS(TestSmall) {
  v.i16(ZV_ROW(Short));
  v.code(ZV_ROW(CodeA));
  v.tag(ZV_ROW(Kind));
  v.i8(ZV_ROW(Byte));
}

ZV_ROWS(TestPart) {
  v.code(ZV_ROW(CodeA));
  v.i64(ZV_ROW(Wide));
  v.code(ZV_ROW(CodeB));
  v.tag(ZV_ROW(Status));
  v.i32(ZV_ROW(Decides));
  if (v.onlyIf("Decides < 1000", r, &TestPart::IsSmall)) {
    v.i32(ZV_ROW(Sometimes));
  } else if constexpr (V::kReads) {
    r.Sometimes = 1;
  }
  v.i8(ZV_ROW(Last));
}

ZV_ROWS(TestWhole) {
  v.base(BaseOf<TestPart>(r));
  v.code(ZV_ROW(CodeC));
  v.i16(ZV_ROW(Head));
  v.text(ZV_ROW(Text));
  v.block24(ZV_ROW(Block));
  v.map(ZV_ROW(Signed));
  v.list(ZV_ROW(Texts));
  v.list(ZV_ROW(Blocks));
  v.record(ZV_ROW(Nested));
  v.code(ZV_ROW(CodeD));
  v.list(ZV_ROW(Parts));
  v.list(ZV_ROW(Smalls));
  v.map(ZV_ROW(Unsigned));
  v.i64(ZV_ROW(Tail));
}

ZV_ROWS(TestBlockMap) { v.blockMap("Entries", r, &TestBlock::Key); }

ZV_ROWS(TestOpen) {
  v.i32(ZV_ROW(Value));
  v.text(ZV_ROW(Text));
}

ZV_ROWS(TestHolder) {
  v.text(ZV_ROW(Before));
  v.tag(ZV_ROW(Kind));
  v.viaOperators(ZV_ROW(Open));
  v.list(ZV_ROW(After));
  v.i64(ZV_ROW(Tail));
}

}  // namespace zvuti::wire

ZV_BLOCK(TestBlock, 16)
ZV_BLOCK(TestWideBlock, 24)
ZV_RECORD(TestSmall)
ZV_RECORD(TestPart)
ZV_RECORD(TestWhole)
ZV_RECORD(TestBlockMap)
ZV_CODEC(TestOpen)
ZV_RECORD(TestHolder)

void TestOpen::Write(CStreamWriter& out) const { zvuti::wire::WriteRecord(out, *this); }
void TestOpen::Read(CStreamReader& in) { zvuti::wire::ReadRecord(in, *this); }
CStreamWriter& operator<<(CStreamWriter& out, const TestOpen& open) {
  open.Write(out);
  return out;
}
CStreamReader& operator>>(CStreamReader& in, TestOpen& open) {
  open.Read(in);
  return in;
}

namespace {

using namespace std::string_literals;
using zvuti::wire::Codec;

std::string Bytes(const CByteBuffer& buffer) {
  return {reinterpret_cast<const char*>(buffer.Data()), static_cast<std::size_t>(buffer.Length())};
}

template <class R>
std::string Written(const R& record) {
  CStreamReader stream;
  stream << record;
  return Bytes(stream);
}

TEST(Codec, EveryRowGivesWhatLiteralReadingAndWritingGive) {
  for (const auto* type : {&Codec<TestBlock>::kType, &Codec<TestWideBlock>::kType, &Codec<TestSmall>::kType,
                           &Codec<TestPart>::kType, &Codec<TestBlockMap>::kType, &Codec<TestOpen>::kType}) {
    test::ExpectLiteralResults(*type, 71, 10);
  }
  test::ExpectLiteralResults(Codec<TestWhole>::kType, 72, 4);
  test::ExpectLiteralResults(Codec<TestHolder>::kType, 73, 4);
}

TEST(Codec, RowsHaveTheFormsThatTheirNamesSay) {
  TestPart part;
  part.CodeA = 300;
  part.Wide = 0x0807060504030201;
  EXPECT_EQ(Written(part), "\x2C\x01\x02\x03\x04\x05\x06\x07\x08\x08\x31\xAA\x4F\xDD\0\0\0\0\x0B\0\0\0\x0C"s);
  part.Decides = 1000;
  EXPECT_EQ(Written(part).substr(14), "\xE8\x03\0\0\x0C"s);
  part.Status = static_cast<StatusKind>(9);
  EXPECT_EQ(Written(part).size(), 15u);
  EXPECT_EQ(Written(TestBlock()), "\x03\0\0\0\x01\x02\x03\x04\x05\0\0\0\0\0\0\0"s);
  EXPECT_EQ(Written(std::vector<TestBlock>(258)).substr(0, 2), "\x02\x01");
}

TEST(Codec, ASecondByteCodeBehindTheEndTakesTheFirstOnesValue) {
  CStreamReader stream("\x05");
  TestPart part;
  stream >> part;
  EXPECT_EQ(part.CodeA, 5u);
  EXPECT_EQ(part.CodeB, 5u);
  TestWhole whole;
  CStreamReader again("\x05");
  again >> whole;
  EXPECT_EQ(whole.CodeC, 0u);  // the record that is extended was a reader of its own
}

TEST(Codec, AnUnknownMemberEndsASequenceBehindItsTag) {
  const std::string small = "\x09\0\x08\xAD\x31\xF1\x2F\x07"s;
  CStreamReader stream("\x03\0"s + small + "\x01\0\x02****rest"s);
  std::vector<TestSmall> smalls(1);
  try {
    stream >> smalls;
    FAIL() << "nothing was thrown";
  } catch (const std::exception& thrown) {
    EXPECT_STREQ(thrown.what(), "unknown enumeration member.");
  }
  EXPECT_EQ(smalls.size(), 2u);
  EXPECT_EQ(smalls[1].Byte, 7);
  EXPECT_EQ(Bytes(stream), "rest");
}

TEST(Codec, AnUnknownMemberEndsTheWritingInFrontOfIt) {
  std::vector<TestSmall> smalls(2);
  smalls[1].Kind = static_cast<BinaryKind>(2);
  CStreamReader stream;
  EXPECT_THROW(stream << smalls, std::exception);
  EXPECT_EQ(Bytes(stream), "\x02\0\x01\0\x02\xAD\x31\xF1\x2F\x03\x01\0\x02"s);
}

// A host's part: it looks at the stream and writes a mark of its own.
class TestDerived : public TestOpen {
 public:
  void Write(CStreamWriter& out) const override { out << std::uint16_t{0xEEEE}; }
  void Read(CStreamReader& in) override {
    seen = Bytes(in);
    std::uint16_t mark = 0;
    in >> mark;
    if (mark != 0xEEEE) throw std::runtime_error("no mark");
  }
  static std::string seen;
};
std::string TestDerived::seen;
static_assert(sizeof(TestDerived) == sizeof(TestOpen));

TEST(Codec, ADerivedPartTakesPartAndSeesTheStreamAsItIs) {
  TestHolder holder;
  std::destroy_at(&holder.Open);
  new (&holder.Open) TestDerived;
  holder.Before = "ab";
  const std::string bytes = Written(holder);
  EXPECT_EQ(bytes, "\x02\0ab\xEA\x4D\x2C\x72\xEE\xEE\0\0\x04\0\0\0\0\0\0\0"s);
  EXPECT_EQ(Written(std::vector<TestHolder>(2)), "\x02\0"s + Written(TestHolder()) + Written(TestHolder()));
  CStreamReader stream(bytes + "!"), unmarked(std::string(bytes).replace(8, 2, "--"));
  stream >> holder;
  EXPECT_EQ(TestDerived::seen, bytes.substr(8) + "!");
  EXPECT_EQ(Bytes(stream), "!");
  EXPECT_THROW(unmarked >> holder, std::runtime_error);
  EXPECT_EQ(Bytes(unmarked), bytes.substr(10));
}

TEST(Codec, WritingTakesOneBlockAndReadingOnePerContainer) {
  const std::vector<TestPart> parts(65'535);
  CStreamReader stream;
  {
    const test::HeapFaults counter(0);
    stream << parts;
    EXPECT_EQ(counter.Tried(), 1);
  }
  EXPECT_EQ(stream.Length(), 2 + 23 * 65'535);
  std::vector<TestPart> again;
  const test::HeapFaults counter(0);
  stream >> again;
  EXPECT_EQ(counter.Tried(), 1);
  EXPECT_EQ(again.size(), parts.size());
  EXPECT_EQ(stream.Length(), 0);
}

TEST(Codec, HostileCountsCostNothing) {
  const std::string count = "\xFF\xFF\xFF\x7F";
  CStreamReader plain(count + "\x01\0\0\0"s), blocks(count);
  std::map<int, int> map;
  TestBlockMap blockMap;
  {
    const test::HeapFaults counter(0);
    plain >> map;
    blocks >> blockMap;
    EXPECT_EQ(counter.Tried(), 3);  // a node for each entry
  }
  EXPECT_EQ(map, (std::map<int, int>{{0, 0}, {1, 0}}));
  EXPECT_EQ(blockMap.size(), 1u);
  EXPECT_EQ(blockMap.begin()->first, 3);
}

}  // namespace
