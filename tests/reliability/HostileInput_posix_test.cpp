// Inputs made to cost as much as possible, within bounds that the system keeps: beyond its seconds it ends
// the test, beyond the memory the heap refuses.
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
#include "tests/support/ResourceLimits.h"
#include "tests/support/TempFolder.h"
#include "tests/xml/Documents.h"

namespace {

constexpr unsigned kSeconds = 20;  // under sanitizers; most take a hundredth of one
constexpr std::size_t kMegabyte = std::size_t{1} << 20;

using test::Repeat;

// What a selection finds in a deep and wide document.
int Selected(const char* selection) {
  return test::RootOf(Repeat("<a><b/><b k='v'/>", 3000) + Repeat("</a>", 3000)).IsHasChild(selection);
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

void Within(std::size_t megabytes, const char* what, const std::function<bool()>& holds) {
  const test::ResourceLimits limits(kSeconds, megabytes * kMegabyte);
  bool isHeld = false;
  EXPECT_EQ(Refused([&] { isHeld = holds(); }), "done") << what;
  EXPECT_TRUE(isHeld) << what;
}

TEST(HostileInput, StaysWithinItsSecondsAndBytes) {
  const test::TempFolder folder;
  const auto masked = [&](const std::string& words, const std::string& text) {
    CUtiBlackList list;
    list.Load(folder.Write("words", words).c_str());
    CString result;
    list.ReplaceBlackWord(text.c_str(), result);
    return result.GetLength() == static_cast<int>(text.size());
  };
  Within(128, "sequences in sequences", [] {
    CStreamReader stream(std::string(2000, '\xFF'));
    std::vector<std::vector<std::string>> lists;
    stream >> lists;
    return lists.size() == 65'535;
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
    return true;
  });
  Within(256, "a shown record of wild counts", [] {
    const std::string bytes(100'000, '\xFF');
    zvuti::RecordDump dump;
    for (const std::string& name : zvuti::RecordNames())
      zvuti::DumpRecord(name, bytes.data(), bytes.size(), dump);
    return !zvuti::RecordNames().empty();
  });
  Within(64, "format of huge widths", [] {
    CString string;
    CTextString text("kept");
    return Refused([&] { string.Format("%200000000d", 1); }) == "no memory" &&
           Refused([&] { text.Format("%2147483646d%2147483646d%d", 1, 2, 3); }) != "done" && text == "kept";
  });
  Within(256, "pairs with one bucket's worth of keys", [] {
    CStringDict dict;
    std::string text;
    for (int i = 0; i < 100'000; ++i) text += std::to_string(i) + "=" + std::to_string(i) + "&";
    dict.Parse(text.c_str(), "=&");
    return true;
  });
  Within(64, "words of one letter",
         [&] { return masked(Repeat("a\n", 1000) + std::string(5000, 'a'), std::string(100'000, 'a')); });
  Within(256, "words that begin alike", [&] {
    std::string words;
    for (int i = 1; i < 1500; ++i) words += std::string(static_cast<std::size_t>(i), 'a') + "b\n";
    return masked(words, std::string(200'000, 'a'));
  });
  Within(64, "half words", [&] { return masked(Repeat("a\xB0\n", 100), Repeat("a\xB0", 50'000)); });
  Within(512, "many attributes", [] {
    std::string document = "<a";
    for (int i = 0; i < 200'000; ++i) document += " k" + std::to_string(i) + "=''";
    return test::Loads(document + "/>");
  });
  Within(64, "deep and wide selections", [] {
    return Selected("//*//*//*//*//*//none") == 0 && Selected("//*[.//*[.//*[.//none]]]") == 0 &&
           Selected("//a//..//a//..//a//..//b[@k='v']") == 1 && Selected("//*/../*/../*/../*/../none") == 0;
  });
  Within(64, "numbers without end", [] {
    const std::string digits(1'000'000, '9');
    CString result;
    return CUtiNumber::InsertSeparator(digits.c_str(), result) == 1 &&
           CUtiNumber::ChangeLowerNum2UpperNum(digits.c_str(), result) == 0 &&
           CKxTime::String2DWord((digits + "-" + digits).c_str()) != 0 &&
           ParseInt(digits.c_str(), 0xFFFFFFFF) == INT32_MAX;
  });
  Within(256, "an ini file of open sections", [&] {
    CKxIniFileReaderSuite suite;
    auto* reader = suite.FindIniFileReader(
        folder.Write("a.ini", Repeat("[", 1'000'000) + Repeat("\n[x\na=b", 200'000)).c_str());
    return std::string(reader->GetString("x", "a", "")) == "b";
  });
}

}  // namespace
