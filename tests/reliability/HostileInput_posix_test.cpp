// Inputs made to cost as much as possible, within bounds that the system keeps: beyond its seconds it ends
// the test, beyond the memory the heap refuses.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <new>
#include <random>
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

// 2 to the power of `blocks` names that would have the same hash if it were the same everywhere: each
// consists of blocks, for each of which there are two texts that lead to the same state.
std::vector<std::string> NamesOfOneHash(int blocks) {
  std::minstd_rand random;
  std::vector<std::string> names{"a"};
  std::uint32_t state = 'a' * 0x9E3779B1u;
  for (int block = 0; block < blocks; ++block) {
    std::map<std::uint32_t, std::string> seen;
    for (;;) {
      std::string text;
      std::uint32_t after = state;
      while (text.size() < 8) {
        text += static_cast<char>('a' + random() % 26);
        after = (after ^ static_cast<unsigned char>(text.back())) * 0x9E3779B1u;
      }
      const auto [other, isNew] = seen.emplace(after, text);
      if (isNew || other->second == text) continue;
      for (std::size_t i = names.size(); i-- > 0;)
        names.push_back(names[i] + other->second), names[i] += text;
      state = after;
      break;
    }
  }
  return names;
}

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
  Within(128, "a namespace with a long name", [] {
    const std::string declaration =
        "<a xmlns='" + std::string(kMegabyte, 'u') + "' xmlns:p='" + std::string(kMegabyte, 'v') + "'";
    std::string many;
    for (int i = 0; i < 50'000; ++i) many += " p:k" + std::to_string(i) + "=''";
    return test::Loads(declaration + ">" + Repeat("<b p:k=''/>", 50'000) + "</a>") &&
           test::Loads(declaration + many + "/>");
  });
  Within(64, "attributes declared without end", [] {
    std::string many, namespaces;
    for (int i = 0; i < 100'000; ++i) {
      many += " k" + std::to_string(i) + " CDATA ''";
      namespaces += " xmlns:p" + std::to_string(i) + " CDATA 'u'";
    }
    return !test::Loads("<!DOCTYPE a [<!ATTLIST b" + many + ">]><a/>") &&
           !test::Loads("<!DOCTYPE a [<!ATTLIST b" + namespaces + ">]><a>" + Repeat("<b/>", 50'000) + "</a>");
  });
  Within(128, "references to what is outside, beside many entities", [] {
    std::string many;
    for (int i = 0; i < 50'000; ++i) many += "<!ENTITY e" + std::to_string(i) + " ''>";
    return test::Loads("<!DOCTYPE a [" + many + "<!ENTITY x SYSTEM 'x'>]><a>" + Repeat("&x;", 200'000) +
                       "</a>");
  });
  Within(256, "names chosen to collide", [] {
    std::string document = "<a>";
    for (const std::string& name : NamesOfOneHash(17)) document += "<" + name + "/>";
    return test::Loads(document + "</a>");
  });
  Within(64, "steps in filters", [] {
    const auto filter = [](int steps) { return "//a[" + Repeat("*/../", steps / 2 - 1) + "*/..]"; };
    return Selected(filter(64).c_str()) == 1 && Selected(filter(2000).c_str()) == 0;
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
