#include <ZvUtiLib/data/CStringDict.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "tests/support/CollidingKeys.h"
#include "tests/support/PlainDict.h"
#include "tests/support/RefuseEach.h"

namespace {

using test::Pairs;
using test::PairsOf;

void Set(CStringDict& dict, const std::string& key, const char* value) {
  dict.SetValue(CTextString(std::string_view(key)), value);
}

// Sets all keys, and again in a random order, as long as `count` says; expects the order of visiting.
void ExpectOrder(const std::vector<std::string>& keys, std::size_t count, std::mt19937& random) {
  std::map<std::string, std::string> model;
  CStringDict dict;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string& key = keys[i < keys.size() ? i : random() % keys.size()];
    Set(dict, key, (model[key] = std::to_string(i)).c_str());
  }
  ASSERT_EQ(PairsOf(dict), test::Ordered(model));
}

TEST(CStringDict, OrderOfVisitingFollowsFromTheKeysAlone) {
  std::mt19937 random(11);
  for (unsigned round = 0; round < 400; ++round) {
    const std::size_t count = round == 0 ? 20'000 : round < 150 ? round : random() % 600;
    const auto kinds = 1 + random() % 255;  // few kinds of bytes make long common beginnings
    std::vector<std::string> keys(count);
    for (std::string& key : keys) {
      key.resize(random() % 20);
      for (char& byte : key) byte = static_cast<char>(1 + random() % kinds);
    }
    ASSERT_NO_FATAL_FAILURE(ExpectOrder(keys, 2 * count, random)) << round;
  }
}

TEST(CStringDict, ChosenKeysOfOneBucketAreFoundAndKeptInOrder) {
  std::mt19937 random(3);
  for (const std::size_t count : {31u, 32u, 33u, 34u, 40u, 400u, 3000u}) {
    std::vector<std::string> keys = test::CollidingKeys(count);
    for (std::size_t i = 0; i < count / 4; ++i) keys.push_back(std::to_string(random() % 9999));
    ASSERT_NO_FATAL_FAILURE(ExpectOrder(keys, 2 * keys.size(), random)) << count << " ascending";
    std::reverse(keys.begin(), keys.end());
    ASSERT_NO_FATAL_FAILURE(ExpectOrder(keys, 2 * keys.size(), random)) << count << " descending";
    std::shuffle(keys.begin(), keys.end(), random);
    ASSERT_NO_FATAL_FAILURE(ExpectOrder(keys, 2 * keys.size(), random)) << count << " mixed";
  }
}

// A tree that misses a key would put the next one in the wrong place.
TEST(CStringDict, ATreeThatCannotGrowIsDropped) {
  const std::vector<std::string> keys = test::CollidingKeys(70);
  for (const std::size_t depth : {32u, 64u}) {  // the bucket gets its tree now, has it already
    test::RefuseEachOf<CStringDict>(
        "set", test::AfterRefusal::kAllOrNothing,
        [&](CStringDict& dict) {
          for (std::size_t i = depth; i-- > 0;) Set(dict, keys[i], "value");
          if (depth == 64) Set(dict, keys[63], "value");
        },
        [&](CStringDict& dict) { Set(dict, keys[depth], "new"); },
        [&](CStringDict& dict) {
          Set(dict, keys[depth + 1], "next");
          std::string state;
          for (const auto& [key, value] : PairsOf(dict)) state.append(key).append(value).append(" ");
          return state;
        });
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
