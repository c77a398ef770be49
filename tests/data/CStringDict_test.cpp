#include <ZvUtiLib/data/CStringDict.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "tests/support/CollidingKeys.h"
#include "tests/support/HeapFaults.h"
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

TEST(CStringDict, ChosenKeysOfOneBucketAreFoundAndKeptInOrder) {
  std::mt19937 random(3);
  for (const std::size_t count : {31, 32, 33, 34, 40, 400, 3000}) {
    std::vector<std::string> keys = test::CollidingKeys(count);
    for (std::size_t i = 0; i < count / 4; ++i) keys.push_back(std::to_string(random() % 9999));
    for (const char* order : {"ascending", "descending", "mixed"}) {
      if (order[0] == 'd') std::reverse(keys.begin(), keys.end());
      if (order[0] == 'm') std::shuffle(keys.begin(), keys.end(), random);
      std::map<std::string, std::string> model;
      CStringDict dict;
      for (std::size_t i = 0; i < 2 * keys.size(); ++i) {
        const std::string& key = keys[i < keys.size() ? i : random() % keys.size()];
        Set(dict, key, (model[key] = std::to_string(i)).c_str());
      }
      ASSERT_EQ(PairsOf(dict), test::Ordered(model)) << count << order;
    }
  }
}

TEST(CStringDict, ATreeThatFindsNoMemoryIsDoneWithout) {
  const std::vector<std::string> keys = test::CollidingKeys(100);
  std::map<std::string, std::string> model;
  for (const std::string& key : keys) model[key] = "new";
  bool isRefused = true;
  for (int nth = 1; isRefused; ++nth) {
    CStringDict dict;
    for (std::size_t i = 64; i > 0; --i) Set(dict, keys[i - 1], "old");  // in front of all others: no walk
    {
      const CTextString last = keys[63].c_str();
      const test::HeapFaults full(1, true);
      dict.SetValue(last, "new");
      EXPECT_GT(full.Tried(), 0);
    }
    {
      const test::HeapFaults faults(nth);
      for (const std::string& key : keys) {
        try {
          Set(dict, key, "new");
        } catch (const std::bad_alloc&) {
          Set(dict, key, "new");
        }
      }
      isRefused = faults.Refused();
    }
    ASSERT_EQ(PairsOf(dict), test::Ordered(model)) << nth;
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
