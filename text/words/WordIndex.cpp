#include "text/words/WordIndex.h"

#include <cstring>
#include <memory>
#include <new>

#include "text/words/Character.h"
#include "text/words/WordAutomatonBuilder.h"

namespace zvuti {
namespace {

constexpr auto kStop = std::string_view::npos;

bool EndsInHalfCharacter(std::string_view word) {
  return gbk::IsLeadByte(word.back()) && IsCharacterStart(word, 0, word.size() - 1);
}

}  // namespace

WordIndex::Sorted::Sorted(const CStringList& words) {
  for (POSITION position = words.GetHeadPosition(); position;) {
    const CString& text = words.GetNext(position);
    const std::string_view word(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    (EndsInHalfCharacter(word) ? half : whole).push_back(word);
  }
}

WordIndex::WordIndex(const CStringList& words) : WordIndex(Sorted(words)) {}

WordIndex::WordIndex(const Sorted& words)
    : hasWholeWords_(!words.whole.empty()), filter_(words.whole.size()), automaton_(words.whole.size()) {
  WordAutomatonBuilder builder(automaton_, words.whole.size());
  for (const std::string_view word : words.whole) {
    filter_.Add(word);
    builder.Add(word);
  }
  builder.Finish();
  if (!words.half.empty()) halfWords_ = std::make_unique<const HalfWordIndex>(words.half);
}

// Calls onWord(word, end) for the longest word that ends at each position. Returns true as soon as onWord
// does. onWord may get the same match twice, because the filter resumes up to three bytes before the end of a
// search. That is at most three bytes a search, so the cost stays linear.
template <class OnWord>
bool WordIndex::Search(std::string_view text, OnWord onWord) const {
  bool isStopped = false;
  filter_.Visit(text, [&](std::size_t start) {
    const std::size_t next = SearchFrom(text, start, onWord);
    isStopped = next == kStop;
    return isStopped ? text.size() : next;
  });
  return isStopped;
}

// Searches from one start that the filter named. Returns where the filter goes on, or kStop if onWord
// returned true.
template <class OnWord>
std::size_t WordIndex::SearchFrom(std::string_view text, std::size_t at, OnWord& onWord) const {
  WordAutomaton::Index node = WordAutomaton::kRoot;
  if (!Enter(text, at, node)) return at + gbk::CharLength(text, at);
  while (true) {
    if (automaton_.NodeAt(node).hasWord && onWord(automaton_.LinksOf(node).longestWord, at)) return kStop;
    if (at == text.size()) return at;
    const Character character = CharacterAt(text.data() + at);
    WordAutomaton::Index child;
    while ((child = automaton_.ChildOf(node, character.code)) == WordAutomaton::kRoot) {
      if (node == WordAutomaton::kRoot) return at + character.length;
      const std::uint8_t rest = automaton_.NodeAt(node).fallbackBytes;
      if (rest != WordAutomaton::Node::kDeep) return at - rest;
      node = automaton_.LinksOf(node).fallback;
    }
    node = child;
    at += character.length;
  }
}

// Looks up the first four bytes at `at`. Returns false if no word can start there. Otherwise `node`, which
// is the root before, becomes their entry. It stays the root if
// - fewer than four bytes are left,
// - no word starts with the four bytes, but one of up to three bytes may start at `at`,
// - a word of up to three bytes ends before the entry's node.
// If the entry is not the root, `at` moves past its whole characters.
bool WordIndex::Enter(std::string_view text, std::size_t& at, WordAutomaton::Index& node) const {
  if (text.size() - at < Prefix::kBytes) return true;
  const Prefix prefix(text.data() + at);
  const WordAutomaton::Index entry = automaton_.EntryOf(prefix.bytes);
  if (entry == WordAutomaton::kNone) return filter_.MayStartShort(text, at);
  node = entry;
  if (node != WordAutomaton::kRoot) at += prefix.wholeBytes;
  return true;
}

bool WordIndex::IsMatched(std::string_view text) const {
  const auto stop = [](WordAutomaton::Index, std::size_t) { return true; };
  return (hasWholeWords_ && Search(text, stop)) || (halfWords_ && halfWords_->IsMatched(text));
}

bool WordIndex::Mask(std::string_view text, char* out) const noexcept {
  std::unique_ptr<std::size_t[]> lastEnds;  // by overlapId: where the word's last match ended
  if (halfWords_ && !halfWords_->Mask(text, out)) return false;
  if (!hasWholeWords_) return true;
  const bool isStopped = Search(text, [&](WordAutomaton::Index index, std::size_t end) {
    while (index != WordAutomaton::kNone) {
      const WordAutomaton::Word word = automaton_.WordAt(index);
      index = word.shorter;
      const std::size_t start = end - word.length;
      if (word.overlapId != WordAutomaton::kNone) {
        if (!lastEnds) lastEnds.reset(new (std::nothrow) std::size_t[automaton_.OverlapIds()]());
        if (!lastEnds) return true;
        if (start < lastEnds[word.overlapId]) continue;
        lastEnds[word.overlapId] = end;
      }
      std::memset(out + start, '*', word.length);
    }
    return false;
  });
  return !isStopped;
}

}  // namespace zvuti
