#include <ZvUtiLib/records/Describe.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/support/Described.h"

namespace {

using namespace std::string_literals;
using test::Filled;
using testing::FieldsAre;
using zvuti::NamedValue;

TEST(Describe, ListsTheRowsInWireOrder) {
  std::vector<zvuti::RecordRow> rows;
  ASSERT_TRUE(zvuti::ListRecord("ItemRecord", rows));
  ASSERT_EQ(rows.size(), 8u);
  EXPECT_THAT(rows[0], FieldsAre("Tag", "8", "", ""));
  EXPECT_THAT(rows[6], FieldsAre("Count", "32", "", "ItemKey < 1000000000"));
  EXPECT_THAT(rows[7], FieldsAre("TailByte", "8", "", ""));
  ASSERT_TRUE(zvuti::ListRecord("PricedItem", rows));
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_THAT(rows[0], FieldsAre("", "ItemRecord", "ItemRecord", ""));
  EXPECT_FALSE(zvuti::ListRecord("Nothing", rows));
}

TEST(Describe, ShowsNumbersWithTheirSignsAndPlaces) {
  const zvuti::RecordDump dump = test::Dumped("PricedItem", std::string(40, '\xFF'));
  EXPECT_TRUE(dump.isWhole) << dump.problem;
  EXPECT_EQ(dump.size, 34u);
  ASSERT_EQ(dump.rows.size(), 9u);  // an item with this key has no count
  EXPECT_THAT(dump.rows[0], FieldsAre(0, 1, "Tag", "8", "255"));
  EXPECT_THAT(dump.rows[1], FieldsAre(1, 4, "ItemKey", "32", "4294967295"));
  EXPECT_THAT(dump.rows[2], FieldsAre(5, 4, "ItemId", "32", "-1"));
  EXPECT_THAT(dump.rows[8], FieldsAre(26, 8, "ExtraAmount", "64", "-1"));
}

TEST(Describe, SaysWhereTheBytesEndThatCanBeShown) {
  const struct {
    const char* record;
    std::string bytes, problem;
  } cases[] = {
      {"ItemRecord", "", "the bytes end in Tag at offset 0: 1 needed, 0 left"},
      {"ItemRecord", "\x01\x02\0"s, "the bytes end in ItemKey at offset 1: 4 needed, 2 left"},
      {"BundleEntry", "\x01", "the bytes end in the block at offset 0: 16 needed, 1 left"},
      {"BundleRecord", std::string(20, '\0') + "\x01\0\x01"s,
       "the bytes end in Entries[0] at offset 22: 16 needed, 1 left"},
      {"KindEntry", "\x01\0\x01\x02\x03\x04\0"s, "unknown tag 0x04030201 in Kind"},
  };
  for (const auto& c : cases) {
    const zvuti::RecordDump dump = test::Dumped(c.record, c.bytes);
    EXPECT_FALSE(dump.isWhole) << c.problem;
    EXPECT_EQ(dump.problem, c.problem);
  }
}

TEST(Describe, ShowsEveryTextSoThatItCanBeFilledBack) {
  const struct {
    std::string text, shown;
  } cases[] = {
      {"a\x7F\\\n\x81", "a\\x7F\\x5C\\x0A\x81"},
      {"\x81\0"s, "\\x81\\x00"},
      {"\xD2\xBB\x81"s, "\xD2\xBB\x81"},
      {"\x81\\\\"s, "\x81\\\\x5C"},  // the first backslash is a trail byte
      {"a\x81\0\x81\0b\n"s, "a\\x81\\x00\\x81\\x00b\\x0A"},
      {"\x81\n\xFF\x80"s, "\x81\n\xFF\x80"},  // the line end is a trail byte
  };
  for (const auto& c : cases) {
    const std::string bytes = std::string(1, static_cast<char>(c.text.size())) + "\0"s + c.text;
    EXPECT_EQ(test::Dumped("TextPair", bytes + "\0\0"s).rows.at(0).value, c.shown);
    EXPECT_EQ(Filled("TextPair", {{"Text1", c.shown}}), bytes + "\0\0"s);
  }
  EXPECT_EQ(Filled("TextPair", {{"Text1", "a\x7F\\\\\\x0a"}}), "\x04\0a\x7F\\\n\0\0"s);
}

TEST(Describe, FillsByName) {
  const std::string zeros(36, '\0');
  EXPECT_EQ(Filled("ItemRecord", {{"ItemKey", "0x3B9ACA00"}, {"ItemId", "-1"}}),
            "\0\0\xCA\x9A\x3B\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\0\0\0\0\0\0"s);
  EXPECT_EQ(Filled("PricedItem", {{"Tag", "255"}, {"ExtraAmount", "-9223372036854775808"}}),
            "\xFF" + zeros + "\x80");
  EXPECT_EQ(Filled("CodedAmount", {{"Code1", "0xFF"}, {"Code1", "0xFF"}}).substr(0, 3), "\0\0\xFF"s);
  EXPECT_EQ(Filled("RewardRecord", {{"Items[1].Tag", "2"}, {"Items[0x0].Tag", "1"}}),
            Filled("RewardRecord", {{"Items", "2"}, {"Items[00].Tag", "1"}, {"Items[1].Tag", "2"}}));
  EXPECT_EQ(Filled("TextPair", {{"Text1", std::string(65'535, 'a')}}).substr(0, 3), "\xFF\xFF\x61");
  EXPECT_EQ(Filled("ItemRecord", {{"Tag", "0XfF"}})[0], '\xFF');
  EXPECT_EQ(Filled("CUtiBundleTable", {{"Groups[0x1][0]", "0xFF"}}),
            "\1\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\xFF\0\0\0"s);
  EXPECT_EQ(Filled("CUtiBundleTable", {{"Groups[1].count", "1000000"}, {"Groups[1][999999]", "1"}})
                .substr(4'000'000),
            std::string(12, '\0') + "\1\0\0\0"s);
}

// Without a count the entries of a map go as a writer puts them; with one, as they are given.
TEST(Describe, FillsMapsByKeyOrEntryByEntry) {
  const std::string minusOne = "\xFF\xFF\xFF\xFF", two = "\2\0\0\0"s, nine = "\x9\0\0\0"s;
  const NamedValue upper = {"Counters[9]", "2"}, lower = {"Counters[-1]", "9"};
  EXPECT_EQ(Filled("CUtiCounterTable", {upper, lower, upper}), two + minusOne + nine + nine + two);
  EXPECT_EQ(Filled("CUtiCounterTable", {upper, lower, {"Counters", "2"}}),
            two + nine + two + minusOne + nine);
  EXPECT_EQ(Filled("CUtiCounterTable", {{"Counters", "2"}, upper, upper}), two + nine + two + nine + two);
}

TEST(Describe, RefusesWhatItCannotFill) {
  const std::string noNumber = "not a number that the field can hold";
  const std::string noEscape = "a backslash stands before x and two digits, or before another one";
  const std::string noBytes = "not 3 bytes, as in 00 FF";
  const std::string longText(65'540, 'a');
  const struct {
    const char *record, *path;
    std::vector<const char*> values;
    std::string problem;
  } cases[] = {
      {"ItemRecord", "Nothing", {"1"}, "there is no such field in ItemRecord"},
      {"ItemRecord", "Tag.Tag", {"1"}, "there is no such field in ItemRecord"},
      {"ItemRecord", "Tag", {"256", "-1", "1x", "", "0Xg", " 1", "1 ", "+1", "1.0", "1e1", "--1"}, noNumber},
      {"CodedAmount", "Code1", {"300", "256", "-1", "1x"}, noNumber},
      {"ItemRecord", "ItemId", {"2147483648", "-2147483649", "99999999999999999999"}, noNumber},
      {"TextValue", "Text", {"\\", "\\y00", "\\x0", "\\xg0", "\\x0g"}, noEscape},
      {"TextPair", "Text2", {longText.c_str()}, "a text has up to 65535 bytes, not 65540"},
      {"PlayerStatus", "Kind", {"StatusKind9", "0x1", "unknown tag 1x"}, "not a member of StatusKind"},
      {"PlayerStatus", "Kind", {"unknown tag 0x2A4C0070"}, "not a member of StatusKind"},
      {"KindEntry", "Kind", {"unknown tag 0x00000001"}, "not a member of BinaryKind"},
      {"AccountRecord", "TextList", {"65536"}, "not a number of elements up to 65535"},
      {"AccountRecord", "TextList[65535]", {"x"}, "a sequence has up to 65535 elements"},
      {"AccountRecord", "TextList[0].x", {"x"}, "a text has no fields"},
      {"AccountRecord", "TextList[0]x", {"x"}, "no such field"},
      {"AccountRecord", "TextList[0", {"x"}, "no such element"},
      {"AccountRecord", "TextList[x]", {"x"}, "no such element"},
      {"AccountRecord", "TextList[2]", {"x"}, "neither element 0 nor the number of elements is given"},
      {"AccountRecord", "LocalText", {"x"}, "there is no such field in AccountRecord"},
      {"CUtiCounterTable", "Counters", {"1", "2147483647"}, "not the number of the entries given, 0"},
      {"CUtiCounterTable", "Counters", {"x", "2147483648"}, noNumber},
      {"CUtiCounterTable", "Counters[2147483648]", {"1"}, "no such element"},
      {"AmountMap", "Entries[5].Key", {"6"}, "the key in the entry is 6"},
      {"CUtiCounterTable", "Counters[1].x", {"1"}, "a number has no fields"},
      {"CUtiBundleTable", "Groups[1][1]", {"1"}, "neither element 0 nor the number of elements is given"},
      {"CUtiBundleTable", "Groups[1].count", {"1000001"}, "not a number of elements up to 1000000"},
      {"CUtiBundleTable", "Groups[1][1000000]", {"1"}, "a sequence has up to 1000000 elements"},
      {"CUtiBundleTable", "Bundles.key", {"1"}, "the keys are not those of the entries, in their order"},
      {"CUtiBundleTable", "Bundles[1]", {"1"}, "no such element"},
      {"GrantEntry", "Reserved", {"00 0", "00 00-00", "00 00 00 ", "00 00 00 00"}, noBytes},
      {"PlayerRecord", "Status", {"1"}, "there is no such field in PlayerRecord"},
  };
  for (const auto& c : cases) {
    for (const char* value : c.values)
      EXPECT_EQ(Filled(c.record, {{c.path, value}}), std::string(c.path) + ": " + c.problem) << value;
  }
}

TEST(Describe, RefusesContradictions) {
  const std::string twice = "given twice, with different values";
  const std::string otherCount = "not the number of the entries given, 1";
  const struct {
    const char* record;
    NamedValue given, refused;
    std::string problem;
  } cases[] = {
      {"ItemRecord", {"ItemKey", "1000000000"}, {"Count", "1"}, "only on the wire if ItemKey < 1000000000"},
      {"ItemRecord", {"Tag", "1"}, {"Tag", "2"}, twice},
      {"RewardRecord", {"Items[0].Tag", "1"}, {"Items[0x0].Tag", "2"}, twice},
      {"RewardRecord", {"Items", "1"}, {"Items", "2"}, twice},
      {"RewardRecord", {"Items", "1"}, {"Items[1].Tag", "1"}, "beyond the number of elements given, 1"},
      {"CUtiCounterTable", {"Counters[5]", "1"}, {"Counters[5]", "2"}, twice},
      {"CUtiCounterTable", {"Counters[5]", "1"}, {"Counters", "-1"}, otherCount},
      {"CUtiBundleTable", {"Groups[1][0]", "1"}, {"Groups[1][0]", "2"}, twice},
      {"CUtiBundleTable", {"Groups[1][0]", "1"}, {"group count", "2"}, otherCount},
      {"CUtiBundleTable", {"Bundles[1].Value", "1"}, {"bundle count", "-2"}, otherCount},
      {"CUtiBundleTable",
       {"Groups[1][0]", "1"},
       {"Groups.key", "2"},
       "the keys are not those of the entries, in their order"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Filled(c.record, {c.given, c.refused}), c.refused.path + ": " + c.problem);
  EXPECT_EQ(Filled("Nothing", {}), "there is no record Nothing");
}

}  // namespace
