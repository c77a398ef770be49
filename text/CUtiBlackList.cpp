#include <ZvUtiLib/CUtiBlackList.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <string_view>
#include <utility>

#include "platform/PointsInto.h"
#include "platform/mfc/CFile.h"
#include "text/words/WordIndex.h"
#include "text/words/WordScan.h"

namespace {

constexpr int kBlockSize = 10;

std::string_view ViewOf(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

// Calls visit(word) for each word, until it returns true.
template <class Visit>
bool VisitWords(const CStringList& words, Visit visit) {
  for (POSITION position = words.GetHeadPosition(); position;) {
    if (visit(ViewOf(words.GetNext(position)))) return true;
  }
  return false;
}

}  // namespace

CUtiBlackList::WordList::WordList() : CStringList(kBlockSize) {}
CUtiBlackList::WordList::~WordList() = default;

// If the index can't be allocated, the queries scan for each word.
void CUtiBlackList::WordList::BuildIndex() noexcept {
  index.reset();
  if (IsEmpty()) return;
  try {
    index = std::make_unique<const zvuti::WordIndex>(*this);
  } catch (const std::exception&) {
    index.reset();
  }
}

CUtiBlackList::CUtiBlackList() = default;
CUtiBlackList::~CUtiBlackList() = default;

int CUtiBlackList::Load(const char* path) {
  CStdioFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeText | CFile::shareDenyNone)) return 0;
  try {
    CString line;
    while (file.ReadString(line)) {
      if (!line.IsEmpty()) words_.AddTail(line.MakeUpper());
    }
  } catch (...) {
    words_.BuildIndex();
    throw;
  }
  words_.BuildIndex();
  return 1;
}

int CUtiBlackList::IsLoaded() const { return words_.IsEmpty() ? 0 : 1; }

int CUtiBlackList::IsMatched(const char* text) const {
  if (!text) return 0;
  const std::string_view all = text;
  if (words_.index) return words_.index->IsMatched(all) ? 1 : 0;
  const auto isFound = [&](std::string_view word) {
    return zvuti::WordScan(all, word).Next() != std::string_view::npos;
  };
  return VisitWords(words_, isFound) ? 1 : 0;
}

// The result keeps its memory from one call to the next, unless the text lies in it.
int CUtiBlackList::ReplaceBlackWord(const char* text, CString& result) const {
  if (zvuti::PointsInto(result, text)) {
    CString masked(text);
    words_.Mask(text, masked);
    result = std::move(masked);
  } else {
    result = text;
    words_.Mask(text, result);
  }
  return 1;
}

// `masked` is a copy of the text. If the index masks some words and then fails, all words are scanned for:
// masking one twice does no harm.
void CUtiBlackList::WordList::Mask(const char* text, CString& masked) const {
  if (masked.IsEmpty()) return;
  const std::string_view all(text, static_cast<std::size_t>(masked.GetLength()));
  char* out = masked.GetBuffer(masked.GetLength());
  if (!index || !index->Mask(all, out)) {
    VisitWords(*this, [&](std::string_view word) {
      zvuti::WordScan scan(all, word);
      for (std::size_t at; (at = scan.Next()) != std::string_view::npos;) {
        std::memset(out + at, '*', word.size());
      }
      return false;
    });
  }
  masked.ReleaseBuffer(static_cast<int>(all.size()));
}
