#include "text/words/WordIndex.h"

#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "gbk/CodePage936.h"
#include "text/words/WordAutomatonBuilder.h"

namespace zvuti {
namespace {

bool EndsInHalfCharacter(std::string_view word) {
  std::size_t last = 0;
  for (std::size_t i = 0; i < word.size(); i += gbk::CharLength(word, i)) last = i;
  return gbk::IsLeadByte(word[last]) && last + 1 == word.size();
}

}  // namespace

WordIndex::WordIndex(const CStringList& words) : filter_(static_cast<std::size_t>(words.GetCount())) {
  WordAutomatonBuilder builder(static_cast<std::size_t>(words.GetCount()));
  for (POSITION position = words.GetHeadPosition(); position;) {
    const CString& text = words.GetNext(position);
    const std::string_view word(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    if (EndsInHalfCharacter(word)) {
      halfWords_.emplace_back(word);
    } else {
      filter_.Add(word);
      builder.Add(word);
    }
  }
  automaton_ = std::move(builder).Build();
}

// Finds where a walk that begins at `at` comes to within the first characters: to a node that stands for
// all of them, or just to the root. False when no word begins there.
bool WordIndex::Enter(std::string_view text, std::size_t& at, WordAutomaton::Index& node) const {
  node = WordAutomaton::kRoot;
  if (text.size() - at < Prefix::kBytes) return true;
  const Prefix prefix(text.data() + at);
  const WordAutomaton::Index entered = automaton_.Enter(prefix.bytes);
  if (entered == WordAutomaton::kNone) return filter_.MayBeginShort(text, at);
  node = entered;
  if (node != WordAutomaton::kRoot) at += prefix.length;
  return true;
}

// Calls onWord(word, end) for the longest word that ends at each place of the text, until it says true; a
// place may come twice. Each step of a walk takes a character or falls back to a shorter suffix, and the
// next walk begins less than a prefix before the end of the last one, so the whole is linear.
template <class OnWord>
bool WordIndex::Walk(std::string_view text, OnWord onWord) const {
  bool isStopped = false;
  filter_.Visit(text, [&](std::size_t at) {
    WordAutomaton::Index node;
    if (!Enter(text, at, node)) return at + gbk::CharLength(text, at);
    while (true) {
      if (automaton_.NodeAt(node).hasWord && onWord(automaton_.WordOf(node), at)) isStopped = true;
      if (isStopped || at == text.size()) return text.size();
      const Character character = CharacterAt(text.data() + at);
      WordAutomaton::Index child;
      while ((child = automaton_.Child(node, character.code)) == WordAutomaton::kRoot) {
        if (node == WordAutomaton::kRoot) return at + character.length;
        const std::uint8_t rest = automaton_.NodeAt(node).rest;
        if (rest != WordAutomaton::Node::kDeep) return at - rest;
        node = automaton_.FallbackOf(node);
      }
      node = child;
      at += character.length;
    }
  });
  return isStopped;
}

bool WordIndex::IsMatched(std::string_view text) const {
  return Walk(text, [](WordAutomaton::Index, std::size_t) { return true; });
}

bool WordIndex::Mask(std::string_view text, char* out) const noexcept {
  std::unique_ptr<std::size_t[]> loopEnds;  // end of the last match of each word that can overlap itself
  const bool isStopped = Walk(text, [&](WordAutomaton::Index index, std::size_t end) {
    while (index != WordAutomaton::kNone) {
      const std::size_t length = automaton_.LengthOf(index);
      const WordAutomaton::Link link = automaton_.LinkOf(index);
      const std::size_t begin = end - length;
      bool isMatch = true;
      if (link.loop != WordAutomaton::kNone) {
        if (!loopEnds) loopEnds.reset(new (std::nothrow) std::size_t[automaton_.Loops()]());
        if (!loopEnds) return true;
        isMatch = begin >= loopEnds[link.loop];
        if (isMatch) loopEnds[link.loop] = end;
      }
      if (isMatch) std::memset(out + begin, '*', length);
      index = link.next;
    }
    return false;
  });
  return !isStopped;
}

}  // namespace zvuti
