// The word list against the plain scan. Lines of words up to a zero byte, then a text.
#include <string>
#include <vector>

#include <ZvUtiLib/CUtiBlackList.h>

#include "fuzz/InputFile.h"
#include "tests/support/PlainWords.h"

namespace {

// What a text file gives: lines without their ends, up to the mark that ends a text file on one system.
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
  fuzz::Check(list.Load(file.Path().c_str()) == 1, "a word list is loaded");

  const std::vector<std::string> words = WordsOf(lines);
  CString result;
  list.ReplaceBlackWord(text.c_str(), result);
  fuzz::Check(result == test::MaskedPlainly(words, text).c_str(), "what the scan masks is masked");
  fuzz::Check(list.IsMatched(text.c_str()) == (test::IsMatchedPlainly(words, text) ? 1 : 0),
              "what the scan finds is found");
  return 0;
}
