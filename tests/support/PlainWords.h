// Forbidden words found the slow way: the measure for the word list.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/CodePage936.h"

namespace test {

/// A text with its words masked, the plain way: search a folded copy of the text for each word, again and
/// again from behind the match.
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

/// Whether the text has one of the words.
inline bool IsMatchedPlainly(const std::vector<std::string>& words, std::string text) {
  zvuti::gbk::FoldToUpper(text.data(), text.size());
  return std::any_of(words.begin(), words.end(), [&](std::string word) {
    zvuti::gbk::FoldToUpper(word.data(), word.size());
    return zvuti::gbk::Find(text, word) != std::string::npos;
  });
}

}  // namespace test
