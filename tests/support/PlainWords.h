// A plain search for forbidden words. Tests compare the word list with it.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "gbk/CodePage936.h"

namespace test {

/// `text` with the words masked. For each word it searches a copy of the text folded to upper case; after a
/// match it continues after the matched word.
inline std::string MaskedPlainly(const std::vector<std::string>& words, const std::string& text) {
  std::string masked = text, folded = text;
  zvuti::gbk::FoldToUpper(folded.data(), folded.size());
  for (std::string word : words) {
    zvuti::gbk::FoldToUpper(word.data(), word.size());
    for (std::size_t at = 0; (at = zvuti::gbk::Find(folded, word, at)) != std::string::npos;
         at += word.size()) {
      masked.replace(at, word.size(), word.size(), '*');
    }
  }
  return masked;
}

/// True if the text contains one of the words.
inline bool IsMatchedPlainly(const std::vector<std::string>& words, std::string text) {
  zvuti::gbk::FoldToUpper(text.data(), text.size());
  return std::any_of(words.begin(), words.end(), [&](std::string word) {
    zvuti::gbk::FoldToUpper(word.data(), word.size());
    return zvuti::gbk::Find(text, word) != std::string::npos;
  });
}

}  // namespace test
