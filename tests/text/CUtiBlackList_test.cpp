#include <ZvUtiLib/CUtiBlackList.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/HeapFaults.h"
#include "tests/support/PlainWords.h"
#include "tests/support/RandomBytes.h"
#include "tests/support/TempFolder.h"

namespace {

using test::RandomBytes;
using Words = std::vector<std::string>;

std::string FileOf(const Words& words) {
  std::string file;
  for (const std::string& word : words) file += word + "\n";
  return file;
}

std::string Masked(const CUtiBlackList& list, const char* text) {
  CString result = "old";
  EXPECT_EQ(list.ReplaceBlackWord(text, result), 1);
  return result.GetString();
}

// Expects what searching the text for one word after the other gives.
void ExpectPlainResults(const CUtiBlackList& list, const Words& words, const std::string& text) {
  SCOPED_TRACE(testing::PrintToString(words) + testing::PrintToString(text));
  ASSERT_EQ(Masked(list, text.c_str()), test::MaskedPlainly(words, text));
  ASSERT_EQ(list.IsMatched(text.c_str()), test::IsMatchedPlainly(words, text) ? 1 : 0);
}

TEST(CUtiBlackList, MasksEveryWordAndNothingElse) {
  const struct {
    const char *file, *text, *masked;
  } cases[] = {
      {"", "abc", "abc"},
      {"a\n\x1A\nb", "ab", "*b"},  // the mark that ends a text file
      {"\r\n\n\r\n", "a\r\nb", "a\r\nb"},
      {"ABC\r\nBCD\r\n", "xabcdx", "x****x"},
      {"CHEAP\nHEAPS\n\xB7\xE3\xD2\xB6", "buy cheaps, \xB7\xE3\xD2\xB6 or cheat",
       "buy ******, **** or cheat"},  // 枫叶
      {"AA", "aaa", "**a"},
      {"AA\nBAA", "baaa aaaa", "***a ****"},  // the hidden AA at 1 keeps the next one, at 2, from counting
      {" a", "ba a", "ba**"},
      {"\xB0\xA1\xB0\xA2", "x\xB0\xA1\xB0\xA2y", "x****y"},  // 啊阿
      {"\xA1\xB0", "\xB0\xA1\xB0\xA1", "\xB0\xA1\xB0\xA1"},  // in the middle of 啊啊
      {"a", "\x81\x61\x81\x41", "\x81\x61\x81\x41"},         // a trail byte is not a letter
      {"\x81\x61", "\x81\x41\x81\x61", "\x81\x41**"},
      {"\xA3\xE1", "\xA3\xC1\xA3\xE1", "\xA3\xC1**"},  // full-width letters do not fold
      {"\x81", "\x81\x41\x81", "*A*"},                 // half a character
      {"\x81\nA", "\x81\x41\x61", "*A*"},
      // After the match at 0 stepping goes on inside B0 B0, and after the one at 4 inside B0 x.
      {"\xB0", "\xB0\xB0\xA1\xB0\xB0x\xA1\xB0y", "**\xA1\xB0*x\xA1\xB0y"},
  };
  const test::TempFolder folder;
  for (const auto& c : cases) {
    CUtiBlackList list;
    ASSERT_EQ(list.Load(folder.Write("words", c.file).c_str()), 1);
    EXPECT_EQ(Masked(list, c.text), c.masked) << c.file;
    EXPECT_EQ(list.IsMatched(c.text), std::string(c.text) != c.masked) << c.file;
    EXPECT_EQ(Masked(list, nullptr), "");
    EXPECT_EQ(list.IsMatched(nullptr), 0);
  }
}

TEST(CUtiBlackList, GrowsWithEachLoad) {
  const test::TempFolder folder;
  CUtiBlackList list;
  EXPECT_EQ(Masked(list, "ab"), "ab");
  EXPECT_EQ(list.Load(folder.Write("empty", "\n\r\n").c_str()), 1);
  EXPECT_EQ(list.IsLoaded(), 0);
  for (const char* words : {"ab\n", "cd", "ab\n"}) {
    EXPECT_EQ(list.Load(folder.Write("words", words).c_str()), 1);
    EXPECT_EQ(list.Load(folder.Path("missing").c_str()), 0);
    EXPECT_EQ(list.IsLoaded(), 1);
  }
  EXPECT_EQ(Masked(list, "ab cd ad"), "** ** ad");
}

TEST(CUtiBlackList, TheResultMayBeTheText) {
  const test::TempFolder folder;
  CUtiBlackList list;
  list.Load(folder.Write("words", "ABC\nBCD\nAA").c_str());
  CString text = "a text, longer than a short string: abcd aaa";
  list.ReplaceBlackWord(text, text);
  EXPECT_EQ(text, "a text, longer than a short string: **** **a");
  text = "xabcd";
  list.ReplaceBlackWord(text.GetString() + 1, text);
  EXPECT_EQ(text, "****");
}

TEST(CUtiBlackList, GivesWhatTheScanOfTheListGives) {
  const test::TempFolder folder;
  const std::string empty = folder.Write("empty", "");
  for (unsigned round = 0; round < 4000; ++round) {
    RandomBytes random(round);
    Words words = random.List(1 + random.Below(round % 10 == 0 ? 200 : 8), 1 + random.Below(7));
    words.push_back(random.Run(1 + random.Below(3)));
    const std::string path = folder.Write("words", FileOf(words));
    CUtiBlackList list;
    std::int64_t blocks = std::ssize(words);  // words this short take one each; then comes the index
    {
      const test::HeapFaults opening(0);
      list.Load(empty.c_str());
      blocks += opening.Tried();
    }
    {
      const bool isIndexRefused = round % 4 == 1;
      const test::HeapFaults faults(isIndexRefused ? blocks + 1 : 0, true);
      ASSERT_EQ(list.Load(path.c_str()), 1);
      ASSERT_EQ(faults.Refused(), isIndexRefused);
    }
    for (int i = 0; i < 8; ++i) {
      const std::string text = random.Text(random.Below(40)) + random.Run(random.Below(i < 4 ? 2 : 30));
      ASSERT_NO_FATAL_FAILURE(ExpectPlainResults(list, words, text + random.Text(random.Below(30))));
    }
  }
}

TEST(CUtiBlackList, LongTextsAndLongWordsGiveTheSame) {
  const test::TempFolder folder;
  for (unsigned round = 0; round < 40; ++round) {
    RandomBytes random(round);
    const std::size_t length = round == 0 ? 65'536 : 6'000;
    const std::string text = random.Text(length);
    Words words = random.List(20, 12);
    for (int i = 0; i < 10; ++i) words.push_back(text.substr(random.Below(length), 1 + random.Below(5'000)));
    words.emplace_back(length / 3, 'a');
    CUtiBlackList list;
    ASSERT_EQ(list.Load(folder.Write("words", FileOf(words)).c_str()), 1);
    ASSERT_NO_FATAL_FAILURE(ExpectPlainResults(list, words, text));
    ASSERT_NO_FATAL_FAILURE(ExpectPlainResults(list, words, std::string(length, 'a')));
  }
}

TEST(CUtiBlackList, TensOfThousandsOfWordsGiveTheSame) {
  const test::TempFolder folder;
  std::mt19937 random(4);
  const auto hanzi = [&random](std::size_t characters) {
    std::string text;
    while (characters-- > 0)
      text += {static_cast<char>(0xB0 + random() % 72), static_cast<char>(0xA1 + random() % 94)};
    return text;
  };
  for (const std::size_t count : {300u, 2'000u, 40'000u}) {
    Words words;
    for (std::size_t i = 0; i < count; ++i)
      words.push_back(i % 2 == 0 ? std::to_string(random()) + "\xB0\xA1" : hanzi(2 + i % 3));
    for (std::size_t i = 0; i < count; i += 3) words[i].pop_back();  // half a character at the end
    CUtiBlackList list;
    ASSERT_EQ(list.Load(folder.Write("words", FileOf(words)).c_str()), 1);
    ExpectPlainResults(list, words, "x" + words[0] + words[count - 2] + "1234567");
    ExpectPlainResults(list, words, hanzi(30));
    std::string all;
    for (std::size_t i = 0; i < 300; ++i) all += words[i * 7 % count];
    ExpectPlainResults(list, words, all);
    ExpectPlainResults(list, words, hanzi(9) + words[1] + hanzi(20) + words[count - 1] + hanzi(9));
  }
}

// The heap refuses from the nth block on. The queries then use the words before the one that was refused.
TEST(CUtiBlackList, WordsStayFoundWhenTheHeapRefuses) {
  const test::TempFolder folder;
  Words words;
  for (char letter = 'A'; letter <= 'Z'; ++letter) words.push_back(std::string(20, letter) + "\xB0\xA1");
  const std::string first = folder.Write("first", words[0]), path = folder.Write("words", FileOf(words));
  int loadedWithoutIndex = 0;
  std::set<std::ptrdiff_t> counts;  // of words kept by the loads that failed
  bool isRefused = true;
  for (int nth = 1; isRefused; ++nth) {
    CUtiBlackList list;
    list.Load(first.c_str());
    bool isLoaded = false;
    {
      const test::HeapFaults faults(nth, true);
      try {
        isLoaded = list.Load(path.c_str()) == 1;
      } catch (const std::bad_alloc&) {
      }
      isRefused = faults.Refused();
    }
    const auto isLost = [&](const std::string& word) { return list.IsMatched(word.c_str()) == 0; };
    const auto lost = std::find_if(words.begin(), words.end(), isLost);
    EXPECT_TRUE(std::all_of(lost, words.end(), isLost));
    EXPECT_TRUE(!isLoaded || lost == words.end());
    ExpectPlainResults(list, Words(words.begin(), lost), "x" + words[3] + words[25] + words[3]);
    if (!isLoaded) counts.insert(lost - words.begin());
    loadedWithoutIndex += isLoaded && isRefused ? 1 : 0;
  }
  EXPECT_EQ(counts.size(), words.size() - 1);  // 1 to 25
  EXPECT_GT(loadedWithoutIndex, 0);
}

TEST(CUtiBlackList, QueriesAllocateNothingButTheResult) {
  const test::TempFolder folder;
  CUtiBlackList list;
  list.Load(folder.Write("words", "ABC\n\xB0\xA1\xB0\xA2").c_str());  // 啊阿
  CString result;
  const std::string text = "a text, longer than a short string: \xB0\xA1\xB0\xA2\x61\x62\x63";
  const test::HeapFaults heap(0);
  EXPECT_EQ(list.IsMatched(text.c_str()), 1);
  EXPECT_EQ(heap.Tried(), 0);
  for (int i = 0; i < 2; ++i) list.ReplaceBlackWord(text.c_str(), result);
  EXPECT_EQ(heap.Tried(), 1);  // the result keeps its memory
}

// Words that overlap themselves need a scratch array, and matches of many halves of characters need notes.
TEST(CUtiBlackList, MasksAllWordsOnAFullHeap) {
  const test::TempFolder folder;
  struct Case {
    std::string words, text, masked;
  } overlapping{"AA\nBAA\nC", "aaac baaa aaaa c", "**a* ***a **** *"},
      halves{"", std::string(26, 'a') + "\xB0\xA1 \x61\xB0\xA1", std::string(27, '*') + "\xA1 **\xA1"};  // 啊
  for (std::size_t i = 1; i <= 26; ++i) halves.words += std::string(i, 'A') + "\xB0\n";
  for (const Case& c : {overlapping, halves}) {
    CUtiBlackList list;
    list.Load(folder.Write("words", c.words).c_str());
    CString result;
    list.ReplaceBlackWord(c.masked.c_str(), result);
    bool isRefused = false;
    {
      const test::HeapFaults faults(1, true);
      list.ReplaceBlackWord(c.text.c_str(), result);
      isRefused = faults.Refused();
    }
    EXPECT_TRUE(isRefused);
    EXPECT_STREQ(result.GetString(), c.masked.c_str());
  }
}

}  // namespace
