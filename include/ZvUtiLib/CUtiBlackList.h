// CUtiBlackList: finds and masks forbidden words in text that users write.
//
// Text is GBK. A match starts at the start of a character, and ASCII letters match regardless of case. After
// loading, any number of threads may query one object. Load must not run at the same time as a query.
#pragma once

#include <memory>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CFileException.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/CStringList.h>

namespace zvuti {
class WordIndex;
}

/// A list of forbidden words. It starts empty and can only grow.
class ZVUTILIB_API CUtiBlackList {
 public:
  CUtiBlackList();
  virtual ~CUtiBlackList();
  CUtiBlackList(const CUtiBlackList&) = delete;
  CUtiBlackList& operator=(const CUtiBlackList&) = delete;

  /// Adds the words of a text file in GBK, one word per line. A line is taken whole, blanks included; empty
  /// lines are skipped. A UTF-8 byte order mark becomes part of the first word, since EF BB is also a GBK
  /// character. Returns 1, even if the file has no words, or 0 if the file cannot be opened. If an exception
  /// (CFileException, std::bad_alloc) interrupts reading, the words read so far stay.
  int Load(const char* path);
  /// Returns 1 if the list holds at least one word, else 0.
  int IsLoaded() const;
  /// Returns 1 if the text contains a word of the list, else 0. A null text counts as "". Allocates nothing.
  int IsMatched(const char* text) const;
  /// Sets `result` to the text with each byte of each word found replaced by an asterisk, and returns 1.
  /// Overlapping words are all masked. Occurrences of the same word are found from left to right and do not
  /// overlap. A null text gives an empty result. `text` may point to the text of `result`. A reused `result`
  /// keeps its memory. Throws std::bad_alloc, leaving `result` unchanged.
  int ReplaceBlackWord(const char* text, CString& result) const;

 private:
  /// The words in file order, folded to capitals, and an index that speeds up searches.
  struct WordList : CStringList {
    WordList();
    ~WordList();
    void BuildIndex() noexcept;
    void Mask(const char* text, CString& masked) const;

    /// Null while there are no words, and if it could not be allocated.
    std::unique_ptr<const zvuti::WordIndex> index;
  };
  WordList words_;
};
