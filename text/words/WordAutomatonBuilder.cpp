#include "text/words/WordAutomatonBuilder.h"

#include <algorithm>
#include <new>
#include <utility>

namespace zvuti {
namespace {

constexpr std::size_t kNodesOfWord = 4;
constexpr std::size_t kMostWords = 1'000'000;  // to take the memory of their nodes for at once
constexpr std::size_t kLabels = std::size_t{1} << 16;

}  // namespace

WordAutomatonBuilder::WordAutomatonBuilder(std::size_t words) : childOfRoot_(kLabels) {
  const std::size_t nodes = 1 + std::min(words, kMostWords) * kNodesOfWord;
  built_.nodes_.reserve(nodes);
  built_.wordOfNode_.reserve(nodes);
  built_.fallbacks_.reserve(nodes);
  drafts_.reserve(nodes);
  built_.edges_.Reserve(words);    // a word adds no more than one edge,
  built_.entries_.Reserve(words);  // and one entry
  PushNode(0, kRoot, kNone);
}

void WordAutomatonBuilder::Add(std::string_view word) {
  Index node = kRoot;
  Index entered = kRoot;  // the node of the characters within the prefix
  std::size_t depth = 0;
  for (std::size_t at = 0; at < word.size(); ++depth) {
    const Character character = CharacterAt(word.data() + at);
    const Index child = ChildOf(node, character.code);
    node = child != kRoot ? child : AddChild(node, character.code, depth);
    at += character.length;
    if (at <= Prefix::kBytes) entered = node;
  }
  if (built_.nodes_[node].hasWord) return;  // was there before
  const auto index = static_cast<Index>(built_.words_.size());
  SetWord(node, index);
  built_.words_.push_back({static_cast<std::uint32_t>(word.size()), kNone});
  if (CanOverlapItself(word)) LinkOf(index).loop = built_.loops_++;
  AddEntry(word, entered);
}

// A word's characters that no earlier word has stand in a row; only the first of them needs an edge.
WordAutomatonBuilder::Index WordAutomatonBuilder::AddChild(Index parent, std::uint16_t label,
                                                           std::size_t depth) {
  if (built_.nodes_.size() >= kNone) throw std::bad_alloc();
  const auto child = static_cast<Index>(built_.nodes_.size());
  if (depth == firstOfDepth_.size()) firstOfDepth_.push_back(kNone);
  if (parent == kRoot) childOfRoot_[label] = child;
  PushNode(label, parent, firstOfDepth_[depth]);
  firstOfDepth_[depth] = child;
  if (child == parent + 1) {
    built_.nodes_[parent].isNextChild = true;
  } else {
    built_.nodes_[parent].hasBranches = true;
    built_.edges_.Add({parent, child}, WordAutomaton::HashOf(parent, label));
  }
  return child;
}

void WordAutomatonBuilder::PushNode(std::uint16_t label, Index parent, Index nextOfDepth) {
  built_.nodes_.push_back({label, false, false, false, 0});
  built_.wordOfNode_.push_back(kNone);
  built_.fallbacks_.push_back(kRoot);
  drafts_.push_back({parent, nextOfDepth});
}

void WordAutomatonBuilder::SetWord(Index node, Index word) {
  built_.nodes_[node].hasWord = true;
  built_.wordOfNode_[node] = word;
}

void WordAutomatonBuilder::AddEntry(std::string_view word, Index node) {
  if (word.size() < Prefix::kBytes) return;
  const Prefix prefix(word.data());
  if (built_.Enter(prefix.bytes) != kNone) return;
  built_.entries_.Add({prefix.bytes, node}, WordAutomaton::HashOf(prefix.bytes));
}

// Shorter suffixes come first: whatever a node falls back to is complete when its turn comes.
WordAutomaton WordAutomatonBuilder::Build() && {
  for (std::size_t depth = 1; depth < firstOfDepth_.size(); ++depth) {
    for (Index node = firstOfDepth_[depth]; node != kNone; node = drafts_[node].nextOfDepth) {
      SetFallback(node);
      JoinWords(node);
    }
  }
  built_.entries_.ForEach([&](WordAutomaton::Entry& entry) {
    if (IsAnyWordBefore(entry.node)) entry.node = kRoot;
  });
  built_.nodes_.shrink_to_fit();
  built_.wordOfNode_.shrink_to_fit();
  built_.fallbacks_.shrink_to_fit();
  built_.words_.shrink_to_fit();
  return std::move(built_);
}

// The rest of a node is that of the node whose fallback it goes on from, and one character.
void WordAutomatonBuilder::SetFallback(Index node) {
  Node& linked = built_.nodes_[node];
  const std::size_t length = linked.label > 0xFF ? 2 : 1;
  for (Index from = drafts_[node].parent; from != kRoot; from = built_.fallbacks_[from]) {
    const Index child = ChildOf(built_.fallbacks_[from], linked.label);
    if (child == kRoot) continue;
    built_.fallbacks_[node] = child;
    const std::size_t rest = built_.nodes_[from].rest + length;
    linked.rest = rest < Prefix::kBytes ? static_cast<std::uint8_t>(rest) : Node::kDeep;
    return;
  }
}

void WordAutomatonBuilder::JoinWords(Index node) {
  const Index shorter = built_.wordOfNode_[built_.fallbacks_[node]];
  if (shorter == kNone) return;
  const Index longest = built_.wordOfNode_[node];
  if (longest == kNone) return SetWord(node, shorter);
  const WordAutomaton::Link under = built_.LinkOf(shorter);
  const bool isHidden = built_.LinkOf(longest).loop == kNone && under.loop == kNone;
  const Index next = isHidden ? under.next : shorter;
  if (next != kNone) LinkOf(longest).next = next;
}

WordAutomaton::Link& WordAutomatonBuilder::LinkOf(Index word) {
  Index& link = built_.words_[word].link;
  if (link == kNone) {
    link = static_cast<Index>(built_.links_.size());
    built_.links_.emplace_back();
  }
  return built_.links_[link];
}

bool WordAutomatonBuilder::IsAnyWordBefore(Index node) const {
  for (Index i = drafts_[node].parent; i != kRoot; i = drafts_[i].parent) {
    if (built_.nodes_[i].hasWord) return true;
  }
  return false;
}

// True when a proper prefix of the word is a suffix, too. It looks at bytes: an overlap in the middle of a
// character, which no walk over a text finds, makes the word a loop for nothing and does no harm.
bool WordAutomatonBuilder::CanOverlapItself(std::string_view word) {
  if (word.find(word.substr(0, CharacterAt(word.data()).length), 1) == std::string_view::npos) return false;
  borders_.assign(word.size(), 0);  // length of the longest border of each prefix
  std::uint32_t border = 0;
  for (std::size_t i = 1; i < word.size(); ++i) {
    while (border > 0 && word[i] != word[border]) border = borders_[border - 1];
    if (word[i] == word[border]) ++border;
    borders_[i] = border;
  }
  return border > 0;
}

}  // namespace zvuti
