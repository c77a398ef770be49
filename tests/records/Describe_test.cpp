#include <ZvUtiLib/records/Describe.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/GoldenRecords.h"

namespace {

using namespace std::string_literals;
using zvuti::NamedValue;

std::string Shown(const std::string& record, const std::string& bytes) {
  zvuti::RecordDump dump;
  EXPECT_TRUE(zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump));
  EXPECT_EQ(dump.isWhole, dump.problem.empty());
  std::string text;
  for (const auto& row : dump.rows) {
    text += std::to_string(row.offset) + "+" + std::to_string(row.size) + " " + row.path + " (" + row.form +
            ") " + row.value + "\n";
  }
  return text + dump.problem;
}

std::string Listed(const std::string& record) {
  std::vector<zvuti::RecordRow> rows;
  EXPECT_TRUE(zvuti::ListRecord(record, rows));
  std::string text;
  for (const auto& row : rows) {
    text += row.name + ": " + row.form + (row.condition.empty() ? "" : ", if ") + row.condition + "\n";
  }
  return text;
}

std::string Filled(const std::string& record, const std::vector<NamedValue>& values) {
  std::string bytes, problem;
  return zvuti::FillRecord(record, values, bytes, problem) ? bytes : problem;
}

TEST(Describe, ListsTheRowsInWireOrder) {
  EXPECT_EQ(Listed("ItemRecord"),
            "Tag: 8\nItemKey: 32\nItemId: 32\nStartTime: 32\nValidDays: 32\nDailyValue: 32\n"
            "Count: 32, if ItemKey < 1000000000\nTailByte: 8\n");
  EXPECT_EQ(Listed("PricedItem"), ": ItemRecord\nExtraValue: 32\nExtraAmount: 64\n");
}

TEST(Describe, ShowsBytesWithTheirPlaces) {
  const std::string item = "\x01\xFF\xFF\xFF\xFF\xFE\xFF\xFF\xFF\0\0\0\0\x05\0\0\0\x06\0\0\0\x07"s;
  EXPECT_EQ(Shown("PricedItem", item + std::string(12, '\xFF') + " more"),
            "0+1 Tag (8) 1\n1+4 ItemKey (32) 4294967295\n5+4 ItemId (32) -2\n9+4 StartTime (32) 0\n"
            "13+4 ValidDays (32) 5\n17+4 DailyValue (32) 6\n21+1 TailByte (8) 7\n"
            "22+4 ExtraValue (32) 4294967295\n26+8 ExtraAmount (64) -1\n");
}

TEST(Describe, SaysWhereShortBytesEnd) {
  EXPECT_EQ(Shown("ItemRecord", ""), "the bytes end in Tag at offset 0: 1 needed, 0 left");
  EXPECT_EQ(Shown("ItemRecord", "\x01\x02\0"s),
            "0+1 Tag (8) 1\nthe bytes end in ItemKey at offset 1: 4 needed, 2 left");
  EXPECT_EQ(Shown("BundleEntry", "\x01"), "the bytes end in the block at offset 0: 16 needed, 1 left");
  const std::string bundle = std::string(20, '\0') + "\x01\0"s;
  const std::string shown = Shown("BundleRecord", bundle + "\x01"s);
  EXPECT_EQ(shown.substr(shown.rfind('\n') + 1),
            "the bytes end in Entries[0] at offset 22: 16 needed, 1 left");
}

TEST(Describe, ShowsEveryTextSoThatItCanBeFilledBack) {
  const std::string texts[] = {"\x81\0"s, "\xD2\xBB\x81"s, "\x81\\\\"s, "a\x81\0\x81\0b\n"s,
                               "\x81\n\xFF\x80"s};
  for (const std::string& text : texts) {
    const std::string bytes = std::string(1, static_cast<char>(text.size())) + "\0"s + text;
    zvuti::RecordDump dump;
    ASSERT_TRUE(zvuti::DumpRecord("PlayerRecord", bytes.data(), bytes.size(), dump));
    EXPECT_EQ(Filled("PlayerRecord", {{"Text1", dump.rows.at(0).value}}).substr(0, bytes.size()), bytes);
  }
}

// Whatever is cut off: the rows that are whole stand side by side, and the problem names the next one.
TEST(Describe, ShowsEveryBeginningOfEveryRecord) {
  std::vector<test::Golden> all = test::GoldenRecords();
  const std::string table =
      Filled("CUtiBundleTable", {{"Groups[1][0]", "9"}, {"Bundles[2].Entries[0].ItemId", "3"}});
  all.push_back({"CUtiBundleTable", "filled", {{table, "", ""}}});
  for (const test::Golden& golden : all) {
    const std::string bytes = golden.Bytes();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      zvuti::RecordDump dump;
      ASSERT_TRUE(zvuti::DumpRecord(golden.record, bytes.data(), length, dump));
      std::size_t end = 0;
      for (const auto& row : dump.rows) {
        ASSERT_EQ(row.offset, end) << golden.record << " " << row.path;
        end += row.size;
      }
      ASSERT_EQ(dump.size, end) << golden.record << length;
      ASSERT_FALSE(dump.isWhole) << golden.record << length;
      ASSERT_NE(dump.problem.find(" left"), std::string::npos) << golden.record << length;
    }
  }
}

TEST(Describe, ShowsAndFillsTextsAndTags) {
  EXPECT_EQ(Shown("TextValue", "\x05\0a\x7F\\\n\x81"s + std::string(4, '\0')).substr(0, 35),
            "0+7 Text (text) a\\x7F\\x5C\\x0A\x81\n7+4 ");
  for (const char* text : {"a\\x7F\\x5C\\x0A", "a\x7F\\\\\\x0a"})
    EXPECT_EQ(Filled("TextValue", {{"Text", text}}).substr(0, 6), "\x04\0a\x7F\\\n"s);
  const std::string tag = Shown("PlayerStatus", "\x01\x02\x03\x04");
  EXPECT_NE(tag.find("unknown tag 0x04030201"), std::string::npos) << tag;
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

TEST(Describe, TakesBackBytesThatNoWriterMakes) {
  const std::string minusOne = "\xFF\xFF\xFF\xFF", none(4, '\0'), one = "\1\0\0\0"s, two = "\2\0\0\0"s;
  const std::string bundle(22, '\0');
  const struct {
    const char *record, *what;
    std::string bytes;
  } cases[] = {
      {"PlayerStatus", "an unknown tag", "\1\2\3\4\5\6\7\x8"},
      {"CUtiCounterTable", "a count below 0", minusOne},
      {"CUtiCounterTable", "a key twice, and lower", two + two + one + two + two},
      {"CUtiCounterTable", "falling keys", two + one + one + minusOne + one},
      {"AmountMap", "two blocks of one key",
       two + one + std::string(12, '\7') + one + std::string(12, '\x8')},
      {"CUtiBundleTable", "counts below 0", minusOne + minusOne},
      {"CUtiBundleTable", "groups of one key",
       "\3\0\0\0"s + none + one + one + two + one + none + one + one + two},
      {"CUtiBundleTable", "falling bundles", none + two + minusOne + bundle + none + bundle},
  };
  for (const auto& c : cases) {
    zvuti::RecordDump dump;
    zvuti::DumpRecord(c.record, c.bytes.data(), c.bytes.size(), dump);
    ASSERT_TRUE(dump.isWhole && dump.size == c.bytes.size()) << c.what << ": " << dump.problem;
    std::vector<NamedValue> values;
    for (const auto& row : dump.rows) values.push_back({row.path, row.value});
    EXPECT_EQ(Filled(c.record, values), c.bytes) << c.record << ": " << c.what;
  }
}

TEST(Describe, FillsBundleTablesAsAllRecords) {
  const std::string none(4, '\0'), one = "\1\0\0\0"s;
  EXPECT_EQ(Filled("CUtiBundleTable", {{"Groups[0x1][0]", "0xFF"}}), one + none + one + one + "\xFF\0\0\0"s);
  const std::string most =
      Filled("CUtiBundleTable", {{"Groups[1].count", "1000000"}, {"Groups[1][999999]", "1"}});
  EXPECT_EQ(most.substr(4'000'000), std::string(12, '\0') + one);
  const std::pair<std::vector<NamedValue>, const char*> contradictions[] = {
      {{{"Groups[1][1]", "1"}}, "Groups[1][1]: neither element 0 nor the number of elements is given"},
      {{{"Groups[1].count", "1"}, {"Groups[1][1]", "1"}},
       "Groups[1][1]: beyond the number of elements given, 1"},
      {{{"Groups[1][0]", "1"}, {"Groups[1][0]", "2"}}, "Groups[1][0]: given twice, with different values"},
      {{{"Groups[1].count", "1000001"}}, "Groups[1].count: not a number of elements up to 1000000"},
      {{{"Groups[1][1000000]", "1"}}, "Groups[1][1000000]: a sequence has up to 1000000 elements"},
      {{{"group count", "2"}, {"Groups[1][0]", "1"}}, "group count: not the number of the entries given, 1"},
      {{{"bundle count", "-2"}, {"Bundles[1].Value", "1"}},
       "bundle count: not the number of the entries given, 1"},
      {{{"Groups.key", "2"}, {"Groups[1][0]", "1"}},
       "Groups.key: the keys are not those of the entries, in their order"},
      {{{"Bundles.key", "1"}}, "Bundles.key: the keys are not those of the entries, in their order"},
      {{{"Bundles[1]", "1"}}, "Bundles[1]: no such element"},
  };
  for (const auto& [values, problem] : contradictions) EXPECT_EQ(Filled("CUtiBundleTable", values), problem);
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
      {"ItemRecord", "", {"1"}, "there is no such field in ItemRecord"},
      {"ItemRecord", "Tag.Tag", {"1"}, "there is no such field in ItemRecord"},
      {"ItemRecord", "Tag", {"256", "-1", "1x", "", "0Xg", " 1", "1 ", "+1", "1.0", "1e1", "--1"}, noNumber},
      {"CodedAmount", "Code1", {"300", "256", "-1", "1x"}, noNumber},
      {"ItemRecord", "ItemId", {"2147483648", "99999999999999999999"}, noNumber},
      {"TextValue", "Text", {"\\", "\\y00", "\\x0", "\\xg0", "\\x0g"}, noEscape},
      {"TextPair", "Text2", {longText.c_str()}, "a text has up to 65535 bytes, not 65540"},
      {"PlayerStatus",
       "Kind",
       {"StatusKind9", "0x1", "unknown tag 1x", "unknown tag 0x2A4C0070"},
       "not a member of StatusKind"},
      {"KindEntry", "Kind", {"unknown tag 0x00000001"}, "not a member of BinaryKind"},
      {"AccountRecord", "TextList", {"65536"}, "not a number of elements up to 65535"},
      {"AccountRecord", "TextList[65535]", {"x"}, "a sequence has up to 65535 elements"},
      {"AccountRecord", "TextList[0].x", {"x"}, "a text has no fields"},
      {"AccountRecord", "TextList[0]x", {"x"}, "no such field"},
      {"AccountRecord", "TextList[0", {"x"}, "no such element"},
      {"AccountRecord", "TextList[x]", {"x"}, "no such element"},
      {"AccountRecord", "TextLists", {"x"}, "there is no such field in AccountRecord"},
      {"AccountRecord", "TextList[2]", {"x"}, "neither element 0 nor the number of elements is given"},
      {"AccountRecord", "LocalText", {"x"}, "there is no such field in AccountRecord"},
      {"CUtiCounterTable", "Counters", {"1", "2147483647"}, "not the number of the entries given, 0"},
      {"CUtiCounterTable", "Counters", {"x", "2147483648"}, noNumber},
      {"CUtiCounterTable", "Counters[2147483648]", {"1"}, "no such element"},
      {"AmountMap", "Entries[5].Key", {"6"}, "the key in the entry is 6"},
      {"CUtiCounterTable", "Counters[1].x", {"1"}, "a number has no fields"},
      {"GrantEntry", "Reserved", {"00 0", "00 00-00", "00 00 00 ", "00 00 00 00"}, noBytes},
      {"PlayerRecord", "Status", {"1"}, "there is no such field in PlayerRecord"},
      {"PlayerRecord", "StatusKind", {"1"}, "there is no such field in PlayerRecord"},
  };
  for (const auto& c : cases) {
    for (const char* value : c.values)
      EXPECT_EQ(Filled(c.record, {{c.path, value}}), std::string(c.path) + ": " + c.problem) << value;
  }
  EXPECT_EQ(Filled("ItemRecord", {{"Tag", "0XfF"}})[0], '\xFF');
  const std::pair<std::vector<NamedValue>, const char*> contradictions[] = {
      {{{"Items[0].ItemKey", "1000000000"}, {"Items[0].Count", "1"}},
       "Items[0].Count: only on the wire if ItemKey < 1000000000"},
      {{{"Player.Value1", "1"}, {"Player.Value1", "2"}}, "Player.Value1: given twice, with different values"},
      {{{"Items[0].Tag", "1"}, {"Items[0x0].Tag", "2"}},
       "Items[0x0].Tag: given twice, with different values"},
      {{{"Items[1].Tag", "1"}, {"Items", "1"}}, "Items[1].Tag: beyond the number of elements given, 1"},
      {{{"Items", "1"}, {"Items", "2"}}, "Items: given twice, with different values"},
      {{{"Player.Attributes[5]", "1"}, {"Player.Attributes[5]", "2"}},
       "Player.Attributes[5]: given twice, with different values"},
      {{{"Player.Attributes[5]", "1"}, {"Player.Attributes", "-1"}},
       "Player.Attributes: not the number of the entries given, 1"},
  };
  for (const auto& [values, problem] : contradictions) EXPECT_EQ(Filled("PlayerSnapshot", values), problem);
  EXPECT_EQ(Filled("Nothing", {}), "there is no record Nothing");
  std::vector<zvuti::RecordRow> rows;
  zvuti::RecordDump dump;
  EXPECT_FALSE(zvuti::ListRecord("Nothing", rows));
  EXPECT_FALSE(zvuti::DumpRecord("Nothing", "", 0, dump));
}

}  // namespace
