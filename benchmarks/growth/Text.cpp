// Words, numbers, times, names and the log.
#include <memory>

#include <ZvUtiLib/CDebug.h>
#include <ZvUtiLib/CKxTime.h>
#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiBlackList.h>
#include <ZvUtiLib/CUtiIO.h>
#include <ZvUtiLib/CUtiNumber.h>
#include <ZvUtiLib/gbk/Conversion.h>

#include "benchmarks/growth/Growth.h"

namespace growth {
namespace {

Work LoadWords(const std::string& words) {
  const std::string path = WriteFile("words.txt", words);
  return {words.size(), [path] { CUtiBlackList().Load(path.c_str()); }};
}

// Different words of `length` letters each, which begin alike.
std::string Counting(std::size_t bytes, std::size_t length) {
  std::string words;
  for (std::size_t i = 0; words.size() < bytes; ++i) {
    std::string word(length, 'A');
    for (std::size_t place = length, rest = i; place > 0 && rest > 0; rest /= 26)
      word[--place] = static_cast<char>('A' + rest % 26);
    words += word + "\n";
  }
  return words;
}

// A, AB, AAB, AAAB, ...
std::string RisingWords(std::size_t bytes) {
  std::string words;
  for (std::size_t i = 0; words.size() < bytes; ++i) words += std::string(i, 'A') + "B\n";
  return words;
}

Work Mask(const std::string& words, const std::string& text) {
  auto list = std::make_shared<CUtiBlackList>();
  list->Load(WriteFile("words.txt", words).c_str());
  return {text.size(), [list, text] {
            CString result;
            list->ReplaceBlackWord(text.c_str(), result);
          }};
}

// The word stands at the end of the text.
Work Match(const std::string& words, const std::string& text) {
  auto list = std::make_shared<CUtiBlackList>();
  list->Load(WriteFile("words.txt", words).c_str());
  return {text.size(), [list, text] { list->IsMatched(text.c_str()); }};
}

std::string Chinese(std::size_t bytes) { return Filled("\xB7\xE3\xD2\xB6\xD6\xD0\xB9\xFA", bytes); }

// Calls an operation that takes a text and gives a text.
template <auto kOperation>
Work OnText(const std::string& text) {
  return {text.size(), [text] {
            CString result;
            kOperation(text.c_str(), result);
          }};
}

constexpr auto kCheck = [](const char* text, CString&) { CUtiNumber::CheckNumber(text); };
constexpr auto kSeparate = [](const char* text, CString& out) { CUtiNumber::InsertSeparator(text, out); };
constexpr auto kRemove = [](const char* text, CString& out) { CUtiNumber::RemoveSeparator(text, out); };
constexpr auto kSpell = [](const char* text, CString& out) {
  CUtiNumber::ChangeLowerNum2UpperNum(text, out);
};
constexpr auto kTime = [](const char* text, CString&) { CKxTime::String2DWord(text); };
constexpr auto kNames = [](const char* text, CString&) {
  CUtiBase::CheckAccountValid(text);
  CUtiBase::CheckPasswdValid(text);
};
constexpr auto kDigits = [](const char* text, CString&) { CUtiBase::IsDigit(CString(text)); };
constexpr auto kChat = [](const char* text, CString&) { CUtiBase::IsChatValid(text); };
constexpr auto kCopy = [](const char* text, CString&) { CUtiBase::CopyToClipboard(text); };
constexpr auto kPath = [](const char* text, CString&) { CUtiIO::GetGamePath(1, text); };
constexpr auto kLog = [](const char* text, CString&) { CDebug::LogOut("%s", text); };

Work ReadFirstWord(std::size_t size) {
  const std::string path = WriteFile("word", std::string(size, 'x'));
  return {size, [path] { CUtiIO::ReadDWordFromFile(path.c_str()); }};
}

template <class Convert>
Work OnBytes(const std::string& text, Convert convert) {
  return {text.size(), [text, convert] { convert(text); }};
}

// Words of three to nine bytes that end in half a character, one a line, or all of them as a text.
std::string HalfWords(std::size_t bytes, const char* lineEnd) {
  std::string words;
  for (unsigned i = 0; words.size() < bytes; ++i) {
    for (unsigned rest = i, k = 0; k <= i % 4; ++k, rest /= 71) {
      words += {static_cast<char>(0xB0 + rest % 71), static_cast<char>(0xA1 + rest % 89)};
    }
    words += std::string("\xB0") + lineEnd;
  }
  return words;
}

}  // namespace

std::vector<Shape> TextShapes() {
  constexpr std::size_t kText = 20'000;
  return {
      {"CUtiBlackList::Load/short", kText, [](std::size_t n) { return LoadWords(Counting(n, 4)); }},
      {"CUtiBlackList::Load/long", kText, [](std::size_t n) { return LoadWords(Counting(n, 200)); }},
      {"CUtiBlackList::Load/one", kText, [](std::size_t n) { return LoadWords(std::string(n, 'A')); }},
      {"CUtiBlackList::Load/repeated-prefixes", kText,
       [](std::size_t n) { return LoadWords(RisingWords(n)); }},
      {"CUtiBlackList::Load/equal", kText, [](std::size_t n) { return LoadWords(Filled("AB\n", n)); }, 1500},
      {"CUtiBlackList::Load/half-characters", kText,
       [](std::size_t n) { return LoadWords(Filled("A\xB0\nB\xB1\n", n)); }, 1500, 120},
      {"CUtiBlackList::Load/line-ends", kText, [](std::size_t n) { return LoadWords(std::string(n, '\n')); }},
      {"CUtiBlackList::ReplaceBlackWord/clean", kText,
       [](std::size_t n) { return Mask(Counting(2000, 6), Filled("hello, world ", n)); }},
      {"CUtiBlackList::ReplaceBlackWord/chinese", kText,
       [](std::size_t n) { return Mask("\xD6\xD0\xB9\xFA\xC8\xCB\n", Chinese(n)); }},
      {"CUtiBlackList::ReplaceBlackWord/all-words", kText,
       [](std::size_t n) { return Mask(Counting(2000, 6), Filled("AAAAAB", n)); }},
      {"CUtiBlackList::ReplaceBlackWord/nearly-words", kText,
       [](std::size_t n) { return Mask(RisingWords(20'000), std::string(n, 'A')); }},
      {"CUtiBlackList::ReplaceBlackWord/overlapping", kText,
       [](std::size_t n) { return Mask("AA\nAAA\nAAAA\n" + std::string(500, 'A'), std::string(n, 'A')); }},
      {"CUtiBlackList::ReplaceBlackWord/half-characters", kText,
       [](std::size_t n) { return Mask("A\xB0\n\xB7\xE3\xD2\n", Filled("A\xB0\xB7\xE3\xD2", n)); }},
      {"CUtiBlackList::ReplaceBlackWord/half-words", kText,
       [](std::size_t n) { return Mask(HalfWords(20'000, "\n"), HalfWords(n, "")); }},
      // Up to 200 words match at each character.
      {"CUtiBlackList::ReplaceBlackWord/rising-half-words", kText,
       [](std::size_t n) {
         std::string words;
         for (std::size_t i = 1; i < 200; ++i) words += Filled("\xB0\xA1", i * 2) + "\xB0\n";
         return Mask(words, Filled("\xB0\xA1", n));
       },
       5000},
      {"GbkToUtf8/chinese", kText, [](std::size_t n) { return OnBytes(Chinese(n), zvuti::GbkToUtf8); }},
      {"GbkToUtf16/lone-leads", kText,
       [](std::size_t n) { return OnBytes(Filled("\x81 ", n), zvuti::GbkToUtf16); }},
      {"GbkToUtf8/euros", kText,
       [](std::size_t n) { return OnBytes(std::string(n, '\x80'), zvuti::GbkToUtf8); }},
      {"Utf8ToGbk/broken", kText,
       [](std::size_t n) { return OnBytes(std::string(n, '\xE4'), zvuti::Utf8ToGbk); }},
      {"CUtiBlackList::IsMatched/at-the-end", kText,
       [](std::size_t n) { return Match(std::string(20, 'A') + "B\n", std::string(n, 'A') + "B"); }},
      {"CUtiBlackList::IsMatched/half-characters", kText,
       [](std::size_t n) { return Match("A\xB0\n", std::string(n, '\xB0')); }},
      {"CUtiNumber::CheckNumber/digits", kText,
       [](std::size_t n) { return OnText<kCheck>(std::string(n, '9')); }},
      {"CUtiNumber::InsertSeparator/digits", kText,
       [](std::size_t n) { return OnText<kSeparate>(std::string(n, '9')); }},
      {"CUtiNumber::RemoveSeparator/separators", kText,
       [](std::size_t n) { return OnText<kRemove>(std::string(n, ',')); }},
      {"CUtiNumber::ChangeLowerNum2UpperNum/digits", kText,
       [](std::size_t n) { return OnText<kSpell>(std::string(n, '1')); }},
      {"CUtiNumber::ChangeLowerNum2UpperNum/zeros", kText,
       [](std::size_t n) { return OnText<kSpell>(std::string(n, '0')); }},
      {"CKxTime::String2DWord/digits", kText,
       [](std::size_t n) { return OnText<kTime>(std::string(n, '9')); }},
      {"CKxTime::String2DWord/signs", kText,
       [](std::size_t n) { return OnText<kTime>(std::string(n, '-')); }},
      {"CKxTime::String2DWord/blanks", kText,
       [](std::size_t n) { return OnText<kTime>(std::string(n, ' ')); }},
      {"CUtiBase::CheckAccountValid/letters", kText,
       [](std::size_t n) { return OnText<kNames>(std::string(n, 'a')); }},
      {"CUtiBase::IsDigit/digits", kText, [](std::size_t n) { return OnText<kDigits>(std::string(n, '1')); }},
      {"CUtiBase::IsChatValid/blanks", kText,
       [](std::size_t n) { return OnText<kChat>(std::string(n, ' ')); }},
      {"CUtiBase::CopyToClipboard/long", kText,
       [](std::size_t n) { return OnText<kCopy>(std::string(n, 'x')); }},
      {"CUtiIO::GetGamePath/long", kText, [](std::size_t n) { return OnText<kPath>(std::string(n, 'x')); }},
      {"CUtiIO::ReadDWordFromFile/large", kText, ReadFirstWord},
      {"CDebug::LogOut/long", kText, [](std::size_t n) { return OnText<kLog>(std::string(n, 'x')); }},
      {"CDebug::LogOut/half-characters", kText,
       [](std::size_t n) { return OnText<kLog>(std::string(n, '\x81')); }},
  };
}

}  // namespace growth
