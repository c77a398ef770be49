// Compares the word list with a plain scan. Input: a file with one word per line; a zero byte; a text.
#include <string>
#include <vector>

#include <ZvUtiLib/CUtiBlackList.h>

#include "fuzz/InputFile.h"
#include "tests/support/PlainWords.h"

namespace {

// The words in a file: its lines without line ends, up to the end-of-file byte 0x1A.
std::vector<std::string> WordsOf(std::string_view file) {
  std::vector<std::string> words;
  file = fuzz::TakeUntil(file, '\x1A');
  while (!file.empty()) {
    const bool isEnded = file.find('\n') != std::string_view::npos;
    std::string_view line = fuzz::TakeUntil(file, '\n');
    if (isEnded && !line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (!line.empty()) words.emplace_back(line);
  }
  return words;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::InputFile file;
  std::string_view rest = fuzz::BytesOf(data, size);
  const std::string_view lines = fuzz::TakeUntil(rest, '\0');
  const std::string text(fuzz::TakeUntil(rest, '\0'));
  file.Write(lines);
  CUtiBlackList list;
  fuzz::Check(list.Load(file.Path().c_str()) == 1, "the word list loads");

  const std::vector<std::string> words = WordsOf(lines);
  CString result;
  list.ReplaceBlackWord(text.c_str(), result);
  fuzz::Check(result == test::MaskedPlainly(words, text).c_str(), "the list masks what the scan masks");
  fuzz::Check(list.IsMatched(text.c_str()) == (test::IsMatchedPlainly(words, text) ? 1 : 0),
              "the list finds a word exactly if the scan does");
  return 0;
}
