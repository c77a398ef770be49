#include <ZvUtiLib/platform/CKxIniFileReader.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/TempFolder.h"

namespace {

using namespace std::string_literals;

constexpr char kNone[] = "no such key";

struct Case {
  std::string file, key, value;
};

void ExpectAll(const char* section, std::initializer_list<Case> cases) {
  const test::TempFolder folder;
  CKxIniFileReaderSuite suite;
  for (const Case& c : cases) {
    CKxIniFileReader* reader = suite.FindIniFileReader(folder.Write("t.ini", c.file).c_str());
    EXPECT_EQ(reader->GetString(section, c.key.c_str(), kNone), c.value) << c.file;
  }
}

TEST(CKxIniFileReader, FindsKeysOfTheFirstSectionOfAName) {
  ExpectAll("Auto", {
                        {"[auto]\nkEy=one", "KeY", "one"},
                        {" \t[ Auto\t] after\n1=one", "1", "one"},
                        {"[Auto\n1=one\n", "1", "one"},
                        {"[Auto]Task]\n1=one\n", "1", "one"},
                        {"[Autos]\n1=no\n[Auto]\n1=one\n[Auto2]\n1=no\n", "1", "one"},
                        {"1=no\n[Auto]\n2=no\n", "1", kNone},
                        {"[Auto]\n2=two\n[Other]\n[Auto]\n1=no\n", "1", kNone},
                        {"[Auto]\n1=first\n1=second\n", "1", "first"},
                        {"[Auto]\n1=\n1=second\n", "1", ""},
                        {"[Auto]\n1\n1=one\n", "1", "one"},
                        {"[Auto]\n01=one\n-1=minus\n", "1", kNone},
                        {"[Auto]\n01=one\n-1=minus\n", "-1", "minus"},
                        {"[Auto]\n;1=no\n ; 1=no\n;[Other]\n", ";1", kNone},
                        {"[Auto]\n;[Other]\n#1=one\n", "#1", "one"},
                    });
  // The trail byte of a character is neither a bracket nor a letter that has another case.
  ExpectAll("Au\x81]to", {{"[Au\x81]to]\n1=one\n", "1", "one"}});
  ExpectAll("\x81q", {{"[\x81Q]\n1=no\n[\x81q]\n1=one", "1", "one"}});
}

TEST(CKxIniFileReader, CutsBlanksAndOnePairOfQuotes) {
  const std::pair<std::string, std::string> cases[] = {
      {" \t\v\fone two\t ", "one two"},
      {"one ; two", "one ; two"},
      {"\" one \"", " one "},
      {"'one'", "one"},
      {"\"one'", "\"one'"},
      {"\"one\" two", "\"one\" two"},
      {"\"\"one\"\"", "\"one\""},
      {"\"\"", ""},
      {"\"", "\""},
      {"'", "'"},
      {"\xA1\xA1one\xA0", "\xA1\xA1one\xA0"},
      {"\x81[\x81\\\x81]\xFE\xFE\x81", "\x81[\x81\\\x81]\xFE\xFE\x81"},
      {"one\0two"s, "one"},
  };
  for (const auto& [written, read] : cases) {
    for (const char* end : {"\n", "\r\n", "\r", "\r\r\n"}) {
      const std::string file = "[S]"s + end + "k =" + written + end + end + " next= yes" + end;
      ExpectAll("S", {{file, "k", read}, {file, "next", "yes"}});
    }
  }
}

TEST(CKxIniFileReader, ReadsFilesWithByteOrderMarks) {
  std::string wide = "\xFF\xFE";
  for (const char c : "[S]\r\nk=a"s) wide += {c, '\0'};
  ExpectAll("S", {
                     {"\xEF\xBB\xBF[S]\nk=a", "k", "a"},
                     {"\xEF\xBB\xBF[S]\nk=\xD6\xD0", "k", "\xD6\xD0"},
                     {wide + "\x2D\x4E\r"s, "k", "a\xD6\xD0"},  // U+4E2D
                     {"\xFF\xFE", "k", kNone},
                     {"\xEF\xBB", "k", kNone},
                 });
}

TEST(CKxIniFileReader, GivesTheDefaultWithoutFileOrName) {
  const test::TempFolder folder;
  const std::string none = folder.Path("none.ini"), itself = folder.Path();
  CKxIniFileReaderSuite suite;
  for (const char* path : {none.c_str(), itself.c_str(), static_cast<const char*>(nullptr)}) {
    CKxIniFileReader* reader = suite.FindIniFileReader(path);
    EXPECT_STREQ(reader->GetString("S", "k", " x "), " x ");
    std::string given = "x";
    const char* answer = reader->GetString("S", nullptr, given.c_str());
    given[0] = 'y';
    EXPECT_STREQ(answer, "x") << "the answer is the reader's own";
    EXPECT_STREQ(reader->GetString(nullptr, "k", nullptr), "");
  }
}

TEST(CKxIniFileReader, OneReaderForEachPathReadAnewAtEachFind) {
  const test::TempFolder folder;
  CKxIniFileReaderSuite suite;
  const std::string path = folder.Write("a/t.ini", "[S]\nk=old\n");
  CKxIniFileReader* reader = suite.FindIniFileReader(path.c_str());
  CKxIniFileReader* other = suite.FindIniFileReader(folder.Write("b/t.ini", "[S]\nk=b\n").c_str());
  folder.Write("a/t.ini", "[S]\nk=new\n");
  EXPECT_STREQ(reader->GetString("S", "k", ""), "old");
  EXPECT_EQ(suite.FindIniFileReader(path.c_str()), reader);
  EXPECT_STREQ(reader->GetString("S", "k", ""), "new");
  EXPECT_STREQ(other->GetString("S", "k", ""), "b");
}

}  // namespace
