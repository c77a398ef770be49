#include "text/words/HalfWordIndex.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <unordered_map>

#include "text/words/Character.h"
#include "text/words/WordAutomatonBuilder.h"

namespace zvuti {
namespace {

using Index = WordAutomaton::Index;
constexpr Index kRoot = WordAutomaton::kRoot;

// Where stepping from a trail byte meets the text's own characters again.
std::size_t MeetingAfter(std::string_view text, std::size_t trail) {
  while (gbk::CharLength(text, trail) == 2) {  // the pair has this trail byte and the next lead byte
    if (gbk::CharLength(text, trail + 1) == 1) return trail + 2;
    trail += 2;
  }
  return trail + 1;
}

}  // namespace

HalfWordIndex::HalfWordIndex(const std::vector<std::string_view>& words)
    : filter_(words.size()), aligned_(words.size()), shifted_(words.size()) {
  WordAutomatonBuilder aligned(aligned_, words.size(), WordAutomatonBuilder::Edges::kBytes);
  WordAutomatonBuilder shifted(shifted_, words.size(), WordAutomatonBuilder::Edges::kShiftedBytes);
  for (const std::string_view word : words) {  // in the same order, so that a word has one number in both
    filter_.Add(word);
    aligned.Add(word);
    shifted.Add(word);
  }
  aligned.Finish();
  shifted.Finish();
}

// One search of a text. Without `out` it ends at the first match.
class HalfWordIndex::Search {
 public:
  Search(const HalfWordIndex& index, std::string_view text, char* out)
      : aligned_(index.aligned_), shifted_(index.shifted_), filter_(index.filter_), text_(text), out_(out) {}

  bool Run() {
    filter_.Visit(text_, [&](std::size_t start) { return From(start); });
    return isFound_;
  }

 private:
  // Where a word may be found next; see the head of HalfWordIndex.h.
  struct Next {
    std::size_t from = 0, alignedFrom = 0;
  };

  // Searches from a start that the filter named. Returns where the filter goes on.
  std::size_t From(std::size_t start) {
    std::size_t at = start;
    ByteSteps steps;
    Index aligned = kRoot, shifted = kRoot;
    if (!Enter(at, aligned, steps)) return start + gbk::CharLength(text_, start);
    while (true) {
      if (aligned_.NodeAt(aligned).hasWord) {
        isFound_ = true;
        if (!out_) return text_.size();
        TakeWords(aligned_, aligned, at, steps.IsTrail());
      }
      if (shifted_.NodeAt(shifted).hasWord) TakeWords(shifted_, shifted, at, steps.IsTrail());
      if (at == text_.size()) return at;
      const bool isTrail = steps.IsTrail(), isShifting = at < shiftedUntil_ || shifted != kRoot;
      const std::uint16_t label = steps.Next(text_.data() + at);
      if (isShifting) shifted = ShiftedAfter(shifted, label, at + 1);
      Index child;
      while ((child = aligned_.ChildOf(aligned, label)) == kRoot && aligned != kRoot) {
        const std::uint8_t rest = aligned_.NodeAt(aligned).fallbackBytes;
        if (!isShifting && rest != WordAutomaton::Node::kDeep) {
          return rest == 0 && isTrail ? at + 1 : at - rest;
        }
        aligned = aligned_.LinksOf(aligned).fallback;
      }
      if (child == kRoot && !isShifting) return isTrail ? at + 1 : at + gbk::CharLength(text_, at);
      aligned = child;
      ++at;
    }
  }

  // As WordIndex::Enter. The entry's node is four bytes deep.
  bool Enter(std::size_t& at, Index& node, ByteSteps& steps) const {
    if (text_.size() - at < Prefix::kBytes) return true;
    const Prefix prefix(text_.data() + at);
    const Index entry = aligned_.EntryOf(prefix.bytes);
    if (entry == WordAutomaton::kNone) return filter_.MayStartShort(text_, at);
    if (entry == kRoot) return true;
    node = entry;
    at += Prefix::kBytes;
    steps = ByteSteps(prefix.wholeBytes < Prefix::kBytes && at < text_.size());
    return true;
  }

  // The shifted node after a byte that ends at `at`: the root as soon as nothing shifted is left.
  Index ShiftedAfter(Index node, std::uint16_t label, std::size_t at) const {
    Index child;
    while ((child = shifted_.ChildOf(node, label)) == kRoot && node != kRoot) {
      node = shifted_.LinksOf(node).fallback;
    }
    return at - shifted_.DepthOf(child) < shiftedUntil_ ? child : kRoot;
  }

  // Masks the words that end with the node at `end`, if they may be found there.
  void TakeWords(const WordAutomaton& automaton, Index node, std::size_t end, bool isInside) {
    Index index = automaton.LinksOf(node).longestWord;
    while (index != WordAutomaton::kNone) {
      const WordAutomaton::Word word = automaton.WordAt(index);
      const std::size_t start = end - word.length;
      const auto known = next_.find(index);
      const Next next = known == next_.end() ? Next() : known->second;
      const bool isTaken = &automaton == &aligned_ ? start >= next.alignedFrom
                                                   : start >= next.from && start < next.alignedFrom;
      if (isTaken) {
        std::memset(out_ + start, '*', word.length);
        next_[index] = {end, isInside ? MeetingFrom(end) : end};
      }
      index = word.shorter;
    }
  }

  // All trail bytes up to a meeting share it.
  std::size_t MeetingFrom(std::size_t trail) {
    if (trail >= shiftedUntil_) shiftedUntil_ = MeetingAfter(text_, trail);
    return shiftedUntil_;
  }

  const WordAutomaton& aligned_;
  const WordAutomaton& shifted_;
  const StartFilter& filter_;
  const std::string_view text_;
  char* const out_;
  std::unordered_map<Index, Next> next_;  // by word
  std::size_t shiftedUntil_ = 0;          // the last meeting
  bool isFound_ = false;
};

bool HalfWordIndex::IsMatched(std::string_view text) const { return Search(*this, text, nullptr).Run(); }

bool HalfWordIndex::Mask(std::string_view text, char* out) const noexcept {
  try {
    Search(*this, text, out).Run();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace zvuti
