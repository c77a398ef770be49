// CUtiBlackList: forbidden words, found in and masked out of what users write.
//
// Text is GBK; a word matches from the start of a character only, and Latin letters match regardless of
// case. After loading, any number of threads may query one object; a Load beside a query may not happen.
#pragma once

#include <memory>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CFileException.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/CStringList.h>

namespace zvuti {
class WordIndex;
}

/// A list of forbidden words. It begins empty and only grows.
class ZVUTILIB_API CUtiBlackList {
 public:
  CUtiBlackList();
  virtual ~CUtiBlackList();
  CUtiBlackList(const CUtiBlackList&) = delete;
  CUtiBlackList& operator=(const CUtiBlackList&) = delete;

  /// Adds the words of a text file: GBK, one word per line, taken whole, blanks included; empty lines are
  /// skipped. A UTF-8 byte order mark becomes part of the first word, since EF BB is a GBK character, too.
  /// Returns 1, also for a file without words; 0 when the file cannot be opened.
  /// When reading breaks off by an exception (CFileException, std::bad_alloc), the words read so far stay.
  int Load(const char* path);
  /// 1 when the list holds at least one word, else 0.
  int IsLoaded() const;
  /// 1 when the text contains a word of the list, else 0. A null text counts as "". Allocates nothing.
  int IsMatched(const char* text) const;
  /// Sets `result` to the text with an asterisk for each byte of each word found in it, and returns 1.
  /// Words that overlap are all masked; occurrences of one word are taken from the left and do not
  /// overlap. A null text gives an empty result. The text may be that of `result` itself; a result that is
  /// used again keeps its memory. Throws std::bad_alloc, with the result unchanged.
  int ReplaceBlackWord(const char* text, CString& result) const;

 private:
  /// The words in the order of their files, folded to capitals, and what finds them fast.
  struct WordList : CStringList {
    WordList();
    ~WordList();
    void BuildIndex() noexcept;
    void Mask(const char* text, CString& masked) const;

    /// Null while there are no words, and where the heap had no room for it.
    std::unique_ptr<const zvuti::WordIndex> index;
  };
  WordList words_;
};
