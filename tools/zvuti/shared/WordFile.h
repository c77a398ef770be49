// The words of a forbidden-word file, line by line, as the library takes them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/platform/CString.h>

namespace tool {

struct Word {
  std::size_t line = 0;  ///< counted from 1
  std::string text;      ///< GBK, as it stands in the file
  CString folded;        ///< as it is looked for
  bool isCut = false;    ///< the line goes on behind a zero byte
};

struct WordFile {
  std::vector<Word> words;
  std::size_t endLine = 0;  ///< the line in which an end-of-text byte ends the file early, or 0
};

WordFile ParseWords(std::string_view bytes);

/// How often a folded word occurs in a folded text; occurrences do not overlap.
std::size_t Occurrences(const CString& foldedText, const CString& word);

}  // namespace tool
