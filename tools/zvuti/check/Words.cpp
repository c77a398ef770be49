#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>

#include "check/Report.h"
#include "shared/Encoding.h"
#include "shared/Files.h"
#include "shared/GbkText.h"
#include "shared/WordFile.h"

namespace tool {
namespace {

std::string_view ViewOf(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

bool IsControl(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F; }

// The words by their folded form. Of equal words only the first is kept.
using Lines = std::unordered_map<std::string, const Word*>;

class WordCheck {
 public:
  WordCheck(Report& report, const std::string& file, const WordFile& words) : report_(report), file_(file) {
    for (const Word& word : words.words) {
      if (!word.text.empty()) lines_.emplace(ViewOf(word.folded), &word);
    }
    for (const auto& [folded, word] : lines_) lengths_.insert(folded.size());
  }

  void CheckOne(const Word& word) {
    if (word.isCut)
      Add(word, "odd-word", "a zero byte cuts this line short; the word is " + Quoted(word.text));
    if (word.text.empty()) return;
    CheckBytes(word);
    const Word* const first = lines_.at(std::string(ViewOf(word.folded)));
    if (first != &word) {
      Add(word, "duplicate", Quoted(word.text) + " is already in line " + std::to_string(first->line));
    } else if (const Word* const inner = InnerOf(word)) {
      Add(word, "hidden-word",
          Quoted(word.text) + " contains " + Quoted(inner->text) + " of line " + std::to_string(inner->line) +
              ", which already matches every text with this word");
    }
  }

 private:
  void CheckBytes(const Word& word) {
    const std::string& text = word.text;
    if (text == kUtf8Mark) return Add(word, "odd-word", "the UTF-8 byte order mark becomes a word");
    if (HasUtf8Mark(text)) {
      return Add(word, "dead-word",
                 "the UTF-8 byte order mark becomes part of the word, which does not match without it");
    }
    const auto control = std::find_if(text.begin(), text.end(), IsControl);
    if (control != text.end()) {
      return Add(word, "dead-word",
                 Quoted(text) + " contains the control byte " + ToHex({&*control, 1}) +
                     ", which chat text never contains");
    }
    const std::size_t broken = FindBroken(text);
    if (broken != text.npos && broken + 1 == text.size()) {
      Add(word, "odd-word",
          Quoted(text) + " ends in half a character, so it masks halves of other characters");
    } else if (broken != text.npos) {
      Add(word, "dead-word",
          Quoted(text) + " contains the bytes " + ToHex(std::string_view(text).substr(broken, 2)) +
              ", which are not a character, so it never matches valid text");
    } else if (text.find_first_not_of(' ') == text.npos) {
      Add(word, "odd-word", "a line of spaces is a word, which masks the spaces in every text");
    } else if (text.front() == ' ' || text.back() == ' ') {
      Add(word, "odd-word", Quoted(text) + " only matches together with its spaces");
    }
  }

  // Returns another word of the list that occurs within `word`, or null. Looks up each part of `word` whose
  // length is that of some word.
  const Word* InnerOf(const Word& word) const {
    const std::string folded(ViewOf(word.folded));
    for (std::size_t at = 0; at < folded.size(); ++at) {
      for (const std::size_t length : lengths_) {
        if (length >= folded.size() || at + length > folded.size()) break;
        const auto inner = lines_.find(folded.substr(at, length));
        if (inner != lines_.end() && Occurrences(word.folded, inner->second->folded) > 0)
          return inner->second;
      }
    }
    return nullptr;
  }

  void Add(const Word& word, const char* kind, const std::string& message) {
    report_.Add({file_, word.line}, kind, message);
  }

  Report& report_;
  const std::string& file_;
  Lines lines_;
  std::set<std::size_t> lengths_;
};

}  // namespace

void CheckWords(Report& report, const std::string& file, const std::string& bytes) {
  report.Read("word list");
  if (!CheckForeign(report, file, bytes)) return;
  const WordFile words = ParseWords(bytes);
  WordCheck check(report, file, words);
  for (const Word& word : words.words) check.CheckOne(word);
  if (words.endLine != 0) {
    report.Add({file, words.endLine}, "cut", "the library stops reading here, at the byte 1A");
  }
  if (words.words.empty()) report.Add({file, 1}, "cut", "this file contains no words");
  report.Read("word", words.words.size());
}

}  // namespace tool
