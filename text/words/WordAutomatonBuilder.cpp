#include "text/words/WordAutomatonBuilder.h"

#include <new>

#include "text/words/Character.h"

namespace zvuti {
namespace {

// Room for nodes is made before the first word, enough for most lists: growing copies all of them.
constexpr std::size_t kNodesPerWord = 4;

}  // namespace

WordAutomatonBuilder::WordAutomatonBuilder(WordAutomaton& automaton, std::size_t words, Edges edges)
    : built_(automaton), edges_(edges) {
  const std::size_t nodes = 1 + words * kNodesPerWord;
  built_.nodes_.reserve(nodes);
  built_.links_.reserve(nodes);
  drafts_.reserve(nodes);
  PushNode(0, {kRoot, kNone});
  if (edges_ != Edges::kCharacters) built_.depths_.push_back(0);
}

bool WordAutomatonBuilder::Add(std::string_view word) {
  Index node = kRoot;
  Index entry = kRoot;  // the node of the characters within the prefix
  ByteSteps steps(edges_ == Edges::kShiftedBytes);
  std::size_t depth = 0;
  for (std::size_t at = 0; at < word.size(); ++depth) {
    const char* const next = word.data() + at;
    const Character character =
        edges_ == Edges::kCharacters ? CharacterAt(next) : Character{steps.NextAsItIs(next), 1};
    const Index child = built_.ChildOf(node, character.code);
    node = child != kRoot ? child : AddChild(node, character.code, depth);
    at += character.length;
    if (at <= Prefix::kBytes) entry = node;
  }
  if (built_.nodes_[node].hasWord) return false;
  SetWord(node, static_cast<Index>(built_.words_.size()));
  const bool isOverlapKept = edges_ == Edges::kCharacters && CanOverlapItself(word);
  const Index overlapId = isOverlapKept ? built_.overlapIds_++ : kNone;
  built_.words_.push_back({static_cast<std::uint32_t>(word.size()), kNone, overlapId});
  AddEntry(word, entry);
  return true;
}

// The characters of a word that no earlier word shares become nodes in a row, of which only the first one
// needs an edge. So a word adds at most one edge.
WordAutomatonBuilder::Index WordAutomatonBuilder::AddChild(Index parent, std::uint16_t label,
                                                           std::size_t depth) {
  if (built_.nodes_.size() >= kNone) throw std::bad_alloc();
  const auto child = static_cast<Index>(built_.nodes_.size());
  if (depth == firstOfDepth_.size()) firstOfDepth_.push_back(kNone);
  PushNode(label, {parent, firstOfDepth_[depth]});
  if (edges_ != Edges::kCharacters) built_.depths_.push_back(static_cast<std::uint32_t>(depth + 1));
  firstOfDepth_[depth] = child;
  if (child == parent + 1) {
    built_.nodes_[parent].isNextChild = true;
  } else {
    built_.nodes_[parent].hasBranches = true;
    built_.edges_.Add({parent, child}, WordAutomaton::EdgeHash(parent, label));
  }
  return child;
}

void WordAutomatonBuilder::AddEntry(std::string_view word, Index node) {
  if (word.size() < Prefix::kBytes || edges_ == Edges::kShiftedBytes) return;
  const Prefix prefix(word.data());
  if (built_.EntryOf(prefix.bytes) == kNone) built_.entries_.Add({prefix.bytes, node}, HashOf(prefix.bytes));
}

void WordAutomatonBuilder::PushNode(std::uint16_t label, const Draft& draft) {
  built_.nodes_.push_back({.label = label});
  built_.links_.emplace_back();
  drafts_.push_back(draft);
}

void WordAutomatonBuilder::SetWord(Index node, Index word) {
  built_.nodes_[node].hasWord = true;
  built_.links_[node].longestWord = word;
}

// Goes through the nodes by depth: the parent and the fallback of a node are complete before it is.
void WordAutomatonBuilder::Finish() {
  for (const Index first : firstOfDepth_) {
    for (Index node = first; node != kNone; node = drafts_[node].nextOfDepth) Complete(node);
  }
  built_.nodes_.shrink_to_fit();
  built_.links_.shrink_to_fit();
  built_.depths_.shrink_to_fit();
  built_.words_.shrink_to_fit();
}

void WordAutomatonBuilder::Complete(Index index) {
  SetFallback(index);
  Node& node = built_.nodes_[index];
  const Node& parent = built_.nodes_[drafts_[index].parent];
  node.isAfterWord = parent.isAfterWord || parent.hasWord;
  const Index shorter = built_.links_[built_.links_[index].fallback].longestWord;
  if (node.hasWord) {
    built_.words_[built_.links_[index].longestWord].shorter = shorter;
  } else if (shorter != kNone) {
    SetWord(index, shorter);
  }
}

// The node's character is looked for below the parent's fallback, below that one's fallback, and so on.
void WordAutomatonBuilder::SetFallback(Index index) {
  Node& node = built_.nodes_[index];
  for (Index from = drafts_[index].parent; from != kRoot; from = built_.links_[from].fallback) {
    const Index fallback = built_.ChildOf(built_.links_[from].fallback, node.label);
    if (fallback == kRoot) continue;
    built_.links_[index].fallback = fallback;
    const std::size_t bytes =
        built_.nodes_[from].fallbackBytes + (edges_ == Edges::kCharacters && node.label > 0xFF ? 2u : 1u);
    node.fallbackBytes = bytes < Prefix::kBytes ? static_cast<std::uint8_t>(bytes) : Node::kDeep;
    return;
  }
}

// Whether a proper prefix of the word is also a suffix (a border). The borders of all prefixes are computed
// as Knuth, Morris and Pratt do (1977). It compares bytes: an overlap in the middle of a character, which no
// search finds, gives a word a needless overlapId and does no harm.
bool WordAutomatonBuilder::CanOverlapItself(std::string_view word) {
  const std::string_view first = word.substr(0, CharacterAt(word.data()).length);
  if (word.find(first, 1) == std::string_view::npos) return false;
  borders_.assign(word.size(), 0);  // by last byte of a prefix: the length of its longest border
  std::uint32_t border = 0;
  for (std::size_t i = 1; i < word.size(); ++i) {
    while (border > 0 && word[i] != word[border]) border = borders_[border - 1];
    if (word[i] == word[border]) ++border;
    borders_[i] = border;
  }
  return border > 0;
}

}  // namespace zvuti
