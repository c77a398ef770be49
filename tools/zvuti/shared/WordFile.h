// Splits a file of forbidden words into words as the library does, and remembers their lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/platform/CString.h>

namespace tool {

struct Word {
  std::size_t line = 0;  ///< counted from 1
  std::string text;      ///< GBK, as written in the file
  CString folded;        ///< the form that is searched for
  bool isCut = false;    ///< the line continues after a zero byte
};

struct WordFile {
  std::vector<Word> words;
  std::size_t endLine = 0;  ///< the line where a byte 1A ends the list early, or 0
};

WordFile ParseWords(std::string_view bytes);

/// Counts the non-overlapping occurrences of a folded word in a folded text.
std::size_t Occurrences(const CString& foldedText, const CString& word);

}  // namespace tool
