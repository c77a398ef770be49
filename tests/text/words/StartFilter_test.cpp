#include "text/words/StartFilter.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/support/RandomBytes.h"

namespace {

using zvuti::gbk::CharLength;
using Positions = std::set<std::size_t>;
using Words = std::vector<std::string>;

std::string Folded(std::string text) {
  zvuti::gbk::FoldToUpper(text.data(), text.size());
  return text;
}

bool EndsInHalfCharacter(const std::string& word) {
  std::size_t last = 0;
  for (std::size_t i = 0; i < word.size(); i += CharLength(word, i)) last = i;
  return last + 1 == word.size() && zvuti::gbk::IsLeadByte(word[last]);
}

Positions CharacterStarts(const std::string& text) {
  Positions starts;
  for (std::size_t i = 0; i < text.size(); i += CharLength(text, i)) starts.insert(i);
  return starts;
}

Positions WordStarts(const Words& words, const std::string& text) {
  Positions starts;
  for (const std::size_t at : CharacterStarts(text)) {
    for (const std::string& word : words) {
      if (Folded(text).compare(at, word.size(), word) == 0) starts.insert(at);
    }
  }
  return starts;
}

// `sizedFor`: how many words the filter expects.
zvuti::StartFilter FilterOf(const Words& words, std::size_t sizedFor) {
  zvuti::StartFilter filter(sizedFor);
  for (const std::string& word : words) filter.Add(word);
  return filter;
}

// What the filter names when it goes on at the next character each time.
Positions Named(const zvuti::StartFilter& filter, const std::string& text) {
  Positions named;
  filter.Visit(text, [&](std::size_t at) {
    named.insert(at);
    return at + CharLength(text, at);
  });
  return named;
}

TEST(StartFilter, NeverKeepsBackAPositionWhereAWordStarts) {
  constexpr std::size_t kSizes[] = {1, 1'000, 100'000};  // few rows, more of them, no rows for characters
  std::size_t wordStarts = 0;
  for (unsigned round = 0; round < 6'000; ++round) {
    test::RandomBytes random(round);
    Words words = random.List(1 + random.Below(4), 1 + random.Below(8));
    words.push_back(random.Run(1 + random.Below(3)));
    std::erase_if(words, EndsInHalfCharacter);
    for (std::string& word : words) word = Folded(word);
    const zvuti::StartFilter filter = FilterOf(words, kSizes[round % 3]);
    const std::string text =
        random.Text(random.Below(20)) + random.Run(random.Below(30)) + random.Text(random.Below(30));
    const Positions characters = CharacterStarts(text), wanted = WordStarts(words, text);
    wordStarts += wanted.size();

    std::size_t next = 0;  // where the last call told the filter to go on
    Positions passed;
    filter.Visit(text, [&](std::size_t at) {
      auto goOn = characters.find(at);
      EXPECT_TRUE(at >= next && goOn != characters.end()) << at;
      if (goOn == characters.end()) return text.size();
      for (std::size_t skip = 1 + random.Below(3); skip > 0 && goOn != characters.end(); --skip) {
        passed.insert(*goOn++);
      }
      return next = goOn == characters.end() ? text.size() : *goOn;
    });
    for (const std::size_t at : wanted) {
      ASSERT_EQ(passed.count(at), 1u)
          << at << " in " << testing::PrintToString(text) << testing::PrintToString(words);
    }
  }
  EXPECT_GT(wordStarts, 20'000u);
}

TEST(StartFilter, NamesWhatTheExampleOfTheWordIndexSays) {
  const Words words = {"CHEAP", "HEAPS", "\xB7\xE3\xD2\xB6"};  // 枫叶
  const zvuti::StartFilter filter = FilterOf(words, words.size());
  const std::string text = "buy cheaps, \xB7\xE3\xD2\xB6 or cheat";  // 枫叶
  EXPECT_EQ(Named(filter, text), (Positions{4, 5, 12, 20}));         // cheaps, heaps, 枫叶, cheat
}

TEST(StartFilter, NamesFewOtherPositions) {
  test::RandomBytes random(1);
  std::string latin, chinese;
  for (int i = 0; i < 5'000; ++i) {
    latin += static_cast<char>('a' + random.Below(26));
    chinese += {static_cast<char>(0xB0 + random.Below(72)), static_cast<char>(0xA1 + random.Below(94))};
  }
  Words words;
  for (std::size_t i = 0; i < 100; ++i)
    words.push_back(i % 2 == 0 ? Folded(latin).substr(i * 40, 6) : chinese.substr(i * 40, 6));
  const zvuti::StartFilter filter = FilterOf(words, words.size());
  const std::size_t wanted = words.size() / 2;
  EXPECT_LT(Named(filter, latin).size(), 2 * wanted);
  EXPECT_LT(Named(filter, chinese).size(), 2 * wanted);
}

}  // namespace
