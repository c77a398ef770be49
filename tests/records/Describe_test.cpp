#include <ZvUtiLib/records/Describe.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/Described.h"

namespace {

using namespace std::string_literals;
using test::Filled;
using testing::FieldsAre;
using zvuti::NamedValue;
using zvuti::RecordRow;
using zvuti::RowForm;
using zvuti::RowRole;

std::string BytesOf(std::uint32_t number) { return {reinterpret_cast<const char*>(&number), sizeof number}; }

// "path: form, more" for each row, the type in words.
std::string Listed(const std::string& record) {
  static constexpr const char* kRoles[] = {"", ", count", ", key", ", length", ", element", ", value"};
  std::vector<RecordRow> rows;
  EXPECT_TRUE(zvuti::ListRecord(record, rows)) << record;
  std::string text;
  for (const RecordRow& row : rows) {
    text += row.name + ": " + zvuti::FormText(row.type) + (row.type.isSigned ? ", signed" : "");
    text += row.type.isPackedTime ? ", packed time" : "";
    text += row.type.hasSignedKeys ? ", signed keys" : "";
    text += kRoles[static_cast<std::size_t>(row.role)] + (row.field == row.name ? "" : " of " + row.field);
    text += row.defaultValue.empty() ? "" : ", default " + row.defaultValue;
    text += (row.condition ? ", if " + row.condition->text : "") + "\n";
  }
  return text;
}

TEST(Describe, ListsTheRowsInWireOrderWithTheirTypes) {
  EXPECT_EQ(Listed("PricedItem"),
            ": ItemRecord\nExtraValue: 32, default 0\nExtraAmount: 64, signed, default 0\n");
  EXPECT_EQ(
      Listed("ItemRecord"),
      "Tag: 8, default 0\nItemKey: 32, default 0\nItemId: 32, signed, default 0\n"
      "StartTime: 32, packed time, default 0\nValidDays: 32, signed, default 0\nDailyValue: 32, default 0\n"
      "Count: 32, signed, default 0, if ItemKey < 1000000000\nTailByte: 8, default 0\n");
  EXPECT_EQ(Listed("CodedAmount"),
            "Flag: 8, default 0\nCode2: byte code, default 0\nCode1: byte code, default 0\n"
            "Value1: 32, default 0\nValue2: 32, default 0\nAmount: 64, signed, default 0\n");
  EXPECT_EQ(Listed("AmountMap"), "Entries: map of AmountEntry, signed keys, default 0\n");
  EXPECT_EQ(Listed("CUtiBundleTable"),
            "group count: 32, signed, count of Groups\nbundle count: 32, signed, count of Bundles\n"
            "Groups.key: 32, key of Groups\nGroups[key].count: 32, length of Groups\n"
            "Groups[key][index]: 32, element of Groups\nBundles.key: 32, key of Bundles\n"
            "Bundles[key]: BundleRecord, value of Bundles\n");
  std::vector<RecordRow> rows;
  EXPECT_FALSE(zvuti::ListRecord("Nothing", rows));
}

// Whether the condition of `row` holds, according to what a writer puts on the wire.
bool IsPresent(const std::string& record, const RecordRow& row, std::int64_t value) {
  const auto dump = test::Dumped(record, Filled(record, {{row.condition->field, std::to_string(value)}}));
  return std::any_of(dump.rows.begin(), dump.rows.end(),
                     [&](const zvuti::DumpRow& shown) { return shown.path == row.name; });
}

bool Holds(const zvuti::RowCondition& condition, std::int64_t value) {
  const std::int64_t constant = condition.constant;
  const bool results[] = {
      value<constant, value <= constant, value == constant, value != constant, value >= constant, value>
          constant};
  return results[static_cast<std::size_t>(condition.comparison)];
}

// Each part of a type against what DumpRecord and FillRecord do with the row.
TEST(Describe, DescribesWhatIsOnTheWire) {
  int conditions = 0, tags = 0, signs = 0;
  for (const std::string& record : zvuti::RecordNames()) {
    std::vector<RecordRow> rows;
    zvuti::ListRecord(record, rows);
    const zvuti::RecordDump dump = test::Dumped(record, Filled(record, {}));
    for (const RecordRow& row : rows) {
      SCOPED_TRACE(record + "." + row.name);
      for (const zvuti::DumpRow& shown : dump.rows) {
        if (shown.path != row.name || row.role != RowRole::kField) continue;
        EXPECT_EQ(zvuti::FormText(shown.type), zvuti::FormText(row.type));
        EXPECT_EQ(shown.value, row.defaultValue);
        EXPECT_TRUE(row.type.bits == 0 || row.type.bits == 8 * shown.size);
      }
      const auto accepts = [&](const std::string& path) {
        return Filled(record, {{path, "-1"}}).find(path) != 0;
      };
      if (row.type.form == RowForm::kInteger && row.role == RowRole::kField) {
        EXPECT_EQ(row.type.isSigned, accepts(row.name));
        signs += row.type.isSigned ? 1 : 0;
      }
      if (row.type.form == RowForm::kMap) {
        EXPECT_EQ(row.type.hasSignedKeys,
                  Filled(record, {{row.name + "[-1]", "0"}}).find("no such element") == std::string::npos);
        if (row.type.element == RowForm::kInteger) {
          EXPECT_EQ(row.type.isSigned, accepts(row.name + "[0]"));
        }
      }
      for (const zvuti::RowTag& tag : row.tags) {
        EXPECT_NE(Filled(record, {{row.name, tag.name}}).find(BytesOf(tag.tag)), std::string::npos);
        ++tags;
      }
      for (std::int64_t near = -1; row.condition && near <= 1; ++near, ++conditions) {
        const std::int64_t value = row.condition->constant + near;
        EXPECT_EQ(IsPresent(record, row, value), Holds(*row.condition, value)) << value;
      }
    }
  }
  EXPECT_THAT((std::array{conditions, tags}), testing::ElementsAre(3, 11));
  EXPECT_GT(signs, 50);
}

TEST(Describe, ShowsNumbersWithTheirSignsAndPlaces) {
  const zvuti::RecordDump dump = test::Dumped("PricedItem", std::string(40, '\xFF'));
  EXPECT_TRUE(dump.isWhole) << dump.problem;
  EXPECT_EQ(dump.size, 34u);
  ASSERT_EQ(dump.rows.size(), 9u);  // an item with this key has no count
  const auto isRow = [](int offset, int size, const char* path, const char* value) {
    return FieldsAre(offset, size, path, testing::_, RowRole::kField, false, value);
  };
  EXPECT_THAT(dump.rows[0], isRow(0, 1, "Tag", "255"));
  EXPECT_THAT(dump.rows[1], isRow(1, 4, "ItemKey", "4294967295"));
  EXPECT_THAT(dump.rows[2], isRow(5, 4, "ItemId", "-1"));
  EXPECT_THAT(dump.rows[8], isRow(26, 8, "ExtraAmount", "-1"));
  const zvuti::RecordDump block = test::Dumped("BundleEntry", std::string(16, '\1'));
  ASSERT_EQ(block.rows.size(), 4u);  // none of them a tag
  for (const zvuti::DumpRow& row : block.rows) EXPECT_FALSE(row.isUnknownTag) << row.path;
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
