// WordAutomaton: which words end at a position of a text? One pass over the text answers it for all words.
//
// The idea (Aho and Corasick, 1975). The words form a trie, whose edges are characters. A search follows the
// text from the root down. Where no child fits, it falls back to the longest proper suffix of what it has
// read that is in the trie, too. WordIndex.h follows two words through it.
//
// Invariants:
// - Edges are whole GBK characters, folded to capitals; in the tries of HalfWordIndex they are bytes.
// - A node's child is the next node in memory or in the table of edges. The root is nobody's child, so kRoot
//   stands for "no child".
//
// Costs: 12 bytes a node, 12 a word, and two tables of 16 bytes a word; a step reads one node and, if it has
// several children, a slot of the table of edges.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/words/Character.h"
#include "text/words/ProbeTable.h"

namespace zvuti {

class WordAutomaton {
 public:
  using Index = std::uint32_t;  // of a node, or of a word
  static constexpr Index kRoot = 0;
  static constexpr Index kNone = 0xFFFFFFFF;

  struct Word {
    std::uint32_t length;     // in bytes
    Index shorter = kNone;    // the longest shorter word that ends wherever this one does
    Index overlapId = kNone;  // numbers the words that can overlap themselves; kNone for all others
  };

  /// What nearly every step reads. It is small because the nodes of a long list exceed the caches.
  struct Node {
    static constexpr std::uint8_t kDeep = 0xFF;

    std::uint16_t label;             // code of the character that leads here
    std::uint8_t fallbackBytes = 0;  // length of the fallback; kDeep if it is as long as a prefix or longer
    bool isNextChild : 1 = false;    // the next node in memory is a child
    bool hasBranches : 1 = false;    // the table of edges has children
    bool isAfterWord : 1 = false;    // a word ends on the way here
    bool hasWord : 1 = false;        // a word ends here
  };
  /// What few steps read of a node.
  struct NodeLinks {
    Index longestWord = kNone;  // that ends here
    Index fallback = kRoot;     // the longest proper suffix that is a node
  };

  /// An automaton without words, with room for the edges and entries of `words` words.
  explicit WordAutomaton(std::size_t words) : edges_(words), entries_(words) {}

  const Node& NodeAt(Index node) const { return nodes_[node]; }
  const NodeLinks& LinksOf(Index node) const { return links_[node]; }
  const Word& WordAt(Index word) const { return words_[word]; }
  /// How many bytes lead to a node. REQUIRES: the edges are bytes.
  std::uint32_t DepthOf(Index node) const { return depths_[node]; }
  /// How many words can overlap themselves. Their overlapIds are the numbers below.
  Index OverlapIds() const { return overlapIds_; }

  /// The node of the whole characters of a prefix; kNone if no word starts with it. Returns kRoot if a
  /// shorter word ends before that node, so that the search does not skip it.
  Index EntryOf(std::uint32_t prefix) const {
    const Entry* entry = entries_.Find(HashOf(prefix), [&](const Entry& e) { return e.prefix == prefix; });
    if (!entry) return kNone;
    return nodes_[entry->node].isAfterWord ? kRoot : entry->node;
  }

  /// The child of `node` by the character `label`, or kRoot.
  Index ChildOf(Index node, std::uint16_t label) const {
    const Node& parent = nodes_[node];
    if (parent.isNextChild && nodes_[node + 1].label == label) return node + 1;
    return parent.hasBranches ? BranchOf(node, label) : kRoot;
  }

 private:
  friend class WordAutomatonBuilder;

  struct Edge {
    bool IsFree() const { return child == kRoot; }

    Index parent = kRoot;
    Index child = kRoot;
  };
  struct Entry {
    bool IsFree() const { return node == kNone; }

    std::uint32_t prefix = 0;
    Index node = kNone;
  };

  static std::uint32_t EdgeHash(Index parent, std::uint16_t label) {
    return (HashOf(parent) + label) * 0x85EBCA6Bu;  // any odd factor spreads the label, too
  }
  Index BranchOf(Index node, std::uint16_t label) const {
    const Edge* edge = edges_.Find(EdgeHash(node, label), [&](const Edge& e) {
      return e.parent == node && nodes_[e.child].label == label;
    });
    return edge ? edge->child : kRoot;
  }

  std::vector<Node> nodes_;
  std::vector<NodeLinks> links_;       // by node
  std::vector<std::uint32_t> depths_;  // by node; empty unless the edges are bytes
  std::vector<Word> words_;
  ProbeTable<Edge> edges_;
  ProbeTable<Entry> entries_;
  Index overlapIds_ = 0;
};

}  // namespace zvuti
