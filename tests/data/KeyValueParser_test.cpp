#include "data/KeyValueParser.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/support/PlainDict.h"
#include "tests/support/SteppedParser.h"

namespace {

/// Records what the parser delivers.
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
  EXPECT_EQ(Parsed(kDefault, "K=1&a&=2&b=&c=VaL=&"), "k>1;b>;c>VaL=;");
  EXPECT_EQ(Parsed(kDefault, " \t\r\n\v\fA\t\n=\v1 \r&\tB=2 \n"), "a>1;b>2;");
  EXPECT_EQ(Parsed(kDefault, "\xB0\x41=\xB0\x41"), "\xB0\x61>\xB0\x41;");  // trail bytes fold, too
  EXPECT_EQ(Parsed(kDefault, "\xC0\x85=\xA0"), "\xC0\x85>\xA0;");  // bytes above 0x7F are not white space
}

TEST(KeyValueParser, TakesAnySeparatorsAndStopsAtTheLengthOrTheTerminator) {
  const std::string text = "a=1&b=2";
  EXPECT_EQ(Parsed(kDefault, text, "=&", 3), "a>1;");
  EXPECT_EQ(Parsed(kDefault, text, "=&", 0), "");
  EXPECT_EQ(Parsed(kDefault, text, "=&", 500), "a>1;b>2;");
  EXPECT_EQ(Parsed(kDefault, text, "=&", -5), "a>1;b>2;");
  EXPECT_EQ(Parsed(kDefault, text, ""), "");
  EXPECT_EQ(Parsed(kDefault, text, "="), "a>1&b=2;");
  EXPECT_EQ(Parsed(kDefault, "a  b\na c\n", " \n"), "a> b;a>c;");
  EXPECT_EQ(Parsed(kDefault, "a\t\tb\t&c=\t", "\t&"), "a>\tb;c=>;");  // in a value a separator is text
}

TEST(KeyValueParser, UnknownOptionsDeliverNothing) {
  EXPECT_EQ(Parsed(ParseFoldKeys | ParseFoldValues | ParseTrim, " Ab =Cd "), "ab>cd;");
  EXPECT_EQ(Parsed(0, " Ab =Cd "), " Ab >Cd ;");
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
