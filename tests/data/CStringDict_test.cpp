#include <ZvUtiLib/data/CStringDict.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/support/PlainDict.h"

namespace {

using test::Pairs;
using test::PairsOf;

void Set(CStringDict& dict, const std::string& key, const char* value) {
  dict.SetValue(CTextString(std::string_view(key)), value);
}

TEST(CStringDict, OrderOfVisitingFollowsFromTheKeysAlone) {
  std::mt19937 random(11);
  for (unsigned round = 0; round < 400; ++round) {
    const std::size_t count = round == 0 ? 20'000 : round < 150 ? round : random() % 600;
    const auto kinds = 1 + random() % 255;  // few kinds of bytes make long common beginnings
    std::map<std::string, std::string> model;
    std::vector<std::string> keys;
    for (int tries = 0; model.size() < count && tries < 40'000; ++tries) {
      std::string key(random() % 20, ' ');
      for (char& byte : key) byte = static_cast<char>(1 + random() % kinds);
      if (model.emplace(key, std::to_string(tries)).second) keys.push_back(key);
    }
    CStringDict dict;
    for (const std::string& key : keys) Set(dict, key, "early");
    for (const std::string& key : keys) Set(dict, key, model[key].c_str());
    ASSERT_EQ(PairsOf(dict), test::Ordered(model)) << round;

    std::shuffle(keys.begin(), keys.end(), random);
    CStringDict other;
    for (const std::string& key : keys) Set(other, key, model[key].c_str());
    ASSERT_EQ(PairsOf(other), test::Ordered(model)) << round;
  }
}

TEST(CStringDict, KeysAndValuesEndAtAZeroByte) {
  CStringDict dict;
  EXPECT_TRUE(PairsOf(dict).empty());
  Set(dict, std::string("a\0b", 3), "first");
  Set(dict, "a", "second");
  Set(dict, "", nullptr);
  EXPECT_EQ(PairsOf(dict), (Pairs{{"", ""}, {"a", "second"}}));
}

}  // namespace
