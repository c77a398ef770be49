// Inputs made to cost as much as possible, within bounds that the system keeps: beyond its seconds it ends
// the test, beyond the memory the heap refuses.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <ZvUtiLib/ZvUtiLib.h>

#include "data/wire/Sinks.h"
#include "records/Units.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/TempFolder.h"

namespace {

constexpr unsigned kSeconds = 20;  // under sanitizers; most take a hundredth of one
constexpr std::size_t kMegabyte = std::size_t{1} << 20;

std::string Repeat(const std::string& text, int count) {
  std::string all;
  all.reserve(text.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

CUtiXmlElement Root(const std::string& document) {
  CUtiXmlParser parser(document.c_str(), 0);
  return parser.GetRootElement() ? *parser.GetRootElement() : CUtiXmlElement();
}

// What a selection finds in a deep and wide document.
int Selected(const char* selection) {
  return Root(Repeat("<a><b/><b k='v'/>", 3000) + Repeat("</a>", 3000)).IsHasChild(selection);
}

std::string Refused(const std::function<void()>& operate) {
  try {
    operate();
  } catch (const std::bad_alloc&) {
    return "no memory";
  } catch (const std::length_error&) {
    return "too long";
  }
  return "done";
}

TEST(HostileInput, StaysWithinItsSecondsAndBytes) {
  const test::TempFolder folder;
  const std::string count = "\xFF\xFF\xFF\x7F";
  const auto masked = [&](const std::string& words, const std::string& text) {
    CUtiBlackList list;
    list.Load(folder.Write("words", words).c_str());
    CString result;
    list.ReplaceBlackWord(text.c_str(), result);
    return result.GetLength() == static_cast<int>(text.size());
  };
  const struct {
    const char* what;
    std::size_t megabytes;
    std::function<bool()> holds;
  } rows[] = {
      {"map count", 16,
       [&] {
         CStreamReader stream(count);
         std::map<int, int> map;
         stream >> map;
         return map.size() == 1;
       }},
      {"sequences in sequences", 128,
       [] {
         CStreamReader stream(std::string(2000, '\xFF'));
         std::vector<std::vector<std::string>> lists;
         stream >> lists;
         return lists.size() == 65'535;
       }},
      {"bundle counts", 16,
       [&] {
         CStreamReader stream(Repeat(count, 500));
         CUtiBundleTable table;
         table.Read(stream);
         return table.Bundles.empty() && table.Groups.size() <= 1;
       }},
      {"every record on all ones", 512,
       [] {
         for (const auto* type : zvuti::wire::AllRecords()) {
           CStreamReader stream(std::string(4000, '\xFF'));
           const auto record = type->make();
           try {
             type->read(stream, record.get());
           } catch (const zvuti::wire::UnknownMember&) {
           }
         }
         return true;
       }},
      {"a shown record of wild counts", 256,
       [] {
         const std::string bytes(100'000, '\xFF');
         zvuti::RecordDump dump;
         for (const std::string& name : zvuti::RecordNames())
           zvuti::DumpRecord(name, bytes.data(), bytes.size(), dump);
         return !zvuti::RecordNames().empty();
       }},
      {"format of huge widths", 64,
       [] {
         CString string;
         CTextString text("kept");
         return Refused([&] { string.Format("%200000000d", 1); }) == "no memory" &&
                Refused([&] { text.Format("%2147483646d%2147483646d%d", 1, 2, 3); }) != "done" &&
                text == "kept";
       }},
      {"pairs with one bucket's worth of keys", 256,
       [] {
         CStringDict dict;
         std::string text;
         for (int i = 0; i < 100'000; ++i) text += std::to_string(i) + "=" + std::to_string(i) + "&";
         dict.Parse(text.c_str(), "=&");
         return true;
       }},
      {"words of one letter", 64,
       [&] { return masked(Repeat("a\n", 1000) + std::string(5000, 'a'), std::string(100'000, 'a')); }},
      {"words that begin alike", 256,
       [&] {
         std::string words;
         for (int i = 1; i < 1500; ++i) words += std::string(static_cast<std::size_t>(i), 'a') + "b\n";
         return masked(words, std::string(200'000, 'a'));
       }},
      {"half words", 64, [&] { return masked(Repeat("a\xB0\n", 100), Repeat("a\xB0", 50'000)); }},
      {"entities of entities", 64,
       [] {
         std::string declarations = "<!ENTITY e0 'lol'>";
         for (int i = 1; i < 30; ++i) {
           const std::string before = "&e" + std::to_string(i - 1) + ";";
           declarations += "<!ENTITY e" + std::to_string(i) + " '" + Repeat(before, 10) + "'>";
         }
         return Root("<!DOCTYPE a [" + declarations + "]><a k='&e29;'>&e29;</a>").GetNodeName().IsEmpty();
       }},
      {"many attributes", 512,
       [] {
         std::string document = "<a";
         for (int i = 0; i < 200'000; ++i) document += " k" + std::to_string(i) + "=''";
         return Root(document + "/>").GetNodeName() == "a";
       }},
      {"deep and wide selections", 64,
       [] {
         return Selected("//*//*//*//*//*//none") == 0 && Selected("//*[.//*[.//*[.//none]]]") == 0 &&
                Selected("//a//..//a//..//a//..//b[@k='v']") == 1 &&
                Selected("//*/../*/../*/../*/../none") == 0;
       }},
      {"numbers without end", 64,
       [] {
         const std::string digits(1'000'000, '9');
         CString result;
         return CUtiNumber::InsertSeparator(digits.c_str(), result) == 1 &&
                CUtiNumber::ChangeLowerNum2UpperNum(digits.c_str(), result) == 0 &&
                CKxTime::String2DWord((digits + "-" + digits).c_str()) != 0 &&
                ParseInt(digits.c_str(), 0xFFFFFFFF) == INT32_MAX;
       }},
      {"an ini file of open sections", 256,
       [&] {
         CKxIniFileReaderSuite suite;
         auto* reader = suite.FindIniFileReader(
             folder.Write("a.ini", Repeat("[", 1'000'000) + Repeat("\n[x\na=b", 200'000)).c_str());
         return std::string(reader->GetString("x", "a", "")) == "b";
       }},
  };
  for (const auto& row : rows) {
    const test::ResourceLimits limits(kSeconds, row.megabytes * kMegabyte);
    bool holds = false;
    EXPECT_EQ(Refused([&] { holds = row.holds(); }), "done") << row.what;
    EXPECT_TRUE(holds) << row.what;
  }
}

}  // namespace
