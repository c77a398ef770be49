// Every operation that asks for memory, with each of its requests refused in turn.
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <ZvUtiLib/ZvUtiLib.h>

#include "data/wire/Sinks.h"
#include "records/Units.h"
#include "tests/reliability/Loaders.h"
#include "tests/support/AppFolder.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/PlainDict.h"
#include "tests/support/RefuseEach.h"
#include "tests/support/WireBytes.h"

namespace {

using test::AfterRefusal;
using test::Bytes;
using test::RefuseEach;
using enum test::AfterRefusal;

// Longer than what a string holds inside itself.
const char* const kLong = "a text that is longer than any string keeps without the heap";

// What a test sees of an object.
std::string See(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}
std::string See(const CTextString& text) { return std::string(std::string_view(text)); }
std::string See(const CByteBuffer& buffer) { return Bytes(buffer); }
std::string See(const CStringList& list) {
  std::string all = std::to_string(list.GetCount());
  for (POSITION position = list.GetHeadPosition(); position;) (all += ",") += See(list.GetNext(position));
  return all;
}
std::string See(const CUtiExpLevel& table) { return std::to_string(table.GetExpByLevel(2)); }
std::string See(const CUtiRank& table) { return table.GetRank(0); }
std::string See(CUtiTaskAuto& table) { return table.GetName(1).GetString(); }
std::string See(const CUtiCounterTable& table) { return testing::PrintToString(table.Counters); }
std::string See(const CUtiBundleTable& table) {
  CStreamReader stream;
  table.Write(stream);
  return Bytes(stream) + (table.IsMarked(5) ? "marked" : "");
}
std::string See(const CStringDict& dict) { return testing::PrintToString(test::PairsOf(dict)); }

// One operation on an object of type T that begins as `prepare` leaves it.
template <class T>
struct Row {
  const char* what;
  AfterRefusal promise;
  void (*prepare)(T&);
  void (*operate)(T&);
};

template <class T>
void RefuseRows(std::initializer_list<Row<T>> rows) {
  for (const Row<T>& row : rows) {
    test::RefuseEachOf<T>(row.what, row.promise, row.prepare, row.operate,
                          [](T& object) { return See(object); });
  }
}

// An operation of which nothing is to be seen afterwards.
void RefuseAlone(const char* what, const std::function<void()>& operate, AfterRefusal promise = kUsable) {
  const auto make = [&] { return test::Subject{operate, [] { return std::string(); }}; };
  EXPECT_GT(RefuseEach(what, promise, make), 0) << what << " makes no allocation";
}

TEST(FullHeap, StringsStayAsTheyWere) {
  const auto old = [](CString& s) { s = "12345678901234567890"; };
  RefuseRows<CString>({
      {"assign", kAllOrNothing, nullptr, [](CString& s) { s = kLong; }},
      {"append", kAllOrNothing, old, [](CString& s) { s += kLong; }},
      {"format", kAllOrNothing, old, [](CString& s) { s.Format("%s %S", kLong, u"wide"); }},
      {"buffer", kAllOrNothing, old, [](CString& s) { s.GetBuffer(100); }},
      {"separators", kAllOrNothing, old, [](CString& s) { CUtiNumber::InsertSeparator(s, s); }},
      {"numerals", kAllOrNothing, old, [](CString& s) { CUtiNumber::ChangeLowerNum2UpperNum(s, s); }},
      {"time", kAllOrNothing, nullptr, [](CString& s) { s = CKxTime::DWord2String(0x363AC8B8); }},
      {"path", kAllOrNothing, nullptr, [](CString& s) { s = CUtiIO::GetGamePath(0, kLong); }},
  });
  const auto kept = [](CStringList& l) { l.AddTail("kept"); };
  RefuseRows<CStringList>({{"add", kAllOrNothing, kept, [](CStringList& l) { l.AddTail(kLong); }}});
  const auto before = [](CTextString& s) { s = "what was there before"; };
  RefuseRows<CTextString>({
      {"assign", kAllOrNothing, before, [](CTextString& s) { s = kLong; }},
      {"append", kAllOrNothing, before, [](CTextString& s) { s.append(500, 'x'); }},
      {"replace all", kAllOrNothing, before, [](CTextString& s) { s.ReplaceAll("e", s.c_str()); }},
  });
}

template <class Values>
void ReadAll(CStreamReader& stream) {
  Values out;
  stream >> out;
}

TEST(FullHeap, BuffersAndStreamsLoseWhatDoesNotFitAndNothingElse) {
  const auto thousand = [](CByteBuffer& b) { b.SetLength(1000); };
  RefuseRows<CByteBuffer>({
      {"append", kSilent, nullptr, [](CByteBuffer& b) { b.Append(kLong, 40); }},
      {"text", kSilent, thousand, [](CByteBuffer& b) { b.AppendText(kLong); }},
      {"length", kSilent, thousand, [](CByteBuffer& b) { b.SetLength(5000); }},
  });
  static const std::vector<std::string> someTexts{kLong, "short", kLong};
  static const std::map<int, int> somePairs{{1, 2}, {3, 4}};
  const auto nearlyFull = [](CStreamReader& s) { s.SetLength(1023); };
  const auto texts = [](CStreamReader& s) { s << someTexts; };
  const auto pairs = [](CStreamReader& s) { s << somePairs; };
  RefuseRows<CStreamReader>({
      {"write number", kSilent, nullptr, [](CStreamReader& s) { s << std::int64_t{5}; }},
      {"write text", kUsableSilent, nearlyFull, [](CStreamReader& s) { s << kLong; }},
      {"write texts", kUsableSilent, nullptr, texts},
      {"write map", kUsableSilent, nullptr, pairs},
      {"read texts", kUsable, texts, ReadAll<std::vector<std::string>>},
      {"read map", kUsable, pairs, ReadAll<std::map<int, int>>},
  });
}

TEST(FullHeap, DictionariesKeepTheirPairs) {
  for (const int count : {0, 4, 5, 16, 64}) {  // some of these open buckets, and enlarge the list of them
    test::RefuseEachOf<CStringDict>(
        "set", kAllOrNothing,
        [=](CStringDict& dict) {
          for (int i = 0; i < count; ++i) dict.SetValue(std::to_string(i).c_str(), "value");
        },
        [](CStringDict& dict) { dict.SetValue("a key of more than fifteen bytes", kLong); },
        [](CStringDict& dict) { return See(dict); });
  }
  const auto old = [](CStringDict& d) { d.SetValue("key", "old"); };
  const auto parse = [](CStringDict& d) { d.Parse("a=1&a key of more than fifteen bytes=2&c=3", "=&"); };
  RefuseRows<CStringDict>({
      {"replace", kAllOrNothing, old, [](CStringDict& d) { d.SetValue("key", kLong); }},
      {"parse", kUsable, nullptr, parse},
  });
  RefuseAlone("make", [] { CStringDict(); });
}

TEST(FullHeap, TablesCanBeUsedAfterwards) {
  const auto one = [](CUtiCounterTable& t) { t.SetCounter(1, 1); };
  RefuseRows<CUtiCounterTable>({
      {"set", kAllOrNothing, one, [](CUtiCounterTable& t) { t.SetCounter(2, 2); }},
      {"from text", kUsable, nullptr, [](CUtiCounterTable& t) { t.LoadFromText("1=5&2=6&17=-9&"); }},
  });
  const auto filled = [](CUtiBundleTable& t) {
    t.AddToGroup(1, 1);
    t.SetBundle(1, BundleRecord());
  };
  static BundleRecord bundle;
  bundle.Entries.resize(3);
  RefuseRows<CUtiBundleTable>({
      {"group", kAllOrNothing, filled, [](CUtiBundleTable& t) { t.AddToGroup(2, 2); }},
      {"member", kAllOrNothing, filled, [](CUtiBundleTable& t) { t.AddToGroup(2, 1); }},
      {"bundle", kAllOrNothing, filled, [](CUtiBundleTable& t) { t.SetBundle(2, bundle); }},
      {"mark", kAllOrNothing, filled, [](CUtiBundleTable& t) { t.MarkId(5); }},
  });
}

// A record is read as far as the heap allows. What was not taken stays on the stream, whole.
TEST(FullHeap, RecordsLeaveTheRestOnTheStream) {
  int refusals = 0;
  for (const auto* type : zvuti::wire::AllRecords()) {
    const auto filled = test::FilledRecord(*type);
    CStreamReader written;
    test::OutcomeOf(written, [&] { type->write(written, filled.get()); });
    const std::string bytes = Bytes(written);
    refusals += RefuseEach(type->name, kUsable, [&] {
      auto stream = std::make_shared<CStreamReader>(bytes);
      auto record = std::make_shared<zvuti::wire::RecordType::Object>(type->make());
      return test::Subject{
          [=] { type->read(*stream, record->get()); },
          [=] {
            const std::string rest = Bytes(*stream);
            EXPECT_TRUE(bytes.size() >= rest.size() && bytes.substr(bytes.size() - rest.size()) == rest);
            return type->framing ? rest : rest + test::StateOf(*type, record->get());
          }};
    });
    const auto make = [&] {
      auto stream = std::make_shared<CStreamReader>();
      const auto write = [=, &filled] {
        try {
          type->write(*stream, filled.get());
        } catch (const zvuti::wire::UnknownMember&) {
        }
      };
      return test::Subject{write, [=] { return Bytes(*stream); }};
    };
    refusals += RefuseEach(type->name, kUsableSilent, make);
  }
  EXPECT_GT(refusals, 100);
}

TEST(FullHeap, DescriptionsEndInBadAllocOrAreWhole) {
  const std::string bytes(2000, '\x01');
  RefuseAlone("names", [] { zvuti::RecordNames(); });
  RefuseAlone("list", [] {
    std::vector<zvuti::RecordRow> rows;
    zvuti::ListRecord("PlayerRecord", rows);
  });
  for (const char* record : {"PlayerProfile", "CUtiBundleTable"}) {
    RefuseAlone(record, [&] {
      zvuti::RecordDump dump;
      zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
    });
  }
  RefuseAlone("fill", [] {
    std::string out, problem;
    zvuti::FillRecord("CUtiBundleTable", {{"Groups[1][0]", "9"}, {"Bundles[2].Value", "6"}, {"Wrong", "1"}},
                      out, problem);
  });
}

TEST(FullHeap, FilesAreReadOrRefused) {
  const test::AppFolder folder;
  const std::string place = folder.Path() + "/";
  for (const test::Loader& loader : test::kLoaders) {
    folder.Write(loader.fileName, loader.good);
    const auto make = [&] {
      const auto loaded = std::make_shared<std::string>(loader.whenNone);
      return test::Subject{[=, &loader] { *loaded = loader.load(place); }, [=] { return *loaded; }};
    };
    const AfterRefusal promise = loader.mayLackMemory ? AfterRefusal::kFailure : kAllOrNothing;
    EXPECT_GT(RefuseEach(loader.fileName, promise, make), 0);
  }
  // A refused load leaves the table of before, not the part that was read.
  static std::string levels;
  levels = place + "levels.txt";
  const auto loadLevels = [](CUtiExpLevel& t) { t.LoadLevelConfig(levels); };
  RefuseRows<CUtiExpLevel>({{"levels", kAllOrNothing, nullptr, loadLevels}});
  RefuseRows<CUtiRank>({{"ranks", kAllOrNothing, nullptr, [](CUtiRank& t) { t.LoadRankConfig(0); }}});
  folder.Write("Maple/Task.ini", "[AutoTask]\n1=of another game");
  const auto other = [](CUtiTaskAuto& t) { t.Load(1); };
  RefuseRows<CUtiTaskAuto>({{"tasks", kAllOrNothing, other, [](CUtiTaskAuto& t) { t.Load(0); }}});
  RefuseAlone("adapters", [] {
    unsigned char buffer[60];
    int length = 0;
    CUtiMacInfo::GetAllMacAddress(buffer, sizeof buffer, &length);
    CUtiMacInfo::GetAllMacAddress2(buffer, sizeof buffer, &length);
  });
  const auto writeLine = [] { CDebug::LogOut("%s", kLong); };
  RefuseAlone("folder of the log", CDebug::LogInit, kUsableSilent);
  RefuseAlone("log", writeLine, kUsableSilent);
  std::istringstream log(folder.ReadText("log/lobby.log"));
  for (std::string line; std::getline(log, line);) EXPECT_EQ(line.substr(24), kLong);  // whole or lost
}

}  // namespace
