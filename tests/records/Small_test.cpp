#include <ZvUtiLib/records/Small.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>

#include <ZvUtiLib/data/Crc16.h>

namespace {

using namespace std::string_literals;

template <class R>
std::string Written(const R& record) {
  CStreamReader stream;
  stream << record;
  return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
}

AmountMap Amounts() {
  AmountMap amounts;
  amounts[1] = {1, {}, 10};
  amounts[-1] = {-1, {}, 20};
  return amounts;
}

TEST(SmallRecords, CodesChangePlacesAndKeepTheirLowByte) {
  CodedAmount record;
  record.Flag = 9;
  record.Code1 = 1;
  record.Code2 = 300;
  const std::string bytes = Written(record);
  EXPECT_EQ(bytes.substr(0, 3), "\x09\x2C\x01");
  CStreamReader stream(bytes);
  stream >> record;
  EXPECT_EQ(record.Code2, 44u);

  CStreamReader cut("\x05\x07"s);  // ends between the codes: the second takes the first one's value
  cut >> record;
  EXPECT_EQ(record.Code2, 7u);
  EXPECT_EQ(record.Code1, 7u);
}

TEST(SmallRecords, UnknownKindThrowsAndWhatStandsBeforeItStays) {
  KindEntry entry;
  CStreamReader stream("\x22\x11\0\0\0\0\x33"s);
  EXPECT_THROW(stream >> entry, std::exception);
  EXPECT_EQ(entry.ShortId, 0x1122);
  EXPECT_EQ(entry.Flag, 0);
  EXPECT_EQ(stream.Length(), 1);

  entry.Kind = static_cast<BinaryKind>(2);
  CStreamReader out;
  EXPECT_THROW(out << entry, std::exception);
  EXPECT_EQ(out.Length(), 2);
}

TEST(SmallRecords, AnExtendedRecordBeginsWithItsBase) {
  NamedTextsFull full;
  full.Text1 = "a";
  full.TextList = {"b"};
  full.Value3 = 7;
  full.Text3 = "c";
  const std::string bytes = Written(full);
  EXPECT_EQ(bytes, Written(static_cast<const NamedTexts&>(full)) + "\x07\0\0\0\x01\0c"s);
  CStreamReader stream(bytes);
  NamedTexts base;
  stream >> base;
  EXPECT_EQ(base.TextList, full.TextList);
  EXPECT_EQ(stream.Length(), 7);
}

TEST(AmountMap, GoesAsBlocksInSignedKeyOrder) {
  const std::string bytes =
      "\x02\0\0\0"s + "\xFF\xFF\xFF\xFF\0\0\0\0\x14\0\0\0\0\0\0\0"s + "\x01\0\0\0\0\0\0\0\x0A\0\0\0\0\0\0\0"s;
  EXPECT_EQ(Written(Amounts()), bytes);

  // A later entry of the same key replaces the earlier one, reserved bytes and all.
  AmountMap amounts = Amounts();
  CStreamReader stream("\x02\0\0\0"s + "\x01\0\0\0ABCD\x05\0\0\0\0\0\0\0"s +
                       "\x01\0\0\0EFGH\x06\0\0\0\0\0\0\0"s);
  stream >> amounts;
  EXPECT_EQ(amounts.size(), 2u);
  EXPECT_EQ(amounts[1].Amount, 6);
  EXPECT_EQ(amounts[1].Reserved[0], 'E');
}

TEST(AmountMap, AnEntryCutShortRepeatsTheOneBeforeIt) {
  AmountMap amounts;
  CStreamReader none(
      "\xFF\xFF\xFF\x7F"
      "abc"s);
  none >> amounts;
  ASSERT_EQ(amounts.size(), 1u);
  EXPECT_EQ(amounts[0].Amount, 0);
  EXPECT_EQ(none.Length(), 3);
}

TEST(AmountMap, ChecksumCoversTheWireForm) {
  EXPECT_EQ(GetAmountMapChecksum({}), 0);
  const std::string bytes = Written(Amounts());
  const int checksum = GetAmountMapChecksum(Amounts());
  EXPECT_EQ(checksum, static_cast<int>(Crc16(0, bytes.data(), static_cast<unsigned>(bytes.size()))));
  AmountMap other = Amounts();
  other[1].Reserved[3] = 1;
  EXPECT_NE(GetAmountMapChecksum(other), checksum);
}

TEST(HighIds, MapBothWays) {
  EXPECT_EQ(ToHighId(0), 65535u);
  EXPECT_EQ(ToHighId(1), 65536u);
  EXPECT_EQ(ToHighId(0xFFFFFFFF), 65534u);
  EXPECT_EQ(FromHighId(65536), 1u);
  EXPECT_EQ(FromHighId(65535), 0u);
  EXPECT_EQ(FromHighId(7), 0u);
}

}  // namespace
