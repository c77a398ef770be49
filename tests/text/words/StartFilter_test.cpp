#include "text/words/StartFilter.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/support/HeapFaults.h"
#include "tests/support/RandomBytes.h"

namespace {

using Positions = std::set<std::size_t>;
using Words = std::vector<std::string>;

zvuti::StartFilter FilterOf(const Words& words) {
  zvuti::StartFilter filter(words.size());
  for (const std::string& word : words) filter.Add(word);
  return filter;
}

// What the filter names when it goes on at the next character each time.
Positions Named(const zvuti::StartFilter& filter, const std::string& text) {
  Positions named;
  filter.Visit(text, [&](std::size_t at) {
    named.insert(at);
    return at + zvuti::gbk::CharLength(text, at);
  });
  return named;
}

TEST(StartFilter, NamesThePositionsOfTheExampleInWordIndex) {
  const Words words = {"CHEAP", "HEAPS", "\xB7\xE3\xD2\xB6"};          // 枫叶
  const std::string text = "buy cheaps, \xB7\xE3\xD2\xB6 or cheat";    // 枫叶
  EXPECT_EQ(Named(FilterOf(words), text), (Positions{4, 5, 12, 20}));  // cheaps, heaps, 枫叶, cheat
}

TEST(StartFilter, NamesFewPositionsWhereNoWordStarts) {
  test::RandomBytes random(1);
  std::string latin, chinese;
  for (int i = 0; i < 5'000; ++i) {
    latin += static_cast<char>('A' + random.Below(26));
    chinese += {static_cast<char>(0xB0 + random.Below(72)), static_cast<char>(0xA1 + random.Below(94))};
  }
  Words words;
  for (std::size_t i = 0; i < 2'000; i += 40) {
    words.push_back(latin.substr(i, 6));
    words.push_back(chinese.substr(i, 6));
  }
  const zvuti::StartFilter filter = FilterOf(words);
  const std::size_t wanted = words.size() / 2;
  EXPECT_LT(Named(filter, latin).size(), 2 * wanted);
  EXPECT_LT(Named(filter, chinese).size(), 2 * wanted);
}

TEST(StartFilter, TheRowsOfAShortListTakeLittleMemory) {
  test::HeapFaults heap(0);
  const zvuti::DoubleByteFilter filter(1);
  EXPECT_LE(heap.LargestAsked(), 4096u);
}

}  // namespace
