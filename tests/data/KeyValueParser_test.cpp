#include "data/KeyValueParser.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/support/PlainDict.h"
#include "tests/support/SteppedParser.h"

namespace {

/// Writes down what the parser delivers.
class Recorder : public CStringDict {
 public:
  void SetValue(const CTextString& key, const char* value) override {
    ((got += key.c_str()) += '>') += value;
    got += ';';
  }
  std::string got;
};

std::string Parsed(unsigned options, const std::string& text, const char* separators = "=&",
                   int length = -1) {
  Recorder recorder;
  zvuti::ParseKeyValues(recorder, text.c_str(), separators, length, options);
  return recorder.got;
}

constexpr unsigned kDefault = ParseFoldKeys | ParseTrim;

TEST(KeyValueParser, DeliversPairsInTheOrderOfTheText) {
  const struct {
    const char* text;
    const char* expected;
    int length = -1;
    const char* separators = "=&";
  } rows[] = {
      {"1=2&3=4&", "1>2;3>4;"},
      {" \t\r\n\v\fA\t\n=\v1 \r&\tB=2 \n", "a>1;b>2;"},
      {"K=VaL", "k>VaL;"},
      {"a&b=2", "b>2;"},
      {"=1", ""},
      {"a=", "a>;"},
      {"a=b=c", "a>b=c;"},
      {"a=1&b=2", "a>1;", 3},
      {"a=1&b=2", "", 0},
      {"a=1&b=2", "a>1;b>2;", 500},  // no further than the terminator
      {"a=1&b=2", "", -1, ""},
      {"a=1&b=2", "a>1;b>2;", -5},
      {"a  b\na c\n", "a> b;a>c;", -1, " \n"},
      {"a\t\tb\t&c=\t", "a>\tb;c=>;", -1, "\t&"},  // a mark in a value is an ordinary byte
      {"a=1&b=2", "a>1&b=2;", -1, "="},
      {"\xB0\x41=\xB0\x41", "\xB0\x61>\xB0\x41;"},  // second bytes fold with the rest
      {"\xC0\x85=\xA0", "\xC0\x85>\xA0;"},          // bytes above 0x7F are no white space
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Parsed(kDefault, row.text, row.separators, row.length), row.expected)
        << row.text << "|" << row.length;
  }
}

TEST(KeyValueParser, EachOptionDoesItsOwnPart) {
  const char* const expected[] = {" Ab >Cd ;E>F;", " ab >Cd ;e>F;", " Ab >cd ;E>f;", " ab >cd ;e>f;",
                                  "Ab>Cd;E>F;",    "ab>Cd;e>F;",    "Ab>cd;E>f;",    "ab>cd;e>f;"};
  for (unsigned options = 0; options < 8; ++options)
    EXPECT_EQ(Parsed(options, " Ab =Cd &E=F"), expected[options]);
  EXPECT_EQ(Parsed(8, "a=1"), "");
  EXPECT_EQ(Parsed(0xFFFFFFFF, "a=1"), "");
}

TEST(KeyValueParser, ParseOfADictionaryFoldsKeysAndTrims) {
  CStringDict dict;
  dict.Parse(" A = X & a=Y&A=Z ", "=&", 12);
  dict.Parse(nullptr, "=&");
  EXPECT_EQ(test::PairsOf(dict), (test::Pairs{{"a", "Y"}}));
}

TEST(KeyValueParser, EqualsAMachineOfSingleStepsOnRandomTexts) {
  std::mt19937 random(5);
  const std::string alphabet = "==&&  \t\nabAZ\x80\xFF";
  for (int round = 0; round < 50'000; ++round) {
    std::string text(random() % 40, ' ');
    for (char& byte : text) byte = alphabet[random() % alphabet.size()];
    std::string separators = "=&";
    if (random() % 2 == 0)
      separators = {alphabet[random() % alphabet.size()], alphabet[random() % alphabet.size()]};
    const auto options = static_cast<unsigned>(random() % 8);
    ASSERT_EQ(Parsed(options, text, separators.c_str()), test::ParsedInSteps(options, text, separators))
        << options << text;
  }
}

}  // namespace
