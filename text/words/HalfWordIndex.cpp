#include "text/words/HalfWordIndex.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <unordered_map>

#include "text/words/Character.h"
#include "text/words/WordAutomatonBuilder.h"

namespace zvuti {
namespace {

using Index = WordAutomaton::Index;
constexpr Index kRoot = WordAutomaton::kRoot;

}  // namespace

HalfWordIndex::HalfWordIndex(const std::vector<std::string_view>& words)
    : filter_(words.size()), aligned_(words.size()), shifted_(words.size()) {
  WordAutomatonBuilder aligned(aligned_, words.size(), WordAutomatonBuilder::Edges::kBytes);
  WordAutomatonBuilder shifted(shifted_, words.size(), WordAutomatonBuilder::Edges::kShiftedBytes);
  for (const std::string_view word : words) {  // in the same order, so that a word has one number in both
    filter_.Add(word);
    if (aligned.Add(word)) words_.push_back(word);
    longest_ = std::max(longest_, word.size());
    shifted.Add(word);
  }
  aligned.Finish();
  shifted.Finish();
}

// One search of a text. Without `out` it ends at the first match.
class HalfWordIndex::Search {
 public:
  Search(const HalfWordIndex& index, std::string_view text, char* out)
      : index_(index), text_(text), out_(out), stepsLeft_(text.size() * kStepsPerByte) {}

  bool Run() {
    Visit();
    if (isBeyondSteps_) {
      isFollowed_ = true;
      meeting_ = {};
      Visit();  // masks the same words again, and the others
    }
    return isFound_;
  }

 private:
  static constexpr std::size_t kStepsPerByte = 8;  // of shifted positions that are compared one by one

  // Where a word may be found next.
  struct Next {
    std::size_t from = 0;         // at shifted positions before alignedFrom
    std::size_t alignedFrom = 0;  // at characters
  };

  void Visit() {
    index_.filter_.Visit(text_, [&](std::size_t start) { return From(start); });
  }

  // Searches from a start that the filter named. Returns where the filter goes on.
  std::size_t From(std::size_t start) {
    const WordAutomaton &words = index_.aligned_, &shiftedWords = index_.shifted_;
    std::size_t at = start;
    ByteSteps steps;
    Index aligned = kRoot, shifted = kRoot;
    if (!Enter(at, aligned, steps)) return start + gbk::CharLength(text_, start);
    while (true) {
      if (words.NodeAt(aligned).hasWord) {
        isFound_ = true;
        if (out_) TakeWords(words, aligned, at, steps.IsTrail());
        if (!out_ || (isBeyondSteps_ && !isFollowed_)) return text_.size();
      }
      if (shiftedWords.NodeAt(shifted).hasWord) TakeWords(shiftedWords, shifted, at, steps.IsTrail());
      if (at == text_.size()) return at;
      const bool isTrail = steps.IsTrail();
      const bool isShifting = isFollowed_ && (at < meeting_.end || shifted != kRoot);
      const std::uint16_t label = steps.Next(text_.data() + at);
      if (isShifting) shifted = ShiftedAfter(shifted, label, at + 1);
      Index child;
      while ((child = words.ChildOf(aligned, label)) == kRoot && aligned != kRoot) {
        const std::uint8_t rest = words.NodeAt(aligned).fallbackBytes;
        if (!isShifting && rest != WordAutomaton::Node::kDeep) {
          return rest == 0 && isTrail ? at + 1 : at - rest;
        }
        aligned = words.LinksOf(aligned).fallback;
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
    const Index entry = index_.aligned_.EntryOf(prefix.bytes);
    if (entry == WordAutomaton::kNone) return index_.filter_.MayStartShort(text_, at);
    if (entry == kRoot) return true;
    node = entry;
    at += Prefix::kBytes;
    steps = ByteSteps(prefix.wholeBytes < Prefix::kBytes && at < text_.size());
    return true;
  }

  // The shifted node after a byte that ends at `at`: the root as soon as nothing shifted is left.
  Index ShiftedAfter(Index node, std::uint16_t label, std::size_t at) const {
    const WordAutomaton& words = index_.shifted_;
    Index child;
    while ((child = words.ChildOf(node, label)) == kRoot && node != kRoot)
      node = words.LinksOf(node).fallback;
    return at - words.DepthOf(child) < meeting_.end ? child : kRoot;
  }

  // Masks the words that end with the node at `end`, if they may be found there.
  void TakeWords(const WordAutomaton& automaton, Index node, std::size_t end, bool isInside) {
    Index index = automaton.LinksOf(node).longestWord;
    while (index != WordAutomaton::kNone) {
      const WordAutomaton::Word word = automaton.WordAt(index);
      const std::size_t start = end - word.length;
      const Next next = NextOf(index, start);
      if (&automaton == &index_.aligned_ ? start >= next.alignedFrom
                                         : start >= next.from && start < next.alignedFrom) {
        std::memset(out_ + start, '*', word.length);
        SetNext(index, end, isInside);
      }
      index = word.shorter;
    }
  }

  Next NextOf(Index word, std::size_t start) {
    if (isFollowed_) {
      const auto known = next_.find(word);
      return known == next_.end() ? Next() : known->second;
    }
    for (std::size_t i = 0; i < recent_.size(); ++i) {
      if (recent_[i].word == word && recent_[i].alignedFrom > start) return {0, recent_[i].alignedFrom};
    }
    return {};
  }

  void SetNext(Index word, std::size_t end, bool isInside) {
    if (isFollowed_) {
      next_[word] = {end, isInside ? MeetingAfter(end) : end};
      return;
    }
    const std::size_t alignedFrom = isInside ? MaskShifted(index_.words_[word], end) : end;
    Recent* slot = std::min_element(recent_.begin(), recent_.end(), [](const Recent& a, const Recent& b) {
      return a.alignedFrom < b.alignedFrom;
    });
    // It is free if every later match of its word starts after it.
    const bool isFree = slot->alignedFrom == 0 || slot->alignedFrom + index_.longest_ + Prefix::kBytes <= end;
    isBeyondSteps_ = isBeyondSteps_ || !isFree;
    *slot = {word, alignedFrom};
  }

  // Masks a word at the shifted positions from `trail` on, comparing at each of them. Returns where it may be
  // found at characters again.
  std::size_t MaskShifted(std::string_view word, std::size_t trail) {
    std::size_t at = trail;
    while (true) {
      const std::size_t meeting = MeetingAfter(at);
      bool isTrail = false;
      while (at < meeting && !IsShiftedAt(at, word, isTrail)) {
        at += gbk::CharLength(text_, at);
        CountStep();
        if (isBeyondSteps_) return at;
      }
      if (at >= meeting) return meeting;
      std::memset(out_ + at, '*', word.size());
      at += word.size();
      if (!isTrail) return at;
    }
  }

  // Sets `isTrail` to whether a trail byte follows the word.
  bool IsShiftedAt(std::size_t at, std::string_view word, bool& isTrail) const {
    if (text_[at] != word[0] || text_.size() - at < word.size()) return false;
    ByteSteps steps(true);
    for (std::size_t i = 0; i < word.size(); ++i) {
      if (static_cast<char>(steps.Next(text_.data() + at + i)) != word[i]) return false;
    }
    isTrail = steps.IsTrail();
    return true;
  }

  // Where stepping from a trail byte meets the text's own characters again. The trail bytes before share it.
  std::size_t MeetingAfter(std::size_t trail) {
    if (trail >= meeting_.begin && trail < meeting_.end) return meeting_.end;
    std::size_t at = trail;
    while (gbk::CharLength(text_, at) == 2) {  // the pair has this trail byte and the next lead byte
      if (gbk::CharLength(text_, at + 1) == 1) {
        ++at;
        break;
      }
      at += 2;
      CountStep();
    }
    meeting_ = {trail, at + 1};
    return meeting_.end;
  }

  void CountStep() {
    if (isFollowed_) return;
    if (stepsLeft_ == 0) isBeyondSteps_ = true;
    if (stepsLeft_ > 0) --stepsLeft_;
  }

  const HalfWordIndex& index_;
  const std::string_view text_;
  char* const out_;
  bool isFound_ = false;

  // The first search compares a word that it found at the shifted positions after it. That is cheapest for
  // the few words of an ordinary text. Where there are too many, a second one follows all of them at once.
  struct Recent {
    Index word = WordAutomaton::kNone;
    std::size_t alignedFrom = 0;
  };
  std::array<Recent, 8> recent_;
  std::size_t stepsLeft_;
  bool isBeyondSteps_ = false, isFollowed_ = false;
  std::unordered_map<Index, Next> next_;  // by word, in the second search
  struct {
    std::size_t begin = 0, end = 0;
  } meeting_;  // the last one, and the trail bytes before it
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
