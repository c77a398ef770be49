// WordAutomatonBuilder: makes a WordAutomaton of a list of words, in time linear in their length.
#pragma once

#include "text/words/WordAutomaton.h"

namespace zvuti {

/// All operations may throw std::bad_alloc; the builder is of no use after that.
class WordAutomatonBuilder {
 public:
  /// `words`: how many will come at most.
  explicit WordAutomatonBuilder(std::size_t words);

  /// REQUIRES: the word is folded, not empty and ends with a whole character; a zero byte stands behind it. A
  /// word may come twice.
  void Add(std::string_view word);
  WordAutomaton Build() &&;

 private:
  using Index = WordAutomaton::Index;
  using Node = WordAutomaton::Node;
  static constexpr Index kRoot = WordAutomaton::kRoot;
  static constexpr Index kNone = WordAutomaton::kNone;

  // What a node needs only until the automaton is built.
  struct Draft {
    Index parent;
    Index nextOfDepth;  // the nodes of one depth hang together, ended by kNone
  };

  Index ChildOf(Index node, std::uint16_t label) const {
    return node == kRoot ? childOfRoot_[label] : built_.Child(node, label);
  }
  Index AddChild(Index parent, std::uint16_t label, std::size_t depth);
  void PushNode(std::uint16_t label, Index parent, Index nextOfDepth);
  void SetWord(Index node, Index word);
  void AddEntry(std::string_view word, Index node);
  void SetFallback(Index node);
  void JoinWords(Index node);
  WordAutomaton::Link& LinkOf(Index word);
  bool IsAnyWordBefore(Index node) const;
  bool CanOverlapItself(std::string_view word);

  WordAutomaton built_;
  std::vector<Draft> drafts_;        // by node
  std::vector<Index> childOfRoot_;   // by label, kRoot where there is none: no other node is asked as often
  std::vector<Index> firstOfDepth_;  // by depth, from that of the root's children on
  std::vector<std::uint32_t> borders_;  // scratch of CanOverlapItself
};

}  // namespace zvuti
