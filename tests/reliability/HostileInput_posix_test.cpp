// Inputs made to cost as much as possible, within bounds that the host system keeps: after its seconds it
// ends the test, beyond the memory the heap refuses.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <ZvUtiLib/ZvUtiLib.h>

#include "data/wire/Sinks.h"
#include "records/Units.h"
#include "tests/support/CollidingKeys.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/TempFolder.h"
#include "tests/xml/Documents.h"

namespace {

constexpr unsigned kSeconds = 20;  // under sanitizers; most take a hundredth of one
constexpr std::size_t kMegabyte = std::size_t{1} << 20;

using test::Loads;
using test::Repeat;

void Within(std::size_t megabytes, const char* what, const std::function<void()>& check) {
  SCOPED_TRACE(what);
  const test::ResourceLimits limits(kSeconds, megabytes * kMegabyte);
  EXPECT_NO_THROW(check());
}

// The texts that `make` gives for 0 to count - 1, one after the other.
std::string Numbered(int count, const std::function<std::string(const std::string&)>& make) {
  std::string all;
  for (int i = 0; i < count; ++i) all += make(std::to_string(i));
  return all;
}

TEST(HostileInput, StaysWithinItsSecondsAndBytes) {
  const test::TempFolder folder;
  const auto expectMasked = [&](const std::string& words, const std::string& text) {
    CUtiBlackList list;
    list.Load(folder.Write("words", words).c_str());
    CString result;
    list.ReplaceBlackWord(text.c_str(), result);
    EXPECT_EQ(result.GetLength(), static_cast<int>(text.size()));
  };
  // What a selection finds in a deep and wide document.
  const auto selected = [](const std::string& selection) {
    return test::RootOf(Repeat("<a><b/><b k='v'/>", 3000) + Repeat("</a>", 3000))
        .IsHasChild(selection.c_str());
  };
  Within(128, "sequences in sequences", [] {
    CStreamReader stream(std::string(2000, '\xFF'));
    std::vector<std::vector<std::string>> lists;
    stream >> lists;
    EXPECT_EQ(lists.size(), 65'535u);
  });
  Within(512, "every record on all ones", [] {
    for (const auto* type : zvuti::wire::AllRecords()) {
      CStreamReader stream(std::string(4000, '\xFF'));
      const auto record = type->make();
      try {
        type->read(stream, record.get());
      } catch (const zvuti::wire::UnknownMember&) {
      }
    }
  });
  Within(256, "a dump of all ones", [] {
    const std::string bytes(100'000, '\xFF');
    zvuti::RecordDump dump;
    for (const std::string& name : zvuti::RecordNames())
      zvuti::DumpRecord(name, bytes.data(), bytes.size(), dump);
  });
  Within(64, "format of huge widths", [] {
    CString string;
    CTextString text("kept");
    EXPECT_THROW(string.Format("%200000000d", 1), std::bad_alloc);
    EXPECT_THROW(text.Format("%2147483646d%2147483646d%d", 1, 2, 3), std::exception);
    EXPECT_EQ(text, "kept");
  });
  Within(64, "words of one letter",
         [&] { expectMasked(Repeat("a\n", 1000) + std::string(5000, 'a'), std::string(100'000, 'a')); });
  Within(256, "words that begin alike", [&] {
    std::string words;
    for (std::size_t i = 1; i < 1500; ++i) words += std::string(i, 'a') + "b\n";
    expectMasked(words, std::string(200'000, 'a'));
  });
  Within(64, "half words", [&] { expectMasked(Repeat("a\xB0\n", 100), Repeat("a\xB0", 50'000)); });
  Within(512, "many attributes", [] {
    EXPECT_TRUE(Loads("<a" + Numbered(200'000, [](const auto& i) { return " k" + i + "=''"; }) + "/>"));
  });
  Within(128, "namespaces with long names", [] {
    const std::string root =
        "<a xmlns='" + std::string(kMegabyte, 'u') + "' xmlns:p='" + std::string(kMegabyte, 'v') + "'";
    EXPECT_TRUE(Loads(root + ">" + Repeat("<b p:k=''/>", 50'000) + "</a>"));
    EXPECT_TRUE(Loads(root + Numbered(50'000, [](const auto& i) { return " p:k" + i + "=''"; }) + "/>"));
  });
  Within(128, "references to what is outside, with many entities", [] {
    const std::string many = Numbered(50'000, [](const auto& i) { return "<!ENTITY e" + i + " ''>"; });
    const std::string references = Repeat("&x;", 200'000);
    EXPECT_TRUE(Loads("<!DOCTYPE a [" + many + "<!ENTITY x SYSTEM 'x'>]><a>" + references + "</a>"));
  });
  Within(256, "names chosen to collide", [] {
    std::string document = "<a>";
    for (const std::string& key : test::CollidingKeys(160'000))
      if (key[0] >= 'a') document += "<" + key + "/>";
    EXPECT_TRUE(Loads(document + "</a>"));
  });
  Within(64, "steps in filters", [&] {
    const auto filter = [](int steps) { return "//a[" + Repeat("*/../", steps / 2 - 1) + "*/..]"; };
    EXPECT_EQ(selected(filter(64)), 1);
    EXPECT_EQ(selected(filter(2000)), 0);
  });
  Within(64, "deep and wide selections", [&] {
    for (const char* none :
         {"//*//*//*//*//*//none", "//*[.//*[.//*[.//none]]]", "//*/../*/../*/../*/../none"})
      EXPECT_EQ(selected(none), 0) << none;
    EXPECT_EQ(selected("//a//..//a//..//a//..//b[@k='v']"), 1);
  });
  Within(64, "numbers of a million digits", [] {
    const std::string digits(1'000'000, '9');
    CString result;
    EXPECT_EQ(CUtiNumber::InsertSeparator(digits.c_str(), result), 1);
    EXPECT_EQ(CUtiNumber::ChangeLowerNum2UpperNum(digits.c_str(), result), 0);
    EXPECT_NE(CKxTime::String2DWord((digits + "-" + digits).c_str()), 0ul);
    EXPECT_EQ(ParseInt(digits.c_str(), 0xFFFFFFFF), INT32_MAX);
  });
  Within(256, "an ini file of open sections and many keys", [&] {
    constexpr int kKeys = 200'000;
    const std::string keys =
        Numbered(kKeys, [](const auto& i) { return "\n[s" + i + "]\n[x\n" + i + "=" + i; });
    CKxIniFileReaderSuite suite;
    auto* reader = suite.FindIniFileReader(
        folder
            .Write("a.ini", Repeat("[", 1'000'000) + "\n[all]" +
                                Numbered(kKeys, [](const auto& i) { return "\n" + i + "=" + i; }) + keys)
            .c_str());
    for (int i = 0; i < kKeys; ++i)
      ASSERT_EQ(reader->GetString("all", std::to_string(i).c_str(), ""), std::to_string(i));
    EXPECT_STREQ(reader->GetString("x", "0", ""), "0");
    EXPECT_STREQ(reader->GetString("x", "1", ""), "");
  });
}

}  // namespace
